#include "platform/support/text_encoding.h"

#include "platform/support/japanese_tables.h"
#include "platform/support/utf8.h"

#include <cstring>

namespace {

constexpr char kEscape = 0x1B;

unsigned char byte_at(const char* at) {
  return static_cast<unsigned char>(*at);
}

/** The destination of a conversion. */
class Output {
public:
  Output(char* start, size_t size) : fStart(start), fAt(start), fEnd(start + size) {}

  bool Put(const char* bytes, size_t count) {
    if (Room() < count) return false;
    if (count == 0) return true;
    std::memcpy(fAt, bytes, count);
    fAt += count;
    return true;
  }
  bool Put(char byte) { return Put(&byte, 1); }
  /** As many of the bytes as fit; returns how many. */
  size_t PutSome(const char* bytes, size_t count) {
    count = Room() < count ? Room() : count;
    Put(bytes, count);
    return count;
  }
  bool PutUtf8(uint16_t unit) {
    if (unit < 0x80) return Put(static_cast<char>(unit));
    const char two[] = {static_cast<char>(0xC0 | unit >> 6), static_cast<char>(0x80 | (unit & 0x3F))};
    if (unit < 0x800) return Put(two, 2);
    const char three[] = {static_cast<char>(0xE0 | unit >> 12), static_cast<char>(0x80 | (unit >> 6 & 0x3F)),
                          static_cast<char>(0x80 | (unit & 0x3F))};
    return Put(three, 3);
  }
  size_t Room() const { return static_cast<size_t>(fEnd - fAt); }
  size_t Made() const { return static_cast<size_t>(fAt - fStart); }

private:
  char* fStart;
  char* fAt;
  char* fEnd;
};

/** The source of a conversion. */
struct Input {
  const char* at;
  const char* end;
  size_t Left() const { return static_cast<size_t>(end - at); }
  std::string_view Rest() const { return {at, Left()}; }
};

/** Copies the ASCII at the start of the source; true when something else follows and there is room. */
bool copy_ascii(Input* in, Output* out) {
  const size_t length = ascii_length(in->Rest());
  const size_t copied = out->PutSome(in->at, length);
  in->at += copied;
  return copied == length && in->at != in->end;
}

struct Character {
  uint32 code = 0; // 0: malformed
  size_t length = 1;
};

void from_sjis(Input* in, Output* out, char substitute) {
  const JapaneseTables& tables = japanese_tables();
  while (copy_ascii(in, out)) {
    const unsigned char lead = byte_at(in->at);
    size_t length = 1;
    uint16_t unit = tables.fromSjis[0][lead];
    const bool isLead = (lead >= 0x81 && lead <= 0x9F) || (lead >= 0xE0 && lead <= 0xFC);
    if (isLead && in->Left() > 1) {
      const unsigned char trail = byte_at(in->at + 1);
      // A byte that cannot be a trail byte, such as a line end, does not belong to the malformed pair.
      if (trail >= 0x40 && trail != 0x7F && trail <= 0xFC) length = 2;
      unit = length == 2 ? tables.fromSjis[lead][trail] : uint16_t{0};
    }
    if (!(unit != 0 ? out->PutUtf8(unit) : out->Put(substitute))) return;
    in->at += length;
  }
}

enum class JisSet { kAscii, kRoman, kKana, kDouble };

struct JisEscape {
  const char* bytes;
  JisSet set;
};
constexpr JisEscape kReadEscapes[] = {{"\x1B(B", JisSet::kAscii},
                                      {"\x1B(J", JisSet::kRoman},
                                      {"\x1B(I", JisSet::kKana},
                                      {"\x1B$@", JisSet::kDouble},
                                      {"\x1B$B", JisSet::kDouble}};
constexpr size_t kEscapeLength = 3;

/** The only differences between JIS-Roman and ASCII. */
constexpr uint32 kYen = 0xA5;
constexpr uint32 kOverline = 0x203E;
constexpr char kRomanYen = '\\';
constexpr char kRomanOverline = '~';

bool read_escape(Input* in, JisSet* set) {
  if (in->Left() < kEscapeLength) return false;
  for (const JisEscape& escape : kReadEscapes) {
    if (std::memcmp(in->at, escape.bytes, kEscapeLength) != 0) continue;
    *set = escape.set;
    in->at += kEscapeLength;
    return true;
  }
  return false;
}

/** The character at the start in that set. */
Character next_jis(const Input& in, JisSet set, const JapaneseTables& tables) {
  const unsigned char byte = byte_at(in.at);
  if (byte >= 0x80 || byte == kEscape) return {0, 1};
  if (byte <= 0x20 || byte == 0x7F) return {byte, 1}; // control characters and the blank belong to every set
  switch (set) {
  case JisSet::kAscii:
    return {byte, 1};
  case JisSet::kRoman:
    return {byte == kRomanYen ? kYen : byte == kRomanOverline ? kOverline : byte, 1};
  case JisSet::kKana:
    return {byte <= 0x5F ? 0xFF61U + (byte - 0x21U) : 0, 1};
  case JisSet::kDouble:
    break;
  }
  const unsigned char second = in.Left() > 1 ? byte_at(in.at + 1) : 0;
  if (second < 0x21 || second > 0x7E) return {0, 1};
  return {tables.fromJis[byte - 0x21U][second - 0x21U], 2};
}

void from_jis(Input* in, Output* out, char substitute) {
  const JapaneseTables& tables = japanese_tables();
  JisSet set = JisSet::kAscii;
  while (in->at != in->end) {
    if (byte_at(in->at) == kEscape && read_escape(in, &set)) continue;
    const Character next = next_jis(*in, set, tables);
    // NUL is a character; otherwise 0 means malformed.
    const bool isNul = *in->at == '\0';
    const bool put = next.code != 0 || isNul ? out->PutUtf8(static_cast<uint16_t>(next.code)) : out->Put(substitute);
    if (!put) return;
    if (*in->at == '\n' || *in->at == '\r') set = JisSet::kAscii;
    in->at += next.length;
  }
}

void to_sjis(Input* in, Output* out, char substitute) {
  const JapaneseTables& tables = japanese_tables();
  while (copy_ascii(in, out)) {
    const Utf8Character next = first_character(in->Rest());
    const uint16_t code = next.code < 0x10000 ? tables.toSjis[next.code] : uint16_t{0};
    const char pair[] = {static_cast<char>(code >> 8), static_cast<char>(code)};
    const bool put = code == 0 ? out->Put(substitute) : code < 0x100 ? out->Put(pair[1]) : out->Put(pair, 2);
    if (!put) return;
    in->at += next.length;
  }
}

/** Writes JIS: keeps track of the current character set, and writes a character together with its escape or not at
    all. */
class JisWriter {
public:
  explicit JisWriter(Output* out) : fOut(out) {}

