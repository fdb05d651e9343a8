#include "tools/vesmo_lrc/check.h"

#include "lyrics/tag_spans.h"
#include "lyrics/time_tags.h"
#include "tools/vesmo_lrc/count_of.h"
#include "tools/vesmo_lrc/rewrite.h"

#include <algorithm>
#include <cstdlib>

namespace {

/** Checks one file, line by line. */
class TCheck {
public:
  TCheck(const TExactLyrics& lyrics, const TOptions& options) : fLyrics(lyrics), fOptions(options) {}

  std::vector<TFinding> Run() {
    LookAtBytes();
    if (fLyrics.IsUtf16()) return fFindings;
    LookAtLineEnds();
    FindSongLength();
    LookAtDialect();
    for (const std::string& line : fLyrics.Lines()) {
      ++fNumber;
      LookAtBracket(line);
      LookAtTimes(line);
      LookAtCharacters(line);
    }
    for (const size_t broken : fLyrics.BrokenLines()) {
      fNumber = broken + 1;
      Find("broken-text", "not valid " + encoding_name(fLyrics.Encoding()));
    }
    TellColons();
    std::stable_sort(fFindings.begin(), fFindings.end(),
                     [](const TFinding& a, const TFinding& b) { return a.line < b.line; });
    return std::move(fFindings);
  }

private:
  void Find(const char* code, std::string message) { fFindings.push_back({fNumber, code, std::move(message)}); }

  void LookAtBytes() {
    if (fLyrics.IsUtf16()) return Find("utf-16", "UTF-16, which few players and not the editor can read");
    if (fLyrics.HasByteOrderMark())
      Find("byte-order-mark", "a byte-order mark hides the first line's tag from players");
    if (!fLyrics.Rest().empty())
      Find("nul", "contains a NUL: some players stop there, others do not recognise the file as text");
    if (fLyrics.Rest().find_first_not_of('\0') != std::string_view::npos) {
      Find("text-behind-nul", "text after the NUL is not shown");
    }
    if (fLyrics.Encoding() != TEncoding::kUtf8) {
      Find("encoding", encoding_name(fLyrics.Encoding()) + "; most players expect UTF-8");
    }
  }

  void LookAtLineEnds() {
    size_t counts[3] = {};
    for (const TExactLyrics::TLine& line : fLyrics.Layout()) {
      if (!line.end.empty()) ++counts[line.end == "\n" ? 0 : line.end == "\r" ? 2 : 1];
    }
    const auto kinds = std::count_if(std::begin(counts), std::end(counts), [](size_t count) { return count > 0; });
    if (kinds > 1) {
      Find("mixed-line-ends", "mixed line endings: " + std::to_string(counts[0]) + " LF, " + std::to_string(counts[1]) +
                                  " CR LF, " + std::to_string(counts[2]) + " CR");
    } else if (counts[2] > 0) {
      Find("cr-line-ends", "lines end with CR alone, which most players do not treat as a line ending");
    }
  }

  void LookAtDialect() {
    if (std::string_view(dialect_of(fLyrics)) != "mixed") return;
    Find("mixed-dialects",
         "time tags of both dialects, [mm:ss:cc] and [mm:ss.cc]; convert --dialect gives them one form");
  }

  void FindSongLength() {
    fLengthMs = fOptions.songLengthMs;
    for (const std::string& line : fLyrics.Lines()) {
      if (const auto value = header_value(line, "length"); value && !fLengthMs) {
        const size_t colon = value->find(':');
        if (colon == std::string::npos) continue;
        const double seconds = std::clamp(std::strtod(value->c_str() + colon + 1, nullptr), 0.0, 1e6);
        fLengthMs = std::clamp(std::strtol(value->c_str(), nullptr, 10), 0L, 10000L) * 60000 +
                    static_cast<long>(seconds * 1000);
      }
    }
  }

  void LookAtBracket(const std::string& line) {
    const std::string bracket = line.substr(0, std::min(line.find(']'), size_t{40}) + 1);
    switch (bracket_kind(line)) {
    case TBracketKind::kHeader:
      return Find("header", bracket + " would be treated as a time tag by the editor's commands for all lines");
    case TBracketKind::kWord:
      return Find("bracket", bracket + " is not a time, but the editor's commands treat it as a time tag");
    case TBracketKind::kOddTag:
      return Find("odd-tag", bracket + " is not a time tag in the usual form");
    default:
      return;
    }
  }

  void LookAtTimes(const std::string& line) {
    const std::vector<TTagSpan> tags = time_tags_in(line);
    for (const TTagSpan& tag : tags) LookAtTag(line, tag);
    if (tags.empty() || !tags.front().IsAtLineStart()) return;
    const bool hasSecond = tags.size() > 1 && tags[1].begin == tags[0].End() && line[tags[1].begin] == '[';
    if (hasSecond) return Find("several-tags", "the editor uses only the first of several tags");
    const auto earlier = std::ranges::adjacent_find(
        tags, [&line](const TTagSpan& a, const TTagSpan& b) { return tag_time(line, b) < tag_time(line, a); });
    if (earlier != tags.end())
      Find("word-order", tag_text(line, *std::next(earlier)) + " is earlier than a time before it in the line");
    const long time = tag_time(line, tags.front());
    if (time < fLatestMs) Find("order", tag_text(line, tags.front()) + " is earlier than a line before it");
    fLatestMs = std::max(fLatestMs, time);
    const size_t next = tags.front().End();
    if (tags.front().length == 7 && next < line.size() && line[next] >= '0' && line[next] <= '9') {
      Find("digit-behind-tag", "the editor reads the digits after the tag as hundredths");
    }
  }

  void LookAtTag(const std::string& line, const TTagSpan& tag) {
    const std::string text = line.substr(tag.begin, tag.length);
    const long time = tag_time(line, tag);
    if (!tag.isDotted && tag.length == 10 && fColons++ == 0) fFirstColon = fNumber;
    if (line[tag.begin + 4] > '5') Find("odd-tag", text + " has more than 59 seconds");
    if (fLengthMs && time > *fLengthMs) Find("past-end", text + " is past the end of the song");
  }

  void LookAtCharacters(const std::string& line) {
    if (!fOptions.toEncoding || encoded_line(line, *fOptions.toEncoding)) return;
    std::string named;
    for (const std::string& character : characters_outside(line, *fOptions.toEncoding)) named += " " + character;
    Find("characters", encoding_name(*fOptions.toEncoding) + " cannot hold" + named);
  }

  void TellColons() {
    if (fColons == 0) return;
    fNumber = fFirstColon;
    Find("colon-tags", count_of(fColons, "tag has", "tags have") +
                           " a colon before the hundredths, where other players expect a period; this is the first");
  }

  const TExactLyrics& fLyrics;
  const TOptions& fOptions;
  std::vector<TFinding> fFindings;
  std::optional<long> fLengthMs;
  size_t fNumber = 0;
  size_t fColons = 0;
  size_t fFirstColon = 0;
  long fLatestMs = 0;
};

} // namespace

std::vector<TFinding> check(const TExactLyrics& lyrics, const TOptions& options) {
  return TCheck(lyrics, options).Run();
}
