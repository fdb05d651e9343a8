#pragma once

#include "platform/support/types.h"

/** How lyrics are written to a file. The numbers are those of the settings, the save panel and `TLyricsInfo`. Further
    encodings, with numbers from kFirstForeign on, can be opened by a choice (lyrics/foreign_encoding.h). */
enum class TEncoding : int32 { kUtf8 = 0, kShiftJis = 1, kJis = 2 };
enum class TLineEnd : int32 { kLf = 0, kCrLf = 1, kCr = 2 };
/** The form of the time tags (lyrics/dialect.h). */
enum class TDialect : int32 { kFamily = 0, kCommon = 1 };
inline constexpr int32 kDialects = 2;

struct TLyricsForm {
  TEncoding encoding = TEncoding::kUtf8;
  TLineEnd lineEnd = TLineEnd::kLf;
  TDialect dialect = TDialect::kFamily;
  friend bool operator==(const TLyricsForm&, const TLyricsForm&) = default;
};

/** From a number of a file or message; the first one for an unknown number. Pure: any thread. */
constexpr TEncoding encoding_of(long number) {
  return number >= 0 && number <= 2 ? static_cast<TEncoding>(number) : TEncoding::kUtf8;
}
constexpr TLineEnd line_end_of(long number) {
  return number >= 0 && number <= 2 ? static_cast<TLineEnd>(number) : TLineEnd::kLf;
}
constexpr TDialect dialect_of(long number) {
  return number == 1 ? TDialect::kCommon : TDialect::kFamily;
}

inline constexpr long kFirstForeign = 16;
inline constexpr long kLastForeign = 30;
constexpr bool is_foreign(TEncoding encoding) {
  return static_cast<long>(encoding) >= kFirstForeign && static_cast<long>(encoding) <= kLastForeign;
}
/** The same as `encoding_of`, and the foreign encodings. */
constexpr TEncoding any_encoding_of(long number) {
  return is_foreign(static_cast<TEncoding>(number)) ? static_cast<TEncoding>(number) : encoding_of(number);
}

/** Encoding and dialect as one number, for journals: the dialect's is multiplied by 256. */
constexpr int32 stored_number(TEncoding encoding, TDialect dialect) {
  return static_cast<int32>(encoding) + 256 * static_cast<int32>(dialect);
}
constexpr TEncoding stored_encoding(int32 number) {
  return any_encoding_of(number % 256);
}
constexpr TDialect stored_dialect(int32 number) {
  return dialect_of(number / 256);
}
