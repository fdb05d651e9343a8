#pragma once

#include <optional>
#include <string>

class BStringView;
class BView;

/** The strip between the edit view and the status bar: the times of the current line's words. On the window's thread.
 */
class TWordStrip {
public:
  /** Adds itself to `parent`, hidden. It takes its room from the view above it. */
  TWordStrip(BView* parent, BView* above);

  /** Nothing hides it. */
  void Show(const std::optional<std::string>& text);
  /** Downwards. */
  void MoveBy(float step);

private:
  BView* const fAbove;
  BStringView* const fText; // owned by its parent
};