  /** Reserves room for the return to ASCII at the end. */
  bool Put(JisSet set, const char* bytes, size_t count) {
    const size_t escape = set == fSet ? 0 : kEscapeLength;
    const size_t closing = set == JisSet::kAscii ? 0 : kEscapeLength;
    if (fOut->Room() < escape + count + closing) return false;
    if (escape > 0) fOut->Put(EscapeOf(set), kEscapeLength);
    fSet = set;
    return fOut->Put(bytes, count);
  }
  void Close() {
    if (fSet != JisSet::kAscii) fOut->Put(EscapeOf(JisSet::kAscii), kEscapeLength);
    fSet = JisSet::kAscii;
  }

private:
  static const char* EscapeOf(JisSet set) {
    switch (set) {
    case JisSet::kDouble:
      return "\x1B$B";
    case JisSet::kKana:
      return "\x1B(I";
    case JisSet::kRoman:
      return "\x1B(J";
    case JisSet::kAscii:
      break;
    }
    return "\x1B(B";
  }
  Output* fOut;
  JisSet fSet = JisSet::kAscii;
};

bool put_jis(JisWriter* writer, char32_t code, char substitute, const JapaneseTables& tables) {
  const char single = code < 0x80 ? static_cast<char>(code) : substitute;
  if (code >= 0xFF61 && code <= 0xFF9F) {
    const char kana = static_cast<char>(code - 0xFF61 + 0x21);
    return writer->Put(JisSet::kKana, &kana, 1);
  }
  if (code == kYen) return writer->Put(JisSet::kRoman, &kRomanYen, 1);
  if (code == kOverline) return writer->Put(JisSet::kRoman, &kRomanOverline, 1);
  const uint16_t pairCode = code >= 0x80 && code < 0x10000 ? tables.toJis[code] : uint16_t{0};
  if (pairCode == 0) return writer->Put(JisSet::kAscii, &single, 1);
  const char pair[] = {static_cast<char>(pairCode >> 8), static_cast<char>(pairCode)};
  return writer->Put(JisSet::kDouble, pair, 2);
}

void to_jis(Input* in, Output* out, char substitute) {
  const JapaneseTables& tables = japanese_tables();
  JisWriter writer(out);
  while (in->at != in->end) {
    const Utf8Character next = first_character(in->Rest());
    if (!put_jis(&writer, next.code, substitute, tables)) break;
    in->at += next.length;
  }
  writer.Close();
}

using Converter = void (*)(Input*, Output*, char);

status_t convert(Converter converter, const char* source, size_t* sourceLength, char* destination,
                 size_t* destinationLength, char substitute) {
  if (converter == nullptr) return B_BAD_VALUE;
  Input in{source, source + *sourceLength};
  Output out(destination, *destinationLength);
  converter(&in, &out, substitute);
  *sourceLength = static_cast<size_t>(in.at - source);
  *destinationLength = out.Made();
  return B_OK;
}

Converter pick(uint32 encoding, Converter sjis, Converter jis) {
  return encoding == B_SJIS_CONVERSION ? sjis : encoding == B_JIS_CONVERSION ? jis : nullptr;
}

} // namespace

status_t convert_to_utf8(uint32 sourceEncoding, const char* source, size_t* sourceLength, char* destination,
                         size_t* destinationLength, char substitute) {
  return convert(pick(sourceEncoding, from_sjis, from_jis), source, sourceLength, destination, destinationLength,
                 substitute);
}

status_t convert_from_utf8(uint32 destinationEncoding, const char* source, size_t* sourceLength, char* destination,
                           size_t* destinationLength, char substitute) {
  return convert(pick(destinationEncoding, to_sjis, to_jis), source, sourceLength, destination, destinationLength,
                 substitute);
}
