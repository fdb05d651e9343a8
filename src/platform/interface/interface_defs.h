#pragma once

#include "platform/support/types.h"

/** Constants that windows, views and controls share. */

/** Which sides of its parent a view follows when the parent is resized. With both sides of one direction it grows. */
enum : uint32 {
  B_FOLLOW_NONE = 0,
  B_FOLLOW_LEFT = 0x1,
  B_FOLLOW_RIGHT = 0x2,
  B_FOLLOW_TOP = 0x4,
  B_FOLLOW_BOTTOM = 0x8,
  B_FOLLOW_LEFT_TOP = B_FOLLOW_LEFT | B_FOLLOW_TOP,
  B_FOLLOW_LEFT_RIGHT = B_FOLLOW_LEFT | B_FOLLOW_RIGHT,
  B_FOLLOW_TOP_BOTTOM = B_FOLLOW_TOP | B_FOLLOW_BOTTOM,
  B_FOLLOW_ALL_SIDES = B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP_BOTTOM,
};

/** View flags. */
enum : uint32 {
  /** `Draw` is called; a view without it shows its colour and its children only. */
  B_WILL_DRAW = 0x1,
  /** `FrameResized` is called. */
  B_FRAME_EVENTS = 0x2,
  /** Tab moves the focus to the view. */
  B_NAVIGABLE = 0x4,
};

/** First bytes of keys that type no character. */
enum : uint8 {
  B_HOME = 0x01,
  B_END = 0x04,
  B_INSERT = 0x05,
  B_BACKSPACE = 0x08,
  B_TAB = 0x09,
  B_RETURN = 0x0a,
  B_ENTER = 0x0a,
  B_PAGE_UP = 0x0b,
  B_PAGE_DOWN = 0x0c,
  B_FUNCTION_KEY = 0x10,
  B_ESCAPE = 0x1b,
  B_LEFT_ARROW = 0x1c,
  B_RIGHT_ARROW = 0x1d,
  B_UP_ARROW = 0x1e,
  B_DOWN_ARROW = 0x1f,
  B_SPACE = 0x20,
  B_DELETE = 0x7f,
};

/** Role of a view for screen readers, where its control does not imply it. */
enum accessible_role { B_TOOL_BAR_ROLE, B_STATUS_BAR_ROLE, B_NOTIFICATION_ROLE };
