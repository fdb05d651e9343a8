#pragma once

#include "platform/app/messenger.h"
#include "platform/interface/list_item.h"
#include "platform/interface/row_selection.h"
#include "platform/interface/view.h"
#include "platform/kernel/modifiers.h"

#include <memory>
#include <vector>

class BMessage;
namespace display {
class ListPeer;
struct ListShortcut;
} // namespace display

/** A range selection list lets the user select consecutive rows, with Shift. */
enum list_view_type { B_SINGLE_SELECTION_LIST, B_RANGE_SELECTION_LIST };

/** A list of rows, of which one, or consecutive ones, can be selected; does not own its items. Rows are drawn lazily:
    the display asks for pictures of the visible ones. Keys select on the window's thread; a click on the display thread
    arrives as a message, in order with the keys. */
class BListView : public BView {
public:
  BListView(BRect frame, const char* name, list_view_type type = B_SINGLE_SELECTION_LIST,
            uint32 resizingMode = B_FOLLOW_LEFT_TOP, uint32 flags = B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE);
  ~BListView() override;

  /** Appends the items. */
  void AddList(const std::vector<BListItem*>& items);
  void MakeEmpty();
  int32 CountItems() const { return static_cast<int32>(fItems.size()); }
  bool IsEmpty() const { return fItems.empty(); }
  BListItem* ItemAt(int32 index) const;
  /** -1 for an item that is not in the list. */
  int32 IndexOf(const BListItem* item) const;

  /** Selects that row alone. Ignores an index outside the list. */
  void Select(int32 index);
  /** Selects the rows between the two, `current` being the current one. Ignores an index outside the list. */
  void SelectRange(int32 anchor, int32 current);
  void SelectAll();
  /** The current row: of several selected ones, that which keys and mouse selected last. -1 when none is selected. */
  int32 CurrentSelection() const { return fSelection.current; }
  const row_selection& Selection() const { return fSelection; }
  void ScrollToSelection();
  void ScrollTo(int32 index);
  /** Scrolls if the row is not in sight with a margin, unless the user has just scrolled. */
  void KeepInSight(int32 index);
  using BView::Invalidate;
  /** Redraws the rows in the rectangle, which is in the coordinates of the whole list. */
  void Invalidate(BRect rect) override;
  void InvalidateItem(int32 index);
  /** In the coordinates of the whole list (row 0 starts at 0). An invalid rectangle outside the list. */
  BRect ItemFrame(int32 index) const;

  /** A text in the middle of the list, for one that is empty; none if it is empty itself. */
  void SetPlaceholder(const std::string& text, rgb_color color);

  /** Hook: a double click, or Return with a row selected. */
  virtual void Invoke() {}
  /** Hook: the user or the program has changed the selection. */
  virtual void SelectionChanged() {}

  /** Text of a row, for DrawItem: as DrawString, but it can be limited and in two colours. */
  struct row_text {
    std::string text;
    BPoint baseLineStart;
    float maxWidth = 0;   // a wider text ends with an ellipsis and is whole in a tooltip; 0: no limit
    size_t leadBytes = 0; // its beginning, which is drawn in leadColor
    rgb_color leadColor{};
    std::string spoken{}; // of a sign: its meaning, a description for screen readers
  };
  void DrawRowText(const row_text& text);

  /** Keys that work while the list has the focus, before KeyDown. */
  void SetShortcuts(std::vector<display::ListShortcut> shortcuts);
  /** The view gets a message DISPLAY_KEY_RELEASED for each key that is released. */
  void ReportReleases(bool reports);
  /** Hook: one of them was pressed. */
  virtual void ShortcutPressed(int32) {}

  void SetFont(const BFont* font) override;
  void AllAttached() override;
  void KeyDown(const char* bytes, int32 count) override;
  void MessageReceived(BMessage* message) override;

protected:
  /** The key event being handled has the Command modifier. */
  bool IsCommand() const { return HasModifier(B_COMMAND_KEY); }
  bool HasModifier(uint32 modifier) const;
  std::shared_ptr<display::ViewPeer> MakePeer() override;

private:
  display::ListPeer* Rows() const;
  void Measure(BListItem* item);
  /** Rows from this one on have changed. Coalesced: the display is updated once, after the current message or before
      the next call that needs the rows. */
  void RowsChanged(int32 firstChanged);
  void FlushRows();
  void LayOutRows();
  bool HasOneHeight() const { return fHeights.size() <= 1; }
  int32 RowAt(float y) const;
  void DrawRows(const BMessage& request);
  void ChangeSelection(const row_selection& rows);
  void MarkSelected(bool selected);
  bool MoveSelection(uint8 key);

  std::vector<BListItem*> fItems;
  std::vector<display::ListShortcut> fShortcuts;
  bool fReportsReleases = false;
  const list_view_type fType;
  row_selection fSelection;
  std::string fPlaceholder;
  rgb_color fPlaceholderColor{0, 0, 0, 255};
  /** Row heights in pixels as last laid out, one for all or one per row; the latter also have their tops in fTops. */
  std::vector<float> fHeights;
  std::vector<float> fTops;
  int32 fFirstChanged = 0;
  bool fFlushPending = false;
  /** Number of visible rows, as last reported by the display. */
  int32 fPageLength = 1;
};
