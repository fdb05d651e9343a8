#include "tools/vesmo_lrc/rewrite.h"

#include "lyrics/bulk_tags.h"
#include "lyrics/dialect.h"
#include "lyrics/tag_spans.h"
#include "lyrics/time_tags.h"
#include "lyrics/word_lines.h"

#include <algorithm>
#include <functional>
#include <set>

namespace {

using TBulkCommand = std::function<void(std::list<std::string>*)>;

constexpr size_t kMostLinesNamed = 5;

TBulkCommand bulk_command(const TOptions& options) {
  switch (options.command) {
  case TCommand::kShift:
    return [amount = options.shiftMs](auto* lines) { shift_time_tags(lines, amount); };
  case TCommand::kConvert:
    return [toExtended = options.toExtended](auto* lines) { convert_time_tags(lines, toExtended); };
  default:
    return delete_time_tags;
  }
}

/** Conversion is between the editor's two forms; word tags are left alone. */
bool is_for_command(const std::string& line, const TTagSpan& span, TCommand command) {
  return command != TCommand::kConvert || line[span.begin] == '[';
}

/** Formats the new tag like the old one: same brackets and separator, thousandths digit kept. */
std::string dressed_like(const std::string& old, std::string tag, const TTagSpan& span, TCommand command) {
  if (tag.empty() || command == TCommand::kConvert) return tag;
  if (span.isDotted && tag.size() > 7) tag[6] = '.';
  if (span.isDotted && span.length == 11) tag.insert(9, 1, old[span.begin + 9]);
  tag.front() = old[span.begin];
  tag.back() = old[span.End() - 1];
  return tag;
}

/** Applies the command to each well-formed tag of a line. */
void change_tags(std::string* line, const TBulkCommand& change, TCommand command) {
  const std::string old = *line;
  const std::vector<TTagSpan> spans = time_tags_in(old);
  for (auto span = spans.rbegin(); span != spans.rend(); ++span) {
    if (!is_for_command(old, *span, command)) continue;
    std::list<std::string> tag{tag_text(old, *span)};
    change(&tag);
    line->replace(span->begin, span->length, dressed_like(old, tag.front(), *span, command));
  }
}

bool editor_takes_for_tag(const std::string& line) {
  long time = 0;
  bool isExtended = false;
  return bracket_kind(line) != TBracketKind::kTimeTag && time_tag_to_time(line, &time, &isExtended);
}

void change_dialect(TDialect dialect, std::list<std::string>* lines) {
  if (dialect == TDialect::kFamily) {
    show_as_family(lines);
    write_words_as(TWordForm::kFamily, lines);
    return;
  }
  write_words_as(TWordForm::kCommon, lines);
  std::vector<std::string> written = written_as_common({lines->begin(), lines->end()}, {});
  std::move(written.begin(), written.end(), lines->begin());
}

/** The NUL at the end is of the family's dialect. */
void remove_final_nul(const TExactLyrics& lyrics, std::string* bytes) {
  if (lyrics.Rest().find_first_not_of('\0') == std::string_view::npos)
    bytes->resize(bytes->size() - lyrics.Rest().size());
}

void change_lines(const TOptions& options, TRewritten* result) {
  if (options.toDialect) return change_dialect(*options.toDialect, &result->lines);
  const TBulkCommand change = bulk_command(options);
  if (options.likeEditor) {
    change(&result->lines);
    return;
  }
  for (std::string& line : result->lines) {
    result->bracketsLeft += editor_takes_for_tag(line);
    change_tags(&line, change, options.command);
  }
}

std::string refusal_for_characters(const std::list<std::string>& lines, TEncoding encoding) {
  std::string named;
  size_t number = 0;
  size_t count = 0;
  for (const std::string& line : lines) {
    ++number;
    const std::vector<std::string> characters = characters_outside(line, encoding);
    if (characters.empty() || ++count > kMostLinesNamed) continue;
    named += (named.empty() ? "line " : "; line ") + std::to_string(number) + ":";
    for (const std::string& character : characters) named += " " + character;
  }
  const std::string more = count > kMostLinesNamed ? "; and more lines" : "";
  return encoding_name(encoding) + " cannot hold " + named + more;
}

/** Why the file cannot be changed; empty if it can. */
std::string unfitness(const TExactLyrics& lyrics, const TOptions& options) {
  const bool hasMoreText = lyrics.Rest().find_first_not_of('\0') != std::string_view::npos;
  if (hasMoreText && options.command == TCommand::kEncode) return "text after a NUL would be lost";
  // UTF-8 output keeps invalid bytes unchanged.
  return lyrics.Encoding() == TEncoding::kUtf8 && !lyrics.IsUtf16() ? std::string() : unreadable_text(lyrics);
}

void encode(const TExactLyrics& lyrics, const TOptions& options, TRewritten* result) {
  constexpr std::string_view kLineEnds[] = {"\n", "\r\n", "\r"};
  const TEncoding encoding = options.toEncoding.value_or(lyrics.Encoding());
  std::optional<std::string_view> lineEnd;
  if (options.toLineEnd) lineEnd = kLineEnds[static_cast<size_t>(*options.toLineEnd)];
  result->bytes = lyrics.InEncoding(encoding, lineEnd);
  if (result->bytes) result->form = form_of(TExactLyrics(*result->bytes, encoding));
  if (!result->bytes) result->refusal = refusal_for_characters(lyrics.Lines(), encoding);
}

} // namespace

