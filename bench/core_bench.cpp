/** Loading, saving, shifting and converting lyrics, beside what everyone has: iconv on the same bytes, a plain read
   that counts lines, and a plain read and split into a list. Prints ratios; every pair is measured in turn, in this
   run. */

#include "bench/rounds.h"
#include "common/atomic_replace.h"
#include "lyrics/bulk_tags.h"
#include "lyrics/lyrics_file.h"

#include <iconv.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <functional>
#include <iterator>
#include <sstream>
#include <vector>

namespace {

using Lines = std::list<std::string>;

constexpr const char* kEncodings[] = {"UTF-8", "Shift-JIS", "JIS"};
constexpr const char* kConverters[] = {"UTF-8", "CP932", "ISO-2022-JP"};
constexpr const char* kLineEnds[] = {"LF", "CR LF", "CR"};

Lines make_lines(int count) {
  Lines lines;
  for (int i = 0; i < count; ++i) {
    char tag[32];
    std::snprintf(tag, sizeof tag, "[%02d:%02d:%02d]", i / 6000 % 100, i / 100 % 60, i % 100);
    // About 50 bytes a line, one line in four Japanese.
    lines.push_back(
        tag + std::string(i % 4 == 0 ? "色は匂へど散りぬるを我が世" : "Who has seen the wind? Neither I nor you"));
  }
  return lines;
}

/** The medians of two works done in turn. */
struct TPair {
  double ours;
  double theirs;
};
TPair compare(int rounds, const std::function<void()>& ours, const std::function<void()>& theirs) {
  std::vector<double> a;
  std::vector<double> b;
  for (int i = 0; i < rounds; ++i) {
    a.push_back(seconds_of(ours));
    b.push_back(seconds_of(theirs));
  }
  return {median(a), median(b)};
}

std::string read_file(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string bytes(static_cast<size_t>(file.seekg(0, std::ios::end).tellg()), '\0');
  file.seekg(0).read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  return bytes;
}

volatile size_t gSink;

void read_and_count(const std::string& path) {
  const std::string bytes = read_file(path);
  gSink = static_cast<size_t>(std::count(bytes.begin(), bytes.end(), '\n'));
}

Lines split(std::istream&& stream, char lineEnd) {
  Lines lines;
  for (std::string line; std::getline(stream, line, lineEnd);) lines.push_back(line);
  return lines;
}

std::string through_iconv(const std::string& bytes, const char* to, const char* from) {
  const iconv_t converter = iconv_open(to, from);
  std::string out(bytes.size() * 2 + 16, '\0');
  char* in = const_cast<char*>(bytes.data());
  char* end = out.data();
  size_t left = bytes.size();
  size_t room = out.size();
  iconv(converter, &in, &left, &end, &room);
  iconv_close(converter);
  out.resize(out.size() - room);
  return out;
}

Lines load(const std::string& path, long encoding) {
  entry_ref ref;
  get_ref_for_path(path.c_str(), &ref);
  Lines lines;
  long crType = 0;
  long found = 0;
  if (!load_lyrics_as(encoding, ref, &lines, &crType, &found)) std::abort();
  gSink = lines.size();
  return lines;
}

void row(const char* what, int count, const std::string& form, const TPair& pair, const char* beside) {
  std::printf("%-8s %8d  %-18s %9.2f ms  %9.2f ms  %6.2fx  %s\n", what, count, form.c_str(), pair.ours * 1000,
              pair.theirs * 1000, pair.ours / pair.theirs, beside);
}

void measure_form(int count, const Lines& lines, long encoding, long crType, const std::string& path) {
  const int rounds = count >= 1000000 ? 5 : count >= 100000 ? 11 : 201;
  const std::string form = std::string(kEncodings[encoding]) + ", " + kLineEnds[crType];
  const std::string bytes = lines_to_bytes(lines, crType, encoding);
  if (atomic_replace(path, bytes) != B_OK) std::abort();
  const auto loads = [&] { load(path, kDetectEncoding); };
  row("load", count, form, compare(rounds, loads, [&] { read_and_count(path); }), "plain read + newline count");
  const char* const name = kConverters[encoding];
  const char lineEnd = crType == 2 ? '\r' : '\n'; // of CR LF the CR stays in the line
  if (encoding == 0) {
    const auto readAndSplit = [&] { gSink = split(std::ifstream(path), lineEnd).size(); };
    row("load", count, form, compare(rounds, loads, readAndSplit), "plain read + split");
  } else {
    const auto iconvAndSplit = [&] {
      gSink = split(std::istringstream(through_iconv(read_file(path), "UTF-8", name)), lineEnd).size();
    };
    row("load", count, form, compare(rounds, loads, iconvAndSplit), "read + iconv + split");
  }
  const std::string saved = path + ".saved";
  const std::string utf8 = lines_to_bytes(lines, crType, 0);
  const auto saves = [&] {
    gSink = static_cast<size_t>(atomic_replace(saved, lines_to_bytes(lines, crType, encoding)));
  };
  // The same guarantee on both sides: on the disk, then renamed.
  const auto theirs = [&] {
    gSink = static_cast<size_t>(atomic_replace(saved, encoding == 0 ? utf8 : through_iconv(utf8, name, "UTF-8")));
  };
  row("save", count, form, compare(rounds, saves, theirs),
      encoding == 0 ? "the same bytes, ready" : "iconv + the same write");
}

void measure_bulk(int count, const Lines& lines, const std::string& path) {
  const int rounds = count >= 1000000 ? 5 : count >= 100000 ? 11 : 201;
  if (atomic_replace(path, lines_to_bytes(lines, 0, 0)) != B_OK) std::abort();
  Lines work = lines;
  const auto counts = [&] { read_and_count(path); };
  row("shift", count, "in memory",
      compare(
          rounds, [&] { shift_time_tags(&work, 10); }, counts),
      "plain read + newline count");
  bool extended = false;
  row("convert", count, "in memory",
      compare(
          rounds, [&] { convert_time_tags(&work, extended = !extended); }, counts),
      "plain read + newline count");
}

/** The most memory, in MB, that a process of this program needed which does only this work, by its own account: the
    accounting of a finished child would carry over what its parent held. */
double peak_megabytes(const std::string& command) {
  std::FILE* const child = popen(command.c_str(), "r");
  double megabytes = 0;
  if (child == nullptr || std::fscanf(child, "%lf", &megabytes) != 1) std::abort();
  pclose(child);
  return megabytes;
}

double own_peak_megabytes() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("VmHWM:")) return std::stod(line.substr(6)) / 1024;
  }
  return 0;
}

