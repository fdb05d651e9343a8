#include "lyrics/line_limit.h"

#include "platform/storage/file.h"

#include <algorithm>
#include <vector>

namespace {

/** Counts line ends as load_lyrics detects them: CR counts where it outnumbers LF. */
class TLineCount {
public:
  void Add(std::string_view bytes) {
    fLf += std::count(bytes.begin(), bytes.end(), '\n');
    fCr += std::count(bytes.begin(), bytes.end(), '\r');
  }
  bool IsTooLarge() const { return (fCr > fLf ? fCr + fLf : fLf) > kMostLines; }

private:
  long fLf = 0;
  long fCr = 0;
};

} // namespace

bool has_too_many_lines(std::string_view bytes) {
  if (bytes.size() <= static_cast<size_t>(kMostLines)) return false;
  TLineCount count;
  count.Add(bytes.substr(0, bytes.find('\0')));
  return count.IsTooLarge();
}

bool has_too_many_lines(const entry_ref& ref) {
  BFile file(&ref, B_READ_ONLY);
  off_t size = 0;
  if (file.InitCheck() != B_OK || !file.IsRegular() || file.GetSize(&size) != B_OK || size <= kMostLines) return false;
  TLineCount count;
  std::vector<char> chunk(size_t{1} << 16);
  for (;;) {
    const ssize_t length = file.Read(chunk.data(), chunk.size());
    if (length <= 0) break;
    const std::string_view bytes(chunk.data(), static_cast<size_t>(length));
    const size_t end = bytes.find('\0');
    count.Add(bytes.substr(0, end));
    if (end != std::string_view::npos) break;
  }
  return count.IsTooLarge();
}
