#pragma once

#include "platform/interface/text_change.h"
#include "platform/interface/view_peer.h"

#include <string>
#include <vector>

namespace display {

/** From the widget to its view: a text was pasted or dropped that is longer than kMostPastedBytes; no fields. */
inline constexpr uint32 DISPLAY_TEXT_TOO_LONG = '_TTL';

/** Thread-safe handle to a text editing widget. Calls that return a value block on the display thread. */
class TextPeer : public ViewPeer {
public:
  explicit TextPeer(const BMessenger& view);

  void SetText(const std::string& text);
  /** Replaces the selection. */
  void Insert(const std::string& text);
  /** Selects what an input method replaces; positions in UTF-16 units, from the caret. */
  void SelectFromCaret(int32 from, int32 length);
  /** Lets the widget handle a key with Ctrl; returns the text that it wants to insert (paste). */
  std::string DoCommand(int32 key, int32 modifiers);
  /** The same for a letter with Ctrl that was not pressed, e.g. of a menu's command. */
  std::string DoCtrlKey(char letter);
  /** The user's changes since the last call, in order. */
  std::vector<text_change> TakeChanges();
  /** False when the user has changed the text meanwhile: call TakeChanges first. */
  bool ReplaceLines(const text_change& change);
  /** Lines are counted as if the text were this wide; 0: as shown. */
  void SetCountWidth(int width);
  void SetEditable(bool editable);
  void SetTextColor(rgb_color color);
  void SetPlaceholder(const std::string& text);
  void GoToLine(int32 line);
  void ScrollToSelection();
  void SelectInLine(int32 line, const std::string& before, const std::string& text);

  std::string Text() const;
  int32 CurrentLine() const;
};

} // namespace display
