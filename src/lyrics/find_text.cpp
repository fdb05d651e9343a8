#include "lyrics/find_text.h"

#include "lyrics/tag_spans.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>

namespace {

/** Code points, folded unless case matters, with the byte at which each begins. */
struct TFolded {
  std::vector<UChar32> points;
  std::vector<size_t> bytes; // one more: the end
};

/** A byte that is not valid UTF-8 counts as a character that equals only itself. */
TFolded folded(const std::string& text, bool matchesCase) {
  constexpr UChar32 kInvalid = 0x110000;
  TFolded all;
  const auto size = static_cast<int32_t>(text.size());
  for (int32_t at = 0; at < size;) {
    const auto byte = static_cast<uint8>(text[static_cast<size_t>(at)]);
    all.bytes.push_back(static_cast<size_t>(at));
    UChar32 point = 0;
    int32_t next = at;
    U8_NEXT(text.data(), next, size, point);
    if (point < 0) {
      point = kInvalid + byte;
      next = at + 1;
    }
    all.points.push_back(matchesCase || point >= kInvalid ? point : u_foldCase(point, U_FOLD_CASE_DEFAULT));
    at = next;
  }
  all.bytes.push_back(text.size());
  return all;
}

bool touches_tag(const TMatch& match, const std::vector<TTagSpan>& tags) {
  return std::ranges::any_of(
      tags, [&](const TTagSpan& tag) { return match.begin < tag.End() && tag.begin < match.begin + match.length; });
}

std::optional<TMatch> first_from(const std::vector<TMatch>& matches, size_t byte) {
  const auto found = std::ranges::find_if(matches, [byte](const TMatch& match) { return match.begin >= byte; });
  return found == matches.end() ? std::nullopt : std::optional(*found);
}

std::optional<TMatch> last_before(const std::vector<TMatch>& matches, size_t byte) {
  const auto ends_before = [byte](const TMatch& match) { return match.begin + match.length <= byte; };
  const auto found = std::find_if(matches.rbegin(), matches.rend(), ends_before);
  return found == matches.rend() ? std::nullopt : std::optional(*found);
}

} // namespace

std::vector<TMatch> matches_in(const std::string& line, const TFindOptions& options) {
  if (options.text.empty() || line.empty() || line.size() > INT32_MAX) return {};
  const TFolded wanted = folded(options.text, options.matchesCase);
  const TFolded all = folded(line, options.matchesCase);
  const std::vector<TTagSpan> tags = options.leavesOutTags ? time_tags_in(line) : std::vector<TTagSpan>();
  std::vector<TMatch> matches;
  for (auto from = all.points.begin();;) {
    const auto found = std::search(from, all.points.end(), wanted.points.begin(), wanted.points.end());
    if (found == all.points.end()) return matches;
    const auto index = static_cast<size_t>(found - all.points.begin());
    const TMatch match{all.bytes[index], all.bytes[index + wanted.points.size()] - all.bytes[index]};
    const bool counts = !touches_tag(match, tags);
    if (counts) matches.push_back(match);
    from = found + (counts ? static_cast<ptrdiff_t>(wanted.points.size()) : 1);
  }
}

std::string replaced(const std::string& line, const std::vector<TMatch>& matches, const std::string& by) {
  std::string text;
  size_t end = 0;
  for (const TMatch& match : matches) {
    text.append(line, end, match.begin - end).append(by);
    end = match.begin + match.length;
  }
  return text.append(line, end, std::string::npos);
}

std::optional<TMatchInLine> nearest_match(const std::vector<std::string>& lines, const TFindOptions& options,
                                          const TFindPlace& from, bool backward) {
  const auto count = static_cast<int32>(lines.size());
  if (count == 0 || from.line < 0) return {};
  const int32 start = std::min(from.line, count - 1);
  // The first line is looked at twice: from the place on, and at the end up to it.
  for (int32 i = 0; i <= count; ++i) {
    const int32 line = ((start + (backward ? -i : i)) % count + count) % count;
    const std::vector<TMatch> matches = matches_in(lines[static_cast<size_t>(line)], options);
    const size_t byte = i == 0 ? from.byte : backward ? std::string::npos : 0;
    if (const auto match = backward ? last_before(matches, byte) : first_from(matches, byte)) return {{line, *match}};
  }
  return {};
}
