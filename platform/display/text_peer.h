#pragma once

#include "platform/display/view_peer.h"

#include <string>
#include <utility>

namespace display {

/** The program's hand on a text to edit. Questions wait for the display. */
class TextPeer : public ViewPeer {
public:
  explicit TextPeer(const BMessenger& view);

  void SetText(const std::string& text);
  /** In place of the selection. */
  void Insert(const std::string& text);
  void SetWraps(bool wraps);
  void SetEditable(bool editable);
  void SetTextColor(rgb_color color);
  /** Byte offsets. */
  void Select(int32 start, int32 end);
  void GoToLine(int32 line);
  void ScrollToSelection();
  enum class Command { undo, cut, copy, paste, select_all };
  void Do(Command command);

  std::string Text() const;
  std::pair<int32, int32> Selection() const;
  int32 CurrentLine() const;
  int32 CountLines() const;
};

} // namespace display
