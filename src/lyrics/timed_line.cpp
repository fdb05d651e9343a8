#include "lyrics/timed_line.h"

#include "lyrics/line_times.h"
#include "lyrics/tag_spans.h"
#include "lyrics/time_tags.h"
#include "lyrics/word_units.h"

#include <algorithm>
#include <climits>

namespace {

constexpr size_t kStandardLength = 7; // [mm:ss]
constexpr size_t kSeparator = 6;

/** What a tag with hundredths can show. */
long bounded(long timeMs) {
  constexpr long kResolutionMs = 10;
  return std::clamp(timeMs, 0L, kLastTagTime) / kResolutionMs * kResolutionMs;
}

std::string word_tag(long timeMs, TWordForm form) {
  std::string tag;
  time_to_time_tag(timeMs, &tag, true);
  if (form == TWordForm::kFamily) return tag;
  tag.front() = '<';
  tag[kSeparator] = '.';
  tag.back() = '>';
  return tag;
}

} // namespace

TTimedLine::TTimedLine(const std::string& line) {
  const std::vector<TTagSpan> tags = time_tags_in(line);
  size_t next = count_leading_tags(line, tags);
  size_t at = next == 0 ? 0 : tags[next - 1].End();
  fLead = line.substr(0, at);
  for (; next < tags.size(); ++next) {
    const TTagSpan& tag = tags[next];
    fText += line.substr(at, tag.begin - at);
    fTags.push_back({fText.size(), tag_time(line, tag), line.substr(tag.begin, tag.length)});
    at = tag.End();
  }
  fText += line.substr(at);
  FindUnits();
}

/** A tag in front of blanks ends a unit. */
void TTimedLine::FindUnits() {
  fStarts = unit_starts(fText);
  const std::vector<size_t> cut = fStarts;
  for (const TTag& tag : fTags) {
    const auto next = std::ranges::upper_bound(cut, tag.at);
    const size_t end = next == cut.end() ? fText.size() : *next;
    if (next == cut.begin() || std::ranges::binary_search(fStarts, tag.at) || IsBlankFrom(tag.at, end)) continue;
    fStarts.insert(std::ranges::upper_bound(fStarts, tag.at), tag.at);
  }
}

bool TTimedLine::IsBlankFrom(size_t byte, size_t end) const {
  return is_blank_text(std::string_view(fText).substr(byte, end - byte));
}

std::string TTimedLine::Line() const {
  std::string line = fLead;
  size_t at = 0;
  for (const TTag& tag : fTags) {
    line.append(fText, at, tag.at - at);
    line += tag.text;
    at = tag.at;
  }
  return line.append(fText, at);
}

std::string TTimedLine::TextOf(size_t unit) const {
  return fText.substr(StartOf(unit), StartOf(unit + 1) - StartOf(unit));
}

size_t TTimedLine::UnitAt(size_t byte) const {
  const auto next = std::ranges::upper_bound(fStarts, byte);
  return static_cast<size_t>(std::max<ptrdiff_t>(next - fStarts.begin() - 1, 0));
}

size_t TTimedLine::FirstTagAfter(size_t unit) const {
  const size_t start = StartOf(unit);
  return static_cast<size_t>(std::ranges::upper_bound(fTags, start, {}, &TTag::at) - fTags.begin());
}

size_t TTimedLine::TagOf(size_t unit) const {
  const size_t after = FirstTagAfter(unit);
  const bool isThere = unit < fStarts.size() && after > 0 && fTags[after - 1].at == fStarts[unit];
  return isThere ? after - 1 : fTags.size();
}

std::optional<long> TTimedLine::LineMs() const {
  const std::optional<TTagSpan> tag = time_tag_at(fLead, 0);
  return tag ? std::optional(tag_time(fLead, *tag)) : std::nullopt;
}

std::optional<long> TTimedLine::TimeOf(size_t unit) const {
  const size_t tag = TagOf(unit);
  if (tag < fTags.size()) return fTags[tag].timeMs;
  return unit == 0 ? LineMs() : std::nullopt;
}

std::optional<long> TTimedLine::EndMs() const {
  const bool isAtEnd = !fStarts.empty() && FirstTagAfter(fStarts.size() - 1) < fTags.size();
  return isAtEnd ? std::optional(fTags.back().timeMs) : std::nullopt;
}

size_t TTimedLine::CountTimed() const {
  size_t count = 0;
  for (size_t unit = 0; unit < fStarts.size(); ++unit) count += TimeOf(unit) ? 1 : 0;
  return count;
}

std::optional<size_t> TTimedLine::UnitSungAt(long positionMs, long startMs) const {
  const long atFirstMs = AtFirst(positionMs, startMs);
  std::optional<size_t> sung;
  if (fTags.empty() || EndMs().value_or(LONG_MAX) <= atFirstMs) return sung;
  for (size_t unit = 0; unit < fStarts.size(); ++unit)
    if (TimeOf(unit).value_or(LONG_MAX) <= atFirstMs) sung = unit;
  return sung;
}

