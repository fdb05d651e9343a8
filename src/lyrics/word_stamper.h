#pragma once

#include "lyrics/timed_line.h"

/** The forms of new tags. */
struct TStampForms {
  TTagForm line = TTagForm::kExtended;
  TWordForm word = TWordForm::kFamily;
};

/** Times the units of one line after the other: the line and the caret, whose unit is stamped next. Nothing but the
    line itself is stored: a change is the new text of the line, which the caller records. Pure: one thread at a time.
 */
class TWordStamper {
public:
  /** Another line, with the caret at its first unit. */
  void Start(const std::string& line);
  /** The line was changed from elsewhere; the caret stays where it was, as far as the text allows. */
  void Update(const std::string& line);

  /** A step of the history has changed the line: the caret goes to the unit whose time it removed, or behind the one
      that it stamped. */
  void Follow(const std::string& before, const std::string& after);

  const TTimedLine& Line() const { return fLine; }
  /** The unit that the next tap stamps; the last one again when all were tapped. */
  size_t NextUnit() const;
  /** All units of the line were tapped, or it has none. */
  bool IsDone() const { return fCaret >= fLine.Text().size(); }
  size_t Caret() const { return fCaret; }

  /** Stamps the next unit. Returns true if it was the last one. A line without units is stamped as a whole. */
  bool Tap(long timeMs, const TStampForms& forms);
  /** The key of the last tap was held: the line ends at that time. */
  void EndLine(long timeMs, const TStampForms& forms) { fLine.StampEnd(timeMs, forms.word); }
  /** Removes the time of the unit before the caret. Returns false if that is the first unit, which has the line's. */
  bool TakeBack();
  /** Removes all times within the line and goes to its start. */
  void ClearWords();
  /** Removes the times from the next unit on. */
  void ClearFromHere();
  bool Join();
  bool Split();
  void MoveCaret(bool right);
  void MoveToEnd() { fCaret = fLine.Text().size(); }

private:
  TTimedLine fLine;
  size_t fCaret = 0; // in bytes of the text
};
