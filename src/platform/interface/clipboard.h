#pragma once

#include <string>

/** The text on the desktop's clipboard. */
struct clipboard_text {
  std::string text;       // only line feeds separate its lines; no NUL
  bool isTooLong = false; // then `text` is empty
};

/** Much more than any lyrics; beyond it, pasting would block the window for seconds. */
inline constexpr size_t kMostPastedBytes = size_t{16} << 20;

/** Empty when the clipboard holds no text, or files. What this program copied comes back byte for byte. Blocks on the
    display thread. */
clipboard_text get_clipboard_text(size_t maxBytes);
/** Blocks on the display thread, so that what is pasted next is this text. */
void set_clipboard_text(const std::string& text);
