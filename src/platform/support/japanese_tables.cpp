#include "platform/support/japanese_tables.h"

#include <iconv.h>

#include <memory>
#include <utility>

namespace {

/** One of the C library's converters, asked for one character at a time. */
class OneCharacter {
public:
  OneCharacter(const char* to, const char* from) : fConverter(iconv_open(to, from)) {}
  OneCharacter(const OneCharacter&) = delete;
  OneCharacter& operator=(const OneCharacter&) = delete;
  ~OneCharacter() {
    if (IsOpen()) iconv_close(fConverter);
  }

  /** The bytes made, at most two, as a big-endian number; 0 for what does not convert to one character. */
  uint16_t Convert(const unsigned char* bytes, size_t count) {
    if (!IsOpen()) return 0;
    char* in = reinterpret_cast<char*>(const_cast<unsigned char*>(bytes));
    unsigned char out[8];
    char* end = reinterpret_cast<char*>(out);
    size_t room = sizeof out;
    iconv(fConverter, nullptr, nullptr, nullptr, nullptr);
    if (iconv(fConverter, &in, &count, &end, &room) != 0 || count != 0) return 0;
    const size_t made = sizeof out - room;
    return made == 1 ? out[0] : made == 2 ? static_cast<uint16_t>(out[0] << 8 | out[1]) : uint16_t{0};
  }

private:
  bool IsOpen() const { return reinterpret_cast<intptr_t>(fConverter) != -1; }
  iconv_t fConverter;
};

/** Each pair shares one code in the Japanese sets; CP932 reads it as the second, JIS X 0208 as the first. */
constexpr std::pair<uint16_t, uint16_t> kSharedCodes[] = {{0x301C, 0xFF5E}, {0x2016, 0x2225}, {0x2212, 0xFF0D},
                                                          {0x00A2, 0xFFE0}, {0x00A3, 0xFFE1}, {0x00AC, 0xFFE2}};

constexpr uint16_t kYen = 0xA5;
constexpr uint16_t kOverline = 0x203E;
/** Both are the same dash in the Japanese sets, which read it as the second. */
constexpr std::pair<uint16_t, uint16_t> kDashes = {0x2014, 0x2015};

void fill_from_sjis(JapaneseTables* tables) {
  OneCharacter converter("UTF-16BE", "CP932");
  for (unsigned lead = 0; lead < 256; ++lead) {
    const auto byte = static_cast<unsigned char>(lead);
    tables->fromSjis[0][lead] = converter.Convert(&byte, 1);
    const bool isLead = (lead >= 0x81 && lead <= 0x9F) || (lead >= 0xE0 && lead <= 0xFC);
    for (unsigned trail = 0x40; isLead && trail <= 0xFC; ++trail) {
      const unsigned char pair[] = {byte, static_cast<unsigned char>(trail)};
      if (trail != 0x7F) tables->fromSjis[lead][trail] = converter.Convert(pair, 2);
    }
  }
}

void fill_from_jis(JapaneseTables* tables) {
  OneCharacter converter("UTF-16BE", "EUC-JP"); // JIS X 0208 with the top bits set
  for (unsigned row = 0; row < 94; ++row) {
    for (unsigned cell = 0; cell < 94; ++cell) {
      const unsigned char pair[] = {static_cast<unsigned char>(0xA1 + row), static_cast<unsigned char>(0xA1 + cell)};
      const uint16_t unit = converter.Convert(pair, 2);
      tables->fromJis[row][cell] = unit;
      if (unit != 0) tables->toJis[unit] = static_cast<uint16_t>((0x21 + row) << 8 | (0x21 + cell));
    }
  }
}

void fill_to_sjis(JapaneseTables* tables) {
  OneCharacter converter("CP932", "UTF-16BE");
  for (unsigned unit = 1; unit < 0x10000; ++unit) {
    const unsigned char bytes[] = {static_cast<unsigned char>(unit >> 8), static_cast<unsigned char>(unit)};
    tables->toSjis[unit] = converter.Convert(bytes, 2);
  }
}

std::unique_ptr<const JapaneseTables> make_tables() {
  auto tables = std::make_unique<JapaneseTables>();
  fill_from_sjis(tables.get());
  fill_from_jis(tables.get());
  fill_to_sjis(tables.get());
  for (const auto& [first, second] : kSharedCodes) {
    tables->toSjis[first] = tables->toSjis[second];
    tables->toJis[second] = tables->toJis[first];
  }
  tables->toJis[kDashes.first] = tables->toJis[kDashes.second];
  // The C library writes these two as a backslash and a tilde, and that is what they would come back as.
  tables->toSjis[kYen] = tables->toSjis[kOverline] = 0;
  return tables;
}

} // namespace

const JapaneseTables& japanese_tables() {
  static const std::unique_ptr<const JapaneseTables> tables = make_tables();
  return *tables;
}