/** In processes of their own, so that nothing but the work counts: "core_bench peak nothing|list|load FILE". */
void measure_peak(const char* program, const Lines& lines, const std::string& path) {
  for (long encoding = 0; encoding < 3; ++encoding) {
    const std::string bytes = lines_to_bytes(lines, 0, encoding);
    if (atomic_replace(path, bytes) != B_OK) std::abort();
    const auto peak_of = [&](const char* what) {
      return peak_megabytes(std::string(program) + " peak " + what + " " + path);
    };
    const double nothing = peak_of("nothing");
    const double list = peak_of("list") - nothing;
    const double ours = peak_of("load") - nothing;
    const double file = static_cast<double>(bytes.size()) / 1048576;
    std::printf("peak     %8zu  %-18s %7.1f MB = %.2f x the file (%.1f MB) + the list itself (%.1f MB)\n", lines.size(),
                kEncodings[encoding], ours, (ours - list) / file, file, list);
  }
}

int do_peak(const std::string& what, const std::string& path) {
  if (what == "load") load(path, kDetectEncoding);
  // A list as long, its lines of the same bytes, that never held more than that.
  if (what == "list") {
    Lines lines;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) lines.emplace_back(line);
    gSink = lines.size();
  }
  std::printf("%.1f\n", own_peak_megabytes());
  return 0;
}

} // namespace

int main(int argc, char** argv) {
  if (argc == 4 && std::strcmp(argv[1], "peak") == 0) return do_peak(argv[2], argv[3]);
  const std::string path = "/tmp/core_bench." + std::to_string(getpid()) + ".lrc";
  std::printf("%-8s %8s  %-18s %12s  %12s  %7s  %s\n", "work", "lines", "form", "ours", "beside", "ratio",
              "beside what");
  for (const int count : {50, 100000, 1000000}) {
    const Lines lines = make_lines(count);
    for (long encoding = 0; encoding < 3; ++encoding) {
      for (long crType = 0; crType < 3; ++crType) measure_form(count, lines, encoding, crType, path);
    }
    measure_bulk(count, lines, path);
    if (count == 1000000) measure_peak(argv[0], lines, path);
  }
  unlink(path.c_str());
  unlink((path + ".saved").c_str());
  return 0;
}
