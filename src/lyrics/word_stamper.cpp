#include "lyrics/word_stamper.h"

#include "lyrics/word_units.h"

#include <algorithm>

void TWordStamper::Start(const std::string& line) {
  fLine = TTimedLine(line);
  fCaret = 0;
}

void TWordStamper::Update(const std::string& line) {
  if (line == fLine.Line()) return;
  const std::string before = fLine.Text();
  fLine = TTimedLine(line);
  if (fLine.Text() != before) fCaret = fLine.StartOf(fLine.UnitAt(std::min(fCaret, fLine.Text().size())));
}

void TWordStamper::Follow(const std::string& before, const std::string& after) {
  const TTimedLine old(before);
  Start(after);
  if (fLine.Text() != old.Text()) return;
  size_t unit = 0;
  while (unit < fLine.CountUnits() && fLine.TimeOf(unit) == old.TimeOf(unit)) ++unit;
  if (unit < fLine.CountUnits()) fCaret = fLine.StartOf(fLine.TimeOf(unit) ? unit + 1 : unit);
}

size_t TWordStamper::NextUnit() const {
  return fLine.UnitAt(fCaret);
}

bool TWordStamper::Tap(long timeMs, const TStampForms& forms) {
  const size_t unit = NextUnit();
  fLine.Stamp(unit, timeMs, forms.line, forms.word);
  fCaret = fLine.StartOf(unit + 1);
  return IsDone();
}

bool TWordStamper::TakeBack() {
  const size_t next = IsDone() ? fLine.CountUnits() : NextUnit();
  if (next < 2) return false;
  fLine.Clear(next - 1);
  fCaret = fLine.StartOf(next - 1);
  return true;
}

void TWordStamper::ClearWords() {
  fLine.ClearWordTimes();
  fCaret = 0;
}

void TWordStamper::ClearFromHere() {
  const size_t first = NextUnit();
  if (first == 0) fLine.ClearLead();
  for (size_t unit = first; unit < fLine.CountUnits(); ++unit) fLine.Clear(unit);
}

bool TWordStamper::Join() {
  const size_t unit = NextUnit();
  if (!fLine.JoinWithNext(unit)) return false;
  fCaret = fLine.StartOf(unit);
  return true;
}

bool TWordStamper::Split() {
  const size_t unit = NextUnit();
  if (!fLine.SplitAt(fCaret)) return false;
  fCaret = fLine.StartOf(unit + 1);
  return true;
}

/** By one character; the caret stays in front of the last one. */
void TWordStamper::MoveCaret(bool right) {
  const std::vector<size_t> stops = caret_stops(fLine.Text());
  if (stops.size() < 2) return;
  const auto here = std::ranges::lower_bound(stops, fCaret);
  if (right && std::next(here, here == stops.end() ? 0 : 1) < std::prev(stops.end())) fCaret = *std::next(here);
  if (!right && here != stops.begin()) fCaret = *std::prev(here);
}
