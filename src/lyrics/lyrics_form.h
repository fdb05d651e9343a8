#pragma once

#include "platform/support/types.h"

/** How lyrics are written to a file. The numbers are those of the settings, the save panel and `TLyricsInfo`. */
enum class TEncoding : int32 { kUtf8 = 0, kShiftJis = 1, kJis = 2 };
enum class TLineEnd : int32 { kLf = 0, kCrLf = 1, kCr = 2 };

struct TLyricsForm {
  TEncoding encoding = TEncoding::kUtf8;
  TLineEnd lineEnd = TLineEnd::kLf;
  friend bool operator==(const TLyricsForm&, const TLyricsForm&) = default;
};

/** From a number of a file or message; 0 for an unknown one. Pure: any thread. */
constexpr TEncoding encoding_of(long number) {
  return number >= 0 && number <= 2 ? static_cast<TEncoding>(number) : TEncoding::kUtf8;
}
constexpr TLineEnd line_end_of(long number) {
  return number >= 0 && number <= 2 ? static_cast<TLineEnd>(number) : TLineEnd::kLf;
}
