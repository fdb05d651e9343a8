#include "fuzz/fuzz.h"
#include "platform/support/text_encoding.h"

#include <vector>

namespace {

using Convert = status_t (*)(uint32, const char*, size_t*, char*, size_t*, char);

std::string converted(Convert convert, uint32 encoding, const std::string& text, size_t room) {
  std::vector<char> out(room);
  size_t taken = text.size();
  size_t made = room;
  require(convert(encoding, text.data(), &taken, out.data(), &made, 0x1A) == B_OK);
  require(taken <= text.size() && made <= room);
  return std::string(out.data(), made);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
  if (size < 2) return 0;
  const uint32 encoding = (bytes[0] & 1) != 0 ? B_SJIS_CONVERSION : B_JIS_CONVERSION;
  const std::string text = text_of(bytes + 2, size - 2);
  converted(convert_to_utf8, encoding, text, bytes[1]); // a cut
  const std::string utf8 = converted(convert_to_utf8, encoding, text, text.size() * 3 + 8);
  const std::string back = converted(convert_from_utf8, encoding, utf8, worst_case_from_utf8(utf8.size()));
  // A second round trip through the encoding changes nothing.
  const std::string again = converted(convert_to_utf8, encoding, back, back.size() * 3 + 8);
  require(converted(convert_from_utf8, encoding, again, worst_case_from_utf8(again.size())) == back);
  converted(convert_from_utf8, encoding, text, bytes[1]);
  return 0;
}
