#include "lyrics/timed_line.h"

#include "lyrics/line_times.h"
#include "lyrics/tag_spans.h"
#include "lyrics/time_tags.h"
#include "lyrics/word_units.h"

#include <algorithm>
#include <climits>

namespace {

/** What a tag with hundredths can show. */
long bounded(long timeMs) {
  constexpr long kResolutionMs = 10;
  return std::clamp(timeMs, 0L, kLastTagTime) / kResolutionMs * kResolutionMs;
}

} // namespace

TTimedLine::TTimedLine(const std::string& line) : fLine(line) {
  FindUnits();
}

/** A tag in front of blanks ends a unit. */
void TTimedLine::FindUnits() {
  fStarts = unit_starts(fLine.text);
  const std::vector<size_t> cut = fStarts;
  for (const TInnerTag& tag : fLine.tags) {
    const auto next = std::ranges::upper_bound(cut, tag.at);
    const size_t end = next == cut.end() ? fLine.text.size() : *next;
    if (next == cut.begin() || std::ranges::binary_search(fStarts, tag.at) || IsBlankFrom(tag.at, end)) continue;
    fStarts.insert(std::ranges::upper_bound(fStarts, tag.at), tag.at);
  }
}

bool TTimedLine::IsBlankFrom(size_t byte, size_t end) const {
  return is_blank_text(std::string_view(fLine.text).substr(byte, end - byte));
}

std::string TTimedLine::TextOf(size_t unit) const {
  return fLine.text.substr(StartOf(unit), StartOf(unit + 1) - StartOf(unit));
}

size_t TTimedLine::UnitAt(size_t byte) const {
  const auto next = std::ranges::upper_bound(fStarts, byte);
  return static_cast<size_t>(std::max<ptrdiff_t>(next - fStarts.begin() - 1, 0));
}

size_t TTimedLine::FirstTagAfter(size_t unit) const {
  const size_t start = StartOf(unit);
  return static_cast<size_t>(std::ranges::upper_bound(fLine.tags, start, {}, &TInnerTag::at) - fLine.tags.begin());
}

size_t TTimedLine::TagOf(size_t unit) const {
  const size_t after = FirstTagAfter(unit);
  const bool isThere = unit < fStarts.size() && after > 0 && fLine.tags[after - 1].at == fStarts[unit];
  return isThere ? after - 1 : fLine.tags.size();
}

std::optional<long> TTimedLine::TimeOf(size_t unit) const {
  const size_t tag = TagOf(unit);
  if (tag < fLine.tags.size()) return fLine.tags[tag].timeMs;
  return unit == 0 ? fLine.LineMs() : std::nullopt;
}

std::optional<long> TTimedLine::EndMs() const {
  const bool isAtEnd = !fStarts.empty() && FirstTagAfter(fStarts.size() - 1) < fLine.tags.size();
  return isAtEnd ? std::optional(fLine.tags.back().timeMs) : std::nullopt;
}

size_t TTimedLine::CountTimed() const {
  size_t count = 0;
  for (size_t unit = 0; unit < fStarts.size(); ++unit) count += TimeOf(unit) ? 1 : 0;
  return count;
}

std::optional<size_t> TTimedLine::UnitSungAt(long positionMs, long startMs) const {
  const long atFirstMs = AtFirst(positionMs, startMs);
  std::optional<size_t> sung;
  if (fLine.tags.empty() || EndMs().value_or(LONG_MAX) <= atFirstMs) return sung;
  for (size_t unit = 0; unit < fStarts.size(); ++unit)
    if (TimeOf(unit).value_or(LONG_MAX) <= atFirstMs) sung = unit;
  return sung;
}

size_t TTimedLine::BytesSungAt(long positionMs, long startMs) const {
  if (EndMs().value_or(LONG_MAX) <= AtFirst(positionMs, startMs)) return fLine.text.size();
  const std::optional<size_t> unit = UnitSungAt(positionMs, startMs);
  return unit ? StartOf(*unit + 1) : 0;
}

