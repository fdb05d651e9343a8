/** Lyrics of other programs: what opening and saving does to 2,000 generated files, which differ as real ones do, and
   how long opening and saving 100,000 lines takes in either dialect. */

#include "bench/rounds.h"
#include "lyrics/document.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <random>
#include <unistd.h>

namespace {

constexpr int kFiles = 2000;
constexpr int kLines = 100000;
constexpr int kRounds = 9;

const std::string& scratch_path() {
  static const std::string path = "/tmp/dialect_bench." + std::to_string(getpid()) + ".lrc";
  return path;
}

TOpenedLyrics open(const std::string& bytes) {
  std::ofstream(scratch_path(), std::ios::binary) << bytes;
  entry_ref ref;
  std::optional<TOpenedLyrics> opened;
  if (get_ref_for_path(scratch_path().c_str(), &ref) == B_OK) opened = open_lyrics(ref, ref);
  if (!opened) std::exit(1);
  return std::move(*opened);
}

/** Makes files with a seeded generator: the same in every run. */
class TGenerator {
public:
  std::string File() {
    static const char* const kEnds[] = {"\n", "\n", "\r\n", "\r\n", "\r"};
    const std::string end = kEnds[Below(5)];
    fWord = kWords[Below(std::size(kWords))];
    fTag = Below(6);
    std::string file = Below(8) == 0 && fWord.text[0] < '\x7F' ? "\xEF\xBB\xBF" : "";
    for (const char* header : {"[ti:Title]", "[ar:Somebody]", "[offset:+250]", "[by:me]", "[length: 03:21]"})
      if (Below(3) == 0) file += header + end;
    for (size_t left = 3 + Below(60); left > 0; --left) file += Line() + end;
    if (Below(4) == 0) file.resize(file.size() - end.size());
    if (Below(40) == 0) file += "\r";
    return file;
  }
  const char* Kind() const { return fWord.encoding; }

private:
  struct TWord {
    const char* encoding;
    std::string text;
  };
  static const TWord kWords[6];

  size_t Below(size_t bound) { return fRandom() % bound; }
  std::string Digits(int count) {
    std::string digits;
    for (; count > 0; --count) digits += static_cast<char>('0' + Below(10));
    return digits;
  }
  std::string Tag(char open, char close) {
    std::string tag(1, open);
    const size_t kind = Below(10) == 0 ? Below(6) : fTag; // mostly one kind in a file
    tag += (kind == 4 ? "" : "0") + Digits(1) + ":" + std::to_string(Below(6)) + Digits(1) + ".";
    tag += Digits(kind == 1 ? 3 : kind == 5 ? 1 : 2);
    return tag + close;
  }
  std::string Line() {
    if (Below(10) == 0) return "";
    if (Below(15) == 0) return "[Chorus]";
    std::string line = Tag('[', ']');
    while (Below(8) == 0) line += Tag('[', ']');
    for (size_t words = Below(6); words > 0; --words) {
      if (Below(12) == 0) line += Tag('<', '>');
      line += fWord.text + " ";
    }
    return line;
  }

  std::mt19937 fRandom{2026}; // NOLINT: the same files in every run
  TWord fWord;
  size_t fTag = 0;
};

const TGenerator::TWord TGenerator::kWords[6] = {
    {"ASCII", "word"},
    {"UTF-8", "caf\xC3\xA9"},
    {"UTF-8", "\xE6\xAD\x8C"},
    {"Shift-JIS", "\x89\xCC"},
    {"Windows-1252", "caf\xE9 na\xEFve"},
    {"GBK", "\xB8\xE8\xB4\xCA"},
};

struct TCounts {
  int identical = 0;
  int told = 0;
  int required = 0; // without byte-order mark and with a last line end, as lyrics without [mm:ss.cc] are saved
  int silent = 0;
};

void round_trips() {
  TGenerator generator;
  std::map<std::string, TCounts> counts;
  for (int i = 0; i < kFiles; ++i) {
    const std::string bytes = generator.File();
    TDocument document;
    const TOpenedLyrics opened = open(bytes);
    document.Open(opened);
    std::string saved = document.Bytes(document.Form());
    const bool isFamily = opened.form.dialect == TDialect::kFamily;
    if (isFamily && !saved.empty() && saved.back() == '\0') saved.pop_back();
    const std::string required = bytes.substr(bytes.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0);
    TCounts& count = counts[generator.Kind()];
    if (saved == bytes)
      ++count.identical;
    else if (opened.losses.Any() || opened.hasMixedTags)
      ++count.told;
    else if (isFamily && saved.starts_with(required) && saved.size() <= required.size() + 2)
      ++count.required;
    else
      ++count.silent;
  }
  std::printf("%-14s %10s %10s %10s %10s   of %d files\n", "written in", "identical", "told", "required", "silent",
              kFiles);
  for (const auto& [kind, count] : counts)
    std::printf("%-14s %10d %10d %10d %10d\n", kind.c_str(), count.identical, count.told, count.required, count.silent);
}

/** `period` stands in front of the hundredths, `more` behind them. */
std::string many_lines(char period, const char* more = "") {
  std::string bytes;
  for (int i = 0; i < kLines; ++i) {
    char text[64];
    std::snprintf(text, sizeof text, "[%02d:%02d%c%02d%s]", i / 6000 % 100, i / 100 % 60, period, i % 100, more);
    bytes += std::string(text) + "Who has seen the wind? Neither I nor you\n";
  }
  return bytes;
}

void compare_dialects() {
  const std::pair<const char*, std::string> forms[] = {
      {"[mm:ss:cc]", many_lines(':')}, {"[mm:ss.cc]", many_lines('.')}, {"[mm:ss.ccc]", many_lines('.', "5")}};
  std::vector<double> opening[3];
  std::vector<double> saving[3];
  for (int round = 0; round < kRounds; ++round) {
    for (size_t i = 0; i < 3; ++i) {
      TDocument document;
      std::optional<TOpenedLyrics> opened;
      std::ofstream(scratch_path(), std::ios::binary) << forms[i].second;
      entry_ref ref;
      if (get_ref_for_path(scratch_path().c_str(), &ref) != B_OK) std::exit(1);
      opening[i].push_back(seconds_of([&] {
        opened = open_lyrics(ref, ref);
        document.Open(std::move(*opened));
      }));
      saving[i].push_back(seconds_of([&] {
        if (document.Bytes(document.Form()).size() < forms[i].second.size()) std::exit(1);
      }));
    }
  }
  for (size_t i = 0; i < 3; ++i) {
    std::printf("%-12s %d lines: open %6.1f ms (%.2fx), bytes of a save %6.1f ms (%.2fx)\n", forms[i].first, kLines,
                median(opening[i]) * 1000, median(opening[i]) / median(opening[0]), median(saving[i]) * 1000,
                median(saving[i]) / median(saving[0]));
  }
}

} // namespace

int main() {
  round_trips();
  compare_dialects();
  unlink(scratch_path().c_str());
  return 0;
}
