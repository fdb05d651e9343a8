#pragma once

#include "platform/app/messenger.h"
#include "platform/interface/font.h"
#include "platform/interface/interface_defs.h"
#include "platform/interface/picture.h"
#include "platform/support/geometry.h"

#include <functional>
#include <memory>
#include <string>

class QWidget;

namespace display {

class WidgetGuard;
class WindowPeer;

/** Where a view stands: its frame while its parent measured `parentSize`, and how it follows from there. */
struct Placement {
  BRect frame;
  BPoint parentSize;
  uint32 resizingMode = 0;
};

/** One key press, as it travels to the program and back. */
struct KeyPress {
  std::string bytes;
  int32 keyCode = 0;
  uint32 modifiers = 0;
  int32 repeat = 0;
};

/** Messages from a control to its view. */
enum : uint32 {
  DISPLAY_FOCUS_CHANGED = '_FOC', // bool "focused", "byTab" (the Tab key brought it)
  DISPLAY_ROWS_WANTED = '_LRW',   // int32 "row" (one or more), float "width", int32 "page" (rows that fit)
  DISPLAY_ROWS_CHANGED = '_LRC',  // from the program to itself: hand the rows over
  DISPLAY_ROW_CHOSEN = '_LSL',    // int32 "row"
  DISPLAY_ROW_INVOKED = '_LIV',   // int32 "row"
  DISPLAY_TEXT_ENTERED = '_TIN',  // string "text"
  DISPLAY_TEXT_COMMAND = '_TCM',  // int32 "key", "modifiers": the display's own; to be given back in its turn
  DISPLAY_TEXT_CHANGED = '_TCH',  // the user's changes can be taken
  DISPLAY_ITEM_CHOSEN = '_MNI',   // int32 "id"
  DISPLAY_MENU_CHANGED = '_MNF',  // from the program to itself: hand the menus over
  DISPLAY_FILES_CHOSEN = '_FPS',  // string "path" (one or more)
  DISPLAY_PANEL_CLOSED = '_FPC',
  DISPLAY_CONTROL_WORKED = '_CTW',
  DISPLAY_FIELD_CHANGED = '_FLD', // string "text"
  DISPLAY_VALUE_CHOSEN = '_VCH',  // int32 "value"
};

/** What a control wants from the keyboard; commands are the space bar and the keys that move, pressed with Ctrl. */
enum class Keys { to_control, to_program, to_program_with_commands, to_program_with_tabs };

/** The program's hand on one control of the display. Owned by the view; every call is safe on any thread and takes
    effect on the display thread, in order. Letting go of the peer ends the control. */
class ViewPeer {
public:
  ViewPeer(const BMessenger& view, Keys keys, std::function<QWidget*()> make);
  ViewPeer(const ViewPeer&) = delete;
  ViewPeer& operator=(const ViewPeer&) = delete;
  virtual ~ViewPeer();

  void SetName(const std::string& name);
  void AttachTo(const ViewPeer& parent);
  void AttachTo(const WindowPeer& window);
  void SetPlacement(const Placement& placement);
  /** The control covers its parent whatever its placement. */
  void FillParent();
  /** Waits for the display. */
  BPoint PreferredSize() const;
  void SetVisible(bool visible);
  void SetFocus(bool focused);
  void SetEnabled(bool enabled);
  /** Without alpha: the display's own colour. */
  virtual void SetColor(rgb_color color);
  virtual void SetFont(const BFont& font);
  void SetToolTip(const std::string& text);
  void ShowToolTip(bool shown);
  void SetAccessibleTexts(const std::string& name, const std::string& description);
  void SetAccessibleRole(accessible_role role);
  /** What a plain view looks like. */
  virtual void SetPicture(BPicture picture);
  /** Gives a key press that came to the program back to the control. */
  void HandBack(const KeyPress& key);

protected:
  /** Runs on the display thread, unless the control is gone by then. */
  void Change(std::function<void(QWidget*)> change) const;

  struct Slot;
  const std::shared_ptr<Slot>& TheSlot() const { return fSlot; }
  static const std::shared_ptr<Slot>& SlotOf(const ViewPeer& peer) { return peer.fSlot; }

private:
  void Guard(std::function<void(WidgetGuard*)> change) const;

  std::shared_ptr<Slot> fSlot;
};

/** The control of a view without one of its own: it paints the view's picture. */
std::shared_ptr<ViewPeer> make_plain_peer(const BMessenger& view, bool navigable);

} // namespace display
