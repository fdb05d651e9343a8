#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/** Finds all well-formed time tags of a line: `[mm:ss]`, `[mm:ss:cc]` and, as other programs write them, `[mm:ss.cc]`,
    `[mm:ss.ccc]` and, for single words, `<mm:ss.cc>`. Their times are read by `time_tag_to_time`. The editor's commands
    are less strict on purpose: for them every line that begins with a bracket is tagged. Pure: any thread. */

struct TTagSpan {
  size_t begin = 0;
  size_t length = 0;
  bool isDotted = false;
  bool IsAtLineStart() const { return begin == 0; }
  size_t End() const { return begin + length; }
};

/** The tag that begins at `at`, if any. */
std::optional<TTagSpan> time_tag_at(std::string_view line, size_t at);

/** From left to right. */
std::vector<TTagSpan> time_tags_in(const std::string& line);

/** The number of tags, found by `time_tags_in`, at the start of the line: in square brackets, directly adjacent. */
size_t count_leading_tags(const std::string& line, const std::vector<TTagSpan>& tags);

/** The tag in the form that `time_tag_to_time` reads. */
std::string tag_text(const std::string& line, const TTagSpan& span);

/** The time of the tag in ms. */
long tag_time(const std::string& line, const TTagSpan& span);

/** Another time in the form of a well-formed tag; of its thousandths the last digit stays. */
std::string retimed_tag(const std::string& tag, long timeMs);

/** The kind of bracket that a line begins with. */
enum class TBracketKind {
  kNone,    // no bracket
  kTimeTag, // a well-formed time tag
  kOddTag,  // a malformed tag: digits, colons and periods, or one that is not closed
  kHeader,  // `[name:value]`
  kWord     // anything else, as `[Chorus]`
};
TBracketKind bracket_kind(const std::string& line);

/** The value of a header of that name. */
std::optional<std::string> header_value(const std::string& line, const std::string& name);
