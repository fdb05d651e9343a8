#include "fuzz/fuzz.h"
#include "lyrics/lyrics_file.h"

#include <cstdio>
#include <unistd.h>

namespace {

const std::string& scratch_path() {
  static const std::string path = "/tmp/fuzz_load_lyrics." + std::to_string(getpid());
  return path;
}

void write_scratch(const std::string& bytes) {
  std::FILE* const file = std::fopen(scratch_path().c_str(), "wb");
  require(file != nullptr);
  require(std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size());
  std::fclose(file);
}

std::list<std::string> load(long wanted, long* crType, long* encoding) {
  entry_ref ref;
  require(get_ref_for_path(scratch_path().c_str(), &ref) == B_OK);
  std::list<std::string> lines;
  require(load_lyrics_as(wanted, ref, &lines, crType, encoding));
  return lines;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
  if (size == 0) return 0;
  // The first byte selects how the rest is read.
  constexpr long kWanted[] = {0, 1, 2, 4, 9};
  const long wanted = kWanted[bytes[0] % 5];
  write_scratch(text_of(bytes + 1, size - 1));
  long crType = -1;
  long encoding = -1;
  const std::list<std::string> lines = load(wanted, &crType, &encoding);
  require(crType >= 0 && crType <= 2);
  for (const std::string& line : lines) require(line.find('\n') == std::string::npos);
  // Text saved as UTF-8 with LF reads back unchanged; a CR would change the line ends.
  for (const std::string& line : lines) {
    if (line.find('\r') != std::string::npos) return 0;
  }
  write_scratch(lines_to_bytes(lines, 0, 0));
  require(load(0, &crType, &encoding) == lines);
  return 0;
}
