#include "lyrics/tagged_text.h"

#include "lyrics/tag_spans.h"
#include "lyrics/time_tags.h"

#include <algorithm>

namespace {
constexpr size_t kStandardLength = 7;     // [mm:ss]
constexpr size_t kHundredthsLength = 10;  // [mm:ss:cc]
constexpr size_t kThousandthsLength = 11; // [mm:ss.ccc]
constexpr size_t kSeparator = 6;
constexpr long kHundredthMs = 10;

/** Of a tag with hundredths. */
void set_form(std::string* tag, TWordForm form) {
  const bool isFamily = form == TWordForm::kFamily;
  tag->front() = isFamily ? '[' : '<';
  (*tag)[kSeparator] = isFamily ? ':' : '.';
  tag->back() = isFamily ? ']' : '>';
}
} // namespace

std::string word_tag(long timeMs, TWordForm form) {
  std::string tag;
  time_to_time_tag(timeMs, &tag, true);
  set_form(&tag, form);
  return tag;
}

void TInnerTag::SetTime(long newMs) {
  timeMs = newMs;
  text = retimed_tag(text, newMs);
}

TTaggedText::TTaggedText(const std::string& line) {
  const std::vector<TTagSpan> spans = time_tags_in(line);
  size_t next = count_leading_tags(line, spans);
  size_t at = next == 0 ? 0 : spans[next - 1].End();
  lead = line.substr(0, at);
  for (; next < spans.size(); ++next) {
    const TTagSpan& span = spans[next];
    text += line.substr(at, span.begin - at);
    tags.push_back({text.size(), tag_time(line, span), line.substr(span.begin, span.length)});
    at = span.End();
  }
  text += line.substr(at);
}

std::string TTaggedText::Line() const {
  std::string line = lead;
  size_t at = 0;
  for (const TInnerTag& tag : tags) {
    line.append(text, at, tag.at - at);
    line += tag.text;
    at = tag.at;
  }
  return line.append(text, at);
}

std::optional<long> TTaggedText::LineMs() const {
  const std::optional<TTagSpan> tag = time_tag_at(lead, 0);
  return tag ? std::optional(tag_time(lead, *tag)) : std::nullopt;
}

TWordForm TTaggedText::FormOr(TWordForm form) const {
  if (tags.empty()) return form;
  return tags.front().text.front() == '<' ? TWordForm::kCommon : TWordForm::kFamily;
}

void TTaggedText::Shift(long stepMs) {
  const long firstMs = LineMs().value_or(0);
  for (TInnerTag& tag : tags) tag.SetTime(std::clamp(tag.timeMs + stepMs, firstMs, std::max(kLastTagTime, firstMs)));
}

void TTaggedText::Convert(bool toExtended) {
  constexpr long kHalfSecondMs = 500;
  constexpr long kSecondMs = 1000;
  for (TInnerTag& tag : tags) {
    if (tag.text.front() == '<' || (tag.text.size() == kStandardLength) != toExtended) continue;
    if (!toExtended) tag.timeMs = std::min(tag.timeMs + kHalfSecondMs, kLastTagTime) / kSecondMs * kSecondMs;
    time_to_time_tag(tag.timeMs, &tag.text, toExtended);
  }
}

/** Only from the one form to the other: a tag of another kind stays as it is. */
bool TTaggedText::WriteAs(TWordForm form) {
  bool isCut = false;
  for (TInnerTag& tag : tags) {
    const bool isCommon = tag.text.front() == '<';
    const bool isFamily = tag.text.size() == kStandardLength || tag.text[kSeparator] == ':';
    if (form == TWordForm::kCommon ? isCommon || !isFamily : !isCommon) continue;
    if (tag.text.size() == kStandardLength) tag.text.insert(kStandardLength - 1, ":00");
    if (tag.text.size() == kThousandthsLength) {
      isCut |= tag.text[kHundredthsLength - 1] != '0';
      tag.text.erase(kHundredthsLength - 1, 1);
      tag.timeMs -= tag.timeMs % kHundredthMs;
    }
    set_form(&tag.text, form);
  }
  return isCut;
}

void TTaggedText::RemoveEarlier(size_t firstTag, long timeMs) {
  const auto first = tags.begin() + static_cast<ptrdiff_t>(firstTag);
  const auto isEarlier = [timeMs](const TInnerTag& tag) { return tag.timeMs < timeMs; };
  tags.erase(std::remove_if(first, tags.end(), isEarlier), tags.end());
}