size_t TTimedLine::BytesSungAt(long positionMs, long startMs) const {
  if (EndMs().value_or(LONG_MAX) <= AtFirst(positionMs, startMs)) return fText.size();
  const std::optional<size_t> unit = UnitSungAt(positionMs, startMs);
  return unit ? StartOf(*unit + 1) : 0;
}

TWordForm TTimedLine::FormOr(TWordForm form) const {
  if (fTags.empty()) return form;
  return fTags.front().text.front() == '<' ? TWordForm::kCommon : TWordForm::kFamily;
}

void TTimedLine::RemoveEarlier(size_t firstTag, long timeMs) {
  const auto first = fTags.begin() + static_cast<ptrdiff_t>(firstTag);
  const auto isEarlier = [timeMs](const TTag& tag) { return tag.timeMs < timeMs; };
  fTags.erase(std::remove_if(first, fTags.end(), isEarlier), fTags.end());
}

void TTimedLine::Stamp(size_t unit, long timeMs, TTagForm lineForm, TWordForm wordForm) {
  if (unit == 0) {
    const bool hasOtherBracket = fLead.empty() && fText.starts_with('[');
    if (hasOtherBracket) {
      *this = TTimedLine(stamp(Line(), timeMs, lineForm).line);
    } else {
      fLead = stamp(fLead, timeMs, lineForm).line;
    }
    const size_t tag = TagOf(0);
    if (tag < fTags.size()) fTags[tag] = {0, LineMs().value_or(0), retimed_tag(fTags[tag].text, LineMs().value_or(0))};
    return RemoveEarlier(0, LineMs().value_or(0));
  }
  if (unit >= fStarts.size()) return;
  const size_t old = TagOf(unit);
  const size_t at = old < fTags.size() ? old : FirstTagAfter(unit);
  long earliestMs = LineMs().value_or(0);
  for (size_t i = 0; i < at; ++i) earliestMs = std::max(earliestMs, fTags[i].timeMs);
  const long stampedMs = std::max(bounded(timeMs), earliestMs);
  const TTag tag{fStarts[unit], stampedMs, word_tag(stampedMs, FormOr(wordForm))};
  if (old < fTags.size()) {
    fTags[old] = tag;
  } else {
    fTags.insert(fTags.begin() + static_cast<ptrdiff_t>(at), tag);
  }
  RemoveEarlier(at, stampedMs);
}

void TTimedLine::StampEnd(long timeMs, TWordForm form) {
  if (fStarts.empty()) return;
  const TWordForm written = FormOr(form);
  fTags.resize(FirstTagAfter(fStarts.size() - 1));
  long earliestMs = LineMs().value_or(0);
  for (const TTag& tag : fTags) earliestMs = std::max(earliestMs, tag.timeMs);
  const long endMs = std::max(bounded(timeMs), earliestMs);
  fTags.push_back({fText.size(), endMs, word_tag(endMs, written)});
}

void TTimedLine::Clear(size_t unit) {
  if (unit >= fStarts.size()) return;
  const size_t first = std::min(TagOf(unit), FirstTagAfter(unit));
  const size_t end = std::min(TagOf(unit + 1), FirstTagAfter(unit + 1));
  fTags.erase(fTags.begin() + static_cast<ptrdiff_t>(first), fTags.begin() + static_cast<ptrdiff_t>(end));
}

void TTimedLine::ShiftWordTimes(long stepMs) {
  for (TTag& tag : fTags) {
    tag.timeMs = std::clamp(tag.timeMs + stepMs, LineMs().value_or(0), std::max(kLastTagTime, LineMs().value_or(0)));
    tag.text = retimed_tag(tag.text, tag.timeMs);
  }
}

void TTimedLine::ConvertWordTags(bool toExtended) {
  constexpr long kHalfSecondMs = 500;
  constexpr long kSecondMs = 1000;
  for (TTag& tag : fTags) {
    if (tag.text.front() == '<' || (tag.text.size() == kStandardLength) != toExtended) continue;
    if (!toExtended) tag.timeMs = std::min(tag.timeMs + kHalfSecondMs, kLastTagTime) / kSecondMs * kSecondMs;
    time_to_time_tag(tag.timeMs, &tag.text, toExtended);
  }
}

void TTimedLine::ReplaceText(size_t at, size_t length, std::string_view by) {
  fText.replace(at, length, by);
  for (TTag& tag : fTags)
    if (tag.at >= at + length) tag.at = tag.at - length + by.size();
  FindUnits();
}

bool TTimedLine::JoinWithNext(size_t unit) {
  if (unit + 1 >= fStarts.size()) return false;
  const size_t start = fStarts[unit];
  const size_t end = fStarts[unit + 1];
  std::erase_if(fTags, [=](const TTag& tag) { return tag.at > start && tag.at <= end; });
  const bool isSplit = std::string_view(fText).substr(0, end).ends_with(kSplitMark);
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
  if (std::string_view(fText).substr(0, byte).ends_with(kJoinMark)) {
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
