#include "lyrics/foreign_encoding.h"

#include "platform/support/utf8.h"

#include <uchardet/uchardet.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <iconv.h>
#include <memory>

namespace {

constexpr char kSubstitute = 0x1A;
constexpr size_t kMostDetected = size_t{256} << 10;

constexpr TEncoding encoding(int32 number) {
  return static_cast<TEncoding>(number);
}

bool is_utf16(TEncoding encoding) {
  return std::string_view(foreign_name(encoding)).starts_with("UTF-16");
}

/** An open conversion of the C library. */
class TConversion {
public:
  TConversion(const char* to, const char* from) : fHandle(iconv_open(to, from)) {}
  TConversion(const TConversion&) = delete;
  TConversion& operator=(const TConversion&) = delete;
  ~TConversion() {
    if (IsOpen()) iconv_close(fHandle);
  }
  bool IsOpen() const { return fHandle != reinterpret_cast<iconv_t>(-1); } // NOLINT: as iconv_open reports it

  /** Appends the converted beginning of `text` and removes it. Stops at what cannot be converted. */
  void Convert(std::string_view* text, std::string* converted) const {
    std::array<char, 4096> room{};
    for (;;) {
      char* from = const_cast<char*>(text->data()); // NOLINT: iconv does not change it
      size_t left = text->size();
      char* to = room.data();
      size_t free = room.size();
      const size_t status = iconv(fHandle, &from, &left, &to, &free);
      const int error = errno;
      converted->append(room.data(), room.size() - free);
      text->remove_prefix(text->size() - left);
      if (status != static_cast<size_t>(-1) || error != E2BIG) return;
    }
  }
  /** Some encodings hold a character back until the next one has shown that it does not combine with it. */
  void Finish(std::string* converted) const {
    std::array<char, 64> room{};
    char* to = room.data();
    size_t free = room.size();
    iconv(fHandle, nullptr, nullptr, &to, &free);
    converted->append(room.data(), room.size() - free);
  }

private:
  const iconv_t fHandle;
};

} // namespace

const std::vector<TForeignEncoding>& foreign_encodings() {
  static const std::vector<TForeignEncoding> all = {
      {encoding(16), "GB18030"},      {encoding(17), "Big5"},         {encoding(18), "EUC-JP"},
      {encoding(19), "EUC-KR"},       {encoding(20), "Windows-1250"}, {encoding(21), "Windows-1251"},
      {encoding(22), "Windows-1252"}, {encoding(23), "Windows-1253"}, {encoding(24), "Windows-1254"},
      {encoding(25), "Windows-1255"}, {encoding(26), "Windows-1256"}, {encoding(27), "Windows-1257"},
      {encoding(28), "Windows-1258"}, {encoding(29), "UTF-16LE"},     {encoding(30), "UTF-16BE"},
  };
  return all;
}

const char* foreign_name(TEncoding encoding) {
  const auto found = std::ranges::find(foreign_encodings(), encoding, &TForeignEncoding::encoding);
  return found == foreign_encodings().end() ? nullptr : found->name;
}

std::optional<std::string> foreign_to_utf8(std::string_view bytes, TEncoding encoding) {
  const TConversion conversion("UTF-8", foreign_name(encoding));
  if (!conversion.IsOpen()) return {};
  const size_t unit = is_utf16(encoding) ? 2 : 1;
  std::string text;
  for (;;) {
    conversion.Convert(&bytes, &text);
    if (bytes.empty()) break;
    text.push_back(kSubstitute);
    bytes.remove_prefix(std::min(unit, bytes.size()));
  }
  conversion.Finish(&text);
  return text;
}

std::optional<std::string> foreign_from_utf8(std::string_view text, TEncoding encoding) {
  const TConversion conversion(foreign_name(encoding), "UTF-8");
  if (!conversion.IsOpen()) return {};
  std::string bytes;
  for (;;) {
    conversion.Convert(&text, &bytes);
    if (text.empty()) break;
    const Utf8Character character = first_character(text);
    text.remove_prefix(character.IsValid() ? character.length : 1);
    std::string_view substitute(&kSubstitute, 1);
    conversion.Convert(&substitute, &bytes);
  }
  conversion.Finish(&bytes);
  return bytes;
}

std::optional<TEncoding> probable_foreign_encoding(std::string_view bytes) {
  const std::unique_ptr<uchardet, void (*)(uchardet_t)> detector(uchardet_new(), uchardet_delete);
  uchardet_handle_data(detector.get(), bytes.data(), std::min(bytes.size(), kMostDetected));
  uchardet_data_end(detector.get());
  std::string name = uchardet_get_charset(detector.get());
  if (name == "GB2312" || name == "GBK" || name == "HZ-GB-2312") name = "GB18030";
  if (name == "UHC") name = "EUC-KR";
  if (name == "UTF-16") name = bytes.starts_with("\xFE\xFF") ? "UTF-16BE" : "UTF-16LE";
  const auto lower = [](std::string text) {
    for (char& c : text) c = static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    return text;
  };
  for (const TForeignEncoding& known : foreign_encodings())
    if (lower(known.name) == lower(name)) return known.encoding;
  // The Latin alphabets of ISO 8859 are the Windows ones without a few signs.
  if (name == "ISO-8859-1" || name == "ISO-8859-15") return encoding(22);
  return {};
}