void TTimedLine::Stamp(size_t unit, long timeMs, TTagForm lineForm, TWordForm wordForm) {
  if (unit == 0) {
    const bool hasOtherBracket = fLine.lead.empty() && fLine.text.starts_with('[');
    if (hasOtherBracket) {
      *this = TTimedLine(stamp(Line(), timeMs, lineForm).line);
    } else {
      fLine.lead = stamp(fLine.lead, timeMs, lineForm).line;
    }
    const size_t tag = TagOf(0);
    if (tag < fLine.tags.size()) fLine.tags[tag].SetTime(fLine.LineMs().value_or(0));
    return fLine.RemoveEarlier(0, fLine.LineMs().value_or(0));
  }
  if (unit >= fStarts.size()) return;
  const size_t old = TagOf(unit);
  const size_t at = old < fLine.tags.size() ? old : FirstTagAfter(unit);
  long earliestMs = fLine.LineMs().value_or(0);
  for (size_t i = 0; i < at; ++i) earliestMs = std::max(earliestMs, fLine.tags[i].timeMs);
  const long stampedMs = std::max(bounded(timeMs), earliestMs);
  const TInnerTag tag{fStarts[unit], stampedMs, word_tag(stampedMs, fLine.FormOr(wordForm))};
  if (old < fLine.tags.size()) {
    fLine.tags[old] = tag;
  } else {
    fLine.tags.insert(fLine.tags.begin() + static_cast<ptrdiff_t>(at), tag);
  }
  fLine.RemoveEarlier(at, stampedMs);
}

void TTimedLine::StampEnd(long timeMs, TWordForm form) {
  if (fStarts.empty()) return;
  const TWordForm written = fLine.FormOr(form);
  fLine.tags.resize(FirstTagAfter(fStarts.size() - 1));
  long earliestMs = fLine.LineMs().value_or(0);
  for (const TInnerTag& tag : fLine.tags) earliestMs = std::max(earliestMs, tag.timeMs);
  const long endMs = std::max(bounded(timeMs), earliestMs);
  fLine.tags.push_back({fLine.text.size(), endMs, word_tag(endMs, written)});
}

void TTimedLine::Clear(size_t unit) {
  if (unit >= fStarts.size()) return;
  const size_t first = std::min(TagOf(unit), FirstTagAfter(unit));
  const size_t end = std::min(TagOf(unit + 1), FirstTagAfter(unit + 1));
  fLine.tags.erase(fLine.tags.begin() + static_cast<ptrdiff_t>(first),
                   fLine.tags.begin() + static_cast<ptrdiff_t>(end));
}

void TTimedLine::ReplaceText(size_t at, size_t length, std::string_view by) {
  fLine.text.replace(at, length, by);
  for (TInnerTag& tag : fLine.tags)
    if (tag.at >= at + length) tag.at = tag.at - length + by.size();
  FindUnits();
}

bool TTimedLine::JoinWithNext(size_t unit) {
  if (unit + 1 >= fStarts.size()) return false;
  const size_t start = fStarts[unit];
  const size_t end = fStarts[unit + 1];
  std::erase_if(fLine.tags, [=](const TInnerTag& tag) { return tag.at > start && tag.at <= end; });
  const bool isSplit = std::string_view(fLine.text).substr(0, end).ends_with(kSplitMark);
  const size_t at = isSplit ? end - kSplitMark.size() : end;
  ReplaceText(at, end - at, {});
  if (UnitAt(at) != unit) ReplaceText(at, 0, kJoinMark);
  return true;
}

bool TTimedLine::SplitAt(size_t byte) {
  const size_t unit = UnitAt(byte);
  if (unit >= fStarts.size() || byte <= fStarts[unit] || IsBlankFrom(fStarts[unit], byte) ||
      IsBlankFrom(byte, StartOf(unit + 1))) {
    return false;
  }
  if (std::string_view(fLine.text).substr(0, byte).ends_with(kJoinMark)) {
    byte -= kJoinMark.size();
    ReplaceText(byte, kJoinMark.size(), {});
  }
  if (!std::ranges::binary_search(fStarts, byte)) ReplaceText(byte, 0, kSplitMark);
  return true;
}

long sung_start(const std::string& line, long positionMs) {
  const std::vector<long> starts = leading_times(line);
  long sungMs = starts.empty() ? 0 : starts.front();
  for (const long startMs : starts)
    if (startMs <= positionMs) sungMs = std::max(sungMs, startMs);
  return sungMs;
}
