#include "tools/vesmo_lrc/report.h"

#include "lyrics/tag_spans.h"
#include "tools/vesmo_lrc/rewrite.h"

#include <algorithm>
#include <cstdio>

namespace {

struct TTagCount {
  size_t lines = 0;
  size_t withWords = 0; // lines with times within them
  size_t standard = 0;
  size_t colon = 0;
  size_t dotted = 0;
  std::optional<long> firstMs;
  std::optional<long> lastMs;
};

TTagCount count_tags(const std::list<std::string>& lines) {
  TTagCount count;
  for (const std::string& line : lines) {
    const std::vector<TTagSpan> tags = time_tags_in(line);
    if (!tags.empty() && tags.front().IsAtLineStart()) ++count.lines;
    if (tags.size() > count_leading_tags(line, tags)) ++count.withWords;
    for (const TTagSpan& tag : tags) {
      ++(tag.isDotted ? count.dotted : tag.length > 7 ? count.colon : count.standard);
      const long time = tag_time(line, tag);
      count.firstMs = std::min(count.firstMs.value_or(time), time);
      count.lastMs = std::max(count.lastMs.value_or(time), time);
    }
  }
  return count;
}

std::string time_text(const std::optional<long>& ms) {
  if (!ms) return "-";
  char text[64];
  std::snprintf(text, sizeof text, "%02ld:%02ld.%02ld", *ms / 60000, *ms / 1000 % 60, *ms / 10 % 100);
  return text;
}

/** End of the UTF-8 character that begins at `at`; `at` itself if it is invalid. */
size_t character_end(const std::string& text, size_t at) {
  const auto lead = static_cast<unsigned char>(text[at]);
  const size_t length = lead < 0x80 ? 1 : lead < 0xC2 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 0;
  if (at + length > text.size()) return at;
  for (size_t i = 1; i < length; ++i) {
    if ((static_cast<unsigned char>(text[at + i]) & 0xC0) != 0x80) return at;
  }
  return at + length;
}

/** JSON must be UTF-8: invalid bytes of file names become U+FFFD. */
std::string quoted(const std::string& text) {
  std::string made = "\"";
  for (size_t at = 0; at < text.size();) {
    const size_t end = character_end(text, at);
    const char c = text[at];
    char escaped[8];
    std::snprintf(escaped, sizeof escaped, "\\u%04x", static_cast<unsigned>(static_cast<unsigned char>(c)));
    if (end == at) {
      made += "\uFFFD";
    } else if (c == '"' || c == '\\') {
      made += std::string("\\") + c;
    } else if (static_cast<unsigned char>(c) < 0x20) {
      made += escaped;
    } else {
      made += text.substr(at, end - at);
    }
    at = std::max(end, at + 1);
  }
  return made + "\"";
}

/** Table fields must not contain tabs or line ends. */
std::string field(const std::string& text) {
  std::string made = printable(text);
  std::replace(made.begin(), made.end(), '\t', ' ');
  return made;
}

std::string or_null(const std::optional<long>& number) {
  return number ? std::to_string(*number) : "null";
}

constexpr const char* kInfoColumns = "file\tform\tlines\ttagged lines\tstandard tags\tcolon tags\tdotted "
                                     "tags\tfirst\tlast\tdialect\tlines with word times\n";
constexpr const char* kCheckColumns = "file\tline\tcode\tmessage\n";

} // namespace

std::string info_report(const std::string& name, const TExactLyrics& lyrics, TReportFormat format) {
  const TTagCount tags = count_tags(lyrics.Lines());
  const std::string form = lyrics.IsUtf16() ? "UTF-16" : form_of(lyrics);
  const auto number = [](size_t value) { return std::to_string(value); };
  const std::string lines = number(lyrics.Lines().size());
  const std::string dialect = dialect_of(lyrics);
  switch (format) {
  case TReportFormat::kText:
    return printable(name) + ": " + form + "; " + lines + (lines == "1" ? " line, " : " lines, ") + number(tags.lines) +
           " tagged, " + number(tags.withWords) + " with word times; tags: " + number(tags.standard) + " standard, " +
           number(tags.colon) + " with colon, " + number(tags.dotted) + " with period; dialect: " + dialect + "; " +
           time_text(tags.firstMs) + " to " + time_text(tags.lastMs) + "\n";
  case TReportFormat::kTable:
    return field(name) + "\t" + form + "\t" + lines + "\t" + number(tags.lines) + "\t" + number(tags.standard) + "\t" +
           number(tags.colon) + "\t" + number(tags.dotted) + "\t" + time_text(tags.firstMs) + "\t" +
           time_text(tags.lastMs) + "\t" + dialect + "\t" + number(tags.withWords) + "\n";
  case TReportFormat::kJson:
    break;
  }
  return "{\"file\": " + quoted(name) + ", \"form\": " + quoted(form) + ", \"lines\": " + lines +
         ", \"taggedLines\": " + number(tags.lines) + ", \"standardTags\": " + number(tags.standard) +
         ", \"colonTags\": " + number(tags.colon) + ", \"dottedTags\": " + number(tags.dotted) +
         ", \"firstMs\": " + or_null(tags.firstMs) + ", \"lastMs\": " + or_null(tags.lastMs) + ", \"dialect\": \"" +
         dialect + "\", \"linesWithWordTimes\": " + number(tags.withWords) + "}";
}

std::string check_report(const std::string& name, const std::vector<TFinding>& findings, TReportFormat format) {
  std::string text;
  for (const TFinding& finding : findings) {
    const std::string line = std::to_string(finding.line);
    if (format == TReportFormat::kJson) {
      text += std::string(text.empty() ? "" : ", ") + "{\"line\": " + (finding.line > 0 ? line : "null") +
              ", \"code\": " + quoted(finding.code) + ", \"message\": " + quoted(finding.message) + "}";
    } else if (format == TReportFormat::kTable) {
      text += field(name) + "\t" + line + "\t" + finding.code + "\t" + field(finding.message) + "\n";
    } else {
      text += printable(name) + (finding.line > 0 ? ":" + line : "") + ": " + printable(finding.message) + " [" +
              finding.code + "]\n";
    }
  }
  return format == TReportFormat::kJson ? "{\"file\": " + quoted(name) + ", \"findings\": [" + text + "]}" : text;
}

TReportFrame report_frame(const TOptions& options) {
  const bool isReport = options.command == TCommand::kInfo || options.command == TCommand::kCheck;
  if (isReport && options.reportFormat == TReportFormat::kJson) return {"[", ",\n", "]\n"};
  if (isReport && options.reportFormat == TReportFormat::kTable) {
    return {options.command == TCommand::kInfo ? kInfoColumns : kCheckColumns, "", ""};
  }
  return {};
}

std::string printable(const std::string& text) {
  std::string made;
  made.reserve(text.size());
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    char escaped[8];
    std::snprintf(escaped, sizeof escaped, "\\x%02X", static_cast<unsigned>(byte));
    if ((byte < 0x20 && c != '\t') || byte == 0x7F) {
      made += escaped;
    } else {
      made.push_back(c);
    }
  }
  return made;
}