TRewritten rewrite(const TExactLyrics& lyrics, const TOptions& options) {
  TRewritten result;
  result.lines = lyrics.Lines();
  result.refusal = unfitness(lyrics, options);
  if (!result.refusal.empty()) return result;
  if (options.command == TCommand::kEncode) {
    encode(lyrics, options, &result);
  } else {
    change_lines(options, &result);
    result.bytes = lyrics.WithLines(result.lines);
    if (result.bytes && options.toDialect == TDialect::kCommon) remove_final_nul(lyrics, &*result.bytes);
    if (result.bytes) result.form = form_of(TExactLyrics(*result.bytes, lyrics.Encoding()));
    if (!result.bytes) result.refusal = refusal_for_characters(result.lines, lyrics.Encoding());
  }
  return result;
}

std::string unreadable_text(const TExactLyrics& lyrics) {
  if (lyrics.IsUtf16()) return "UTF-16 is not supported";
  const std::vector<size_t> broken = lyrics.BrokenLines();
  if (broken.empty()) return {};
  return "line " + std::to_string(broken.front() + 1) + " is not valid " + encoding_name(lyrics.Encoding()) +
         "; name the encoding with --from";
}

std::string encoding_name(TEncoding encoding) {
  constexpr const char* kNames[] = {"UTF-8", "Shift-JIS", "JIS"};
  return kNames[static_cast<size_t>(encoding)];
}

const char* dialect_of(const TExactLyrics& lyrics) {
  const TTagUse use = tags_used_in(lyrics.Lines());
  return use.IsMixed() ? "mixed" : use.IsCommon() ? "common" : use.hasFamily ? "family" : "none";
}

std::string form_of(const TExactLyrics& lyrics) {
  std::set<std::string_view> ends;
  for (const TExactLyrics::TLine& line : lyrics.Layout()) {
    if (!line.end.empty()) ends.insert(line.end);
  }
  const std::string_view end = ends.size() == 1 ? *ends.begin() : "";
  const std::string name = ends.size() > 1 ? "mixed line ends"
                           : end == "\n"   ? "LF"
                           : end == "\r\n" ? "CR LF"
                           : end == "\r"   ? "CR"
                                           : "no line ends";
  return encoding_name(lyrics.Encoding()) + ", " + name + (lyrics.HasByteOrderMark() ? ", byte-order mark" : "") +
         (lyrics.Rest().empty() ? "" : ", NUL");
}
