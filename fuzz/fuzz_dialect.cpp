#include "fuzz/fuzz.h"
#include "lyrics/dialect.h"
#include "lyrics/lyrics_file.h"

/** The bytes are a file; the first two choose a line that is edited before it is written again. */
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
  if (size < 2) return 0;
  const std::list<std::string> file = lines_of_bytes(text_of(bytes + 2, size - 2), TEncoding::kUtf8);
  if (!tags_used_in(file).IsCommon()) return 0;
  std::list<std::string> shown = file;
  const TCommonSource source = show_as_family(&shown);
  require(shown.size() == file.size());
  require(!tags_used_in(shown).hasCommon);
  std::vector<std::string> lines(shown.begin(), shown.end());
  require(written_as_common(lines, source) == std::vector<std::string>(file.begin(), file.end()));
  const size_t edited = bytes[0] % lines.size();
  if (bytes[1] % 2 == 0)
    lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(edited));
  else
    lines[edited].insert(bytes[1] % (lines[edited].size() + 1), "[00:00:01]");
  require(written_as_common(lines, source).size() == lines.size());
  return 0;
}
