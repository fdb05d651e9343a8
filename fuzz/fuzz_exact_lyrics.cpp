#include "fuzz/fuzz.h"
#include "lyrics/exact_lyrics.h"
#include "lyrics/export.h"

#include <algorithm>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
  if (size == 0) return 0;
  // The first byte selects how the rest is read and written.
  using enum TEncoding;
  constexpr std::optional<TEncoding> kWanted[] = {kUtf8, kShiftJis, kJis, {}};
  const std::string text = text_of(bytes + 1, size - 1);
  const TExactLyrics lyrics(text, kWanted[bytes[0] % 4]);
  require(lyrics.Lines().size() == lyrics.Layout().size());
  require(lyrics.WithLines(lyrics.Lines()) == text);
  for (const TEncoding encoding : {kUtf8, kShiftJis, kJis}) {
    const auto made = lyrics.InEncoding(encoding, "\n");
    if (!made || !lyrics.BrokenLines().empty()) continue;
    const TExactLyrics again(*made, encoding);
    require(again.BrokenLines().empty());
    // A byte-order mark after the first is a character, unless it is moved to the start.
    const bool isSame = again.Lines().size() == lyrics.Lines().size();
    // A last line that consists of an escape sequence only disappears in an encoding without one.
    const bool lostEmptyEnd =
        !isSame && lyrics.Lines().back().empty() && again.Lines().size() + 1 == lyrics.Lines().size();
    require(again.HasByteOrderMark() || isSame || lostEmptyEnd);
  }
  for (int format = 0; format < kExportFormats; ++format) {
    const auto made = export_lyrics(lyrics.Lines(), static_cast<TExportFormat>(format));
    if (!made || format != 0) continue;
    require(std::count(made->bytes.begin(), made->bytes.end(), '\n') == static_cast<long>(lyrics.Lines().size()));
  }
  return 0;
}
