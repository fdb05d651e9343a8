#pragma once

#include <optional>
#include <string>
#include <vector>

/** Where in a line the well-formed time tags stand, also those behind the first: `[mm:ss]`, `[mm:ss:cc]`, and as other
    programs write them `[mm:ss.cc]`, `[mm:ss.ccc]` and, for single words, `<mm:ss.cc>`. What they say is still read by
    `time_tag_to_time`. The editor's commands are looser on purpose: to them every line that begins with a bracket is
    tagged. Pure: any thread. */

struct TTagSpan {
  size_t begin = 0;
  size_t length = 0;
  bool isDotted = false;
  bool IsAtLineStart() const { return begin == 0; }
  size_t End() const { return begin + length; }
};

/** From left to right. */
std::vector<TTagSpan> time_tags_in(const std::string& line);

/** How many of a line's tags, found by `time_tags_in`, it begins with: in square brackets, one directly after another.
 */
size_t count_leading_tags(const std::string& line, const std::vector<TTagSpan>& tags);

/** The tag alone, in the form that `time_tag_to_time` reads. */
std::string tag_text(const std::string& line, const TTagSpan& span);

/** The time of the tag in ms. */
long tag_time(const std::string& line, const TTagSpan& span);

/** What a line begins with, when that is a bracket. */
enum class TBracketKind {
  kNone,    // no bracket
  kTimeTag, // a well-formed time tag
  kOddTag,  // digits, colons and periods that are none, or a tag that nothing closes
  kHeader,  // `[name:value]`
  kWord     // anything else, as `[Chorus]`
};
TBracketKind bracket_kind(const std::string& line);

/** What stands behind the colon of a header of that name. */
std::optional<std::string> header_value(const std::string& line, const std::string& name);
