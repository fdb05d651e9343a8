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

/** Layout of a view: its frame at the time when its parent had `parentSize`, and how it follows later resizes. */
struct Placement {
  BRect frame;
  BPoint parentSize;
  uint32 resizingMode = 0;
};

/** A key press, as sent to the view and back to the widget. */
struct KeyPress {
  std::string bytes;
  int32 keyCode = 0;
  uint32 modifiers = 0;
  int32 repeat = 0;
};

/** Messages from a widget to its view. */
enum : uint32 {
  DISPLAY_FOCUS_CHANGED = '_FOC', // bool "focused", "byTab" (by the Tab key)
  DISPLAY_ROWS_WANTED = '_LRW',   // int32 "row" (one or more), float "width", int32 "page" (visible rows)
  DISPLAY_ROWS_CHANGED = '_LRC',  // from the view to itself: send the rows
  DISPLAY_ROW_CHOSEN = '_LSL',    // int32 "row"; bool "extends": up to it, with Shift
  DISPLAY_ROW_INVOKED = '_LIV',   // int32 "row"
  DISPLAY_TEXT_ENTERED = '_TIN',  // string "text"; int32 "from", "length": first selects that part, from the caret
  DISPLAY_TEXT_COMMAND = '_TCM',  // int32 "key", "modifiers": Qt's; to be returned in order
  DISPLAY_TEXT_CHANGED = '_TCH',  // call TakeChanges
  DISPLAY_ITEM_CHOSEN = '_MNI',   // int32 "id"
  DISPLAY_MENU_CHANGED = '_MNF',  // from the bar to itself: send the menus
  DISPLAY_FILES_CHOSEN = '_FPS',  // string "path" (one or more)
  DISPLAY_PANEL_CLOSED = '_FPC',
  DISPLAY_CONTROL_WORKED = '_CTW',
  DISPLAY_FIELD_CHANGED = '_FLD', // string "text"
  DISPLAY_VALUE_CHOSEN = '_VCH',  // int32 "value"
};

/** Who handles keys: the widget or the view. Commands are the space bar and cursor keys with Ctrl. */
enum class Keys { to_control, to_program, to_program_with_commands, to_program_with_tabs };

/** Thread-safe handle to one QWidget. Owned by its BView; calls may come from any thread and run on the display thread
    in order. Destroying the handle destroys the widget. */
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
  /** The widget covers its parent regardless of its placement. */
  void FillParent();
  /** Blocks on the display thread. */
  BPoint PreferredSize() const;
  void SetVisible(bool visible);
  void SetFocus(bool focused);
  void SetEnabled(bool enabled);
  /** Alpha 0: the desktop's default colour. */
  virtual void SetColor(rgb_color color);
  virtual void SetFont(const BFont& font);
  void SetToolTip(const std::string& text);
  void ShowToolTip(bool shown);
  void SetAccessibleTexts(const std::string& name, const std::string& description);
  void SetAccessibleRole(accessible_role role);
  /** The drawing of a plain view. */
  virtual void SetPicture(BPicture picture);
  /** Returns a key press that the view did not use to the widget. */
  void HandBack(const KeyPress& key);

protected:
  /** Runs on the display thread, unless the widget is gone by then. */
  void Change(std::function<void(QWidget*)> change) const;

  struct Slot;
  const std::shared_ptr<Slot>& TheSlot() const { return fSlot; }
  static const std::shared_ptr<Slot>& SlotOf(const ViewPeer& peer) { return peer.fSlot; }

private:
  void Guard(std::function<void(WidgetGuard*)> change) const;

  std::shared_ptr<Slot> fSlot;
};

/** The widget of a view without a control: paints the view's picture. */
std::shared_ptr<ViewPeer> make_plain_peer(const BMessenger& view, bool navigable);

} // namespace display
