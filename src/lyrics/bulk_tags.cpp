#include "lyrics/bulk_tags.h"

#include "lyrics/time_tags.h"

#include <algorithm>
#include <cstdint>

namespace {

/** Gives each tagged line the tag that `change` makes of its old one: change(timeMs, &extended) -> timeMs. */
template <typename Change>
void rewrite_tags(std::list<std::string>* lines, Change change) {
  std::string tag;
  for (std::string& line : *lines) {
    long time = 0;
    bool extended = false;
    if (!time_tag_to_time(line, &time, &extended)) continue;
    time = change(time, &extended);
    remove_time_tag(&line);
    time_to_time_tag(time, &tag, extended);
    line.insert(0, tag);
  }
}

/** Rounded to a multiple of `unit`, halves away from zero. */
long rounded(long amount, long unit) {
  const long size = amount < 0 ? -amount : amount;
  const long step = (size + unit / 2) / unit * unit;
  return amount < 0 ? -step : step;
}

/** How far a shift moves the tags of either form. */
struct TShift {
  explicit TShift(long offsetMs) : amount(std::clamp<long>(offsetMs, -INT32_MAX, INT32_MAX)) {}
  long Step(bool isExtended) const { return isExtended ? extendedStep : standardStep; }

  long amount;
  long standardStep = rounded(amount, 1000);
  long extendedStep = rounded(amount, 10);
};

} // namespace

void shift_time_tags(std::list<std::string>* lines, long offsetMs) {
  const TShift shift(offsetMs);
  rewrite_tags(lines, [shift](long time, const bool* extended) { return time + shift.Step(*extended); });
}

long shift_step(long offsetMs, bool isExtended) {
  return TShift(offsetMs).Step(isExtended);
}

size_t count_tags_piled_at_zero(const std::vector<std::string>& lines, long offsetMs) {
  const TShift shift(offsetMs);
  size_t count = 0;
  bool isAnyCut = false;
  for (const std::string& line : lines) {
    long time = 0;
    bool extended = false;
    if (!time_tag_to_time(line, &time, &extended)) continue;
    const long shifted = time + shift.Step(extended);
    if (shifted <= 0) ++count;
    if (shifted < 0 && time > 0) isAnyCut = true;
  }
  return isAnyCut && count > 1 ? count : 0;
}

void convert_time_tags(std::list<std::string>* lines, bool toExtended) {
  rewrite_tags(lines, [=](long time, bool* extended) {
    *extended = toExtended;
    return toExtended ? time : time + 500;
  });
}

void delete_time_tags(std::list<std::string>* lines) {
  for (std::string& line : *lines) remove_time_tag(&line);
}
