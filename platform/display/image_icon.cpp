#include "platform/display/image_icon.h"

#include "platform/display/convert.h"
#include "platform/display/display_thread.h"
#include "platform/display/image_size.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QIconEngine>
#include <QImageReader>
#include <QPainter>
#include <QPalette>

namespace display {

namespace {

QByteArray bytes_of(const std::string& text) {
  return {text.data(), static_cast<qsizetype>(text.size())};
}

/** Named where it can be seen: left alone, the reader loads every format there is to find out which one it is. */
QByteArray format_of(const QByteArray& bytes) {
  constexpr qsizetype kHead = 256;
  return bytes.left(kHead).contains("<svg") ? QByteArrayLiteral("svg") : QByteArray();
}

QColor ink_for(QIcon::Mode mode) {
  const auto role = mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::ButtonText;
  return QGuiApplication::palette().color(QPalette::Active, role);
}

/** Of a disabled image, its own colours as well as the ink. */
constexpr qreal kDisabledOpacity = 0.4;

class ImageEngine : public QIconEngine {
public:
  explicit ImageEngine(std::shared_ptr<const std::string> bytes) : fBytes(std::move(bytes)) {}

  QIconEngine* clone() const override { return new ImageEngine(fBytes); }
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override {
    QPixmap drawn(size);
    drawn.fill(Qt::transparent);
    QPainter painter(&drawn);
    if (mode == QIcon::Disabled) painter.setOpacity(kDisabledOpacity);
    painter.drawImage(0, 0, render_image(*fBytes, size, ink_for(mode)));
    return drawn;
  }
  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
    const qreal density = painter->device()->devicePixelRatioF();
    painter->drawPixmap(rect, pixmap(rect.size() * density, mode, state));
  }

private:
  std::shared_ptr<const std::string> fBytes;
};

} // namespace

QImage render_image(const std::string& bytes, const QSize& size, const QColor& ink) {
  QByteArray drawing = bytes_of(bytes);
  drawing.replace("currentColor", ink.name().toUtf8());
  QBuffer buffer(&drawing);
  QImageReader reader(&buffer, format_of(drawing));
  reader.setScaledSize(size);
  return reader.read();
}

QIcon image_icon(std::shared_ptr<const std::string> bytes) {
  return bytes ? QIcon(new ImageEngine(std::move(bytes))) : QIcon();
}

BPoint image_size(const std::shared_ptr<const std::string>& bytes) {
  return call(
      [bytes] {
        QByteArray drawing = bytes_of(*bytes);
        QBuffer buffer(&drawing);
        const QSize size = QImageReader(&buffer, format_of(drawing)).size();
        return size.isEmpty() ? BPoint{-1, -1} : size_of(size);
      },
      {-1, -1});
}

} // namespace display
