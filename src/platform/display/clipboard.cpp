#include "platform/interface/clipboard.h"

#include "platform/display/display_thread.h"
#include "platform/display/text_bytes.h"
#include "platform/display/text_mime.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

clipboard_text get_clipboard_text(size_t maxBytes) {
  return display::call([maxBytes]() -> clipboard_text {
    const QMimeData* const content = QGuiApplication::clipboard()->mimeData();
    if (!content || content->hasUrls()) return {};
    const std::optional<QString> text = display::text_of_mime(*content, maxBytes);
    if (!text) return {{}, true};
    std::string bytes = display::bytes_from_text(*text);
    return bytes.size() > maxBytes ? clipboard_text{{}, true} : clipboard_text{std::move(bytes)};
  });
}

void set_clipboard_text(const std::string& text) {
  display::call([text] {
    QGuiApplication::clipboard()->setMimeData(display::mime_of_text(display::text_from_bytes(text)));
    return true;
  });
}
