#pragma once

#include "platform/interface/text_change.h"
#include "platform/interface/view_peer.h"

#include <string>
#include <vector>

namespace display {

/** The program's hand on a text to edit. Questions wait for the display. */
class TextPeer : public ViewPeer {
public:
  explicit TextPeer(const BMessenger& view);

  void SetText(const std::string& text);
  /** In place of the selection. */
  void Insert(const std::string& text);
  /** Does what the control makes of a key with Ctrl; returns what is to be put in, as for a paste. */
  std::string DoCommand(int32 key, int32 modifiers);
  /** The user's changes in order, since the last call. Waits for all that the display was told before. */
  std::vector<text_change> TakeChanges();
  /** False when the user has made a change meanwhile: take it first. */
  bool ReplaceLines(const text_change& change);
  /** Lines are counted in a text of this width; 0: as shown. */
  void SetCountWidth(int width);
  void SetEditable(bool editable);
  void SetTextColor(rgb_color color);
  void GoToLine(int32 line);
  void ScrollToSelection();

  std::string Text() const;
  int32 CurrentLine() const;
};

} // namespace display
