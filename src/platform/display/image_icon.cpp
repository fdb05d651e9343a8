#include "platform/display/image_icon.h"

#include "platform/display/drawing.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QIconEngine>
#include <QImageReader>
#include <QPainter>
#include <QPalette>

namespace display {

namespace {

QByteArray bytes_of(const std::string& text) {
  return QByteArray::fromRawData(text.data(), static_cast<qsizetype>(text.size()));
}

QImage render_drawing(const Drawing& drawing, const QSize& size) {
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(1.0 * size.width() / drawing.size.width(), 1.0 * size.height() / drawing.size.height());
  drawing.Paint(painter);
  return image;
}

QColor ink_for(QIcon::Mode mode) {
  const auto role = mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::ButtonText;
  return QGuiApplication::palette().color(QPalette::Active, role);
}

/** Applies to all colours of a disabled image, not only the ink. */
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
  if (const auto drawing = read_drawing(bytes, ink)) return render_drawing(*drawing, size);
  QByteArray encoded = bytes_of(bytes);
  QBuffer buffer(&encoded);
  QImageReader reader(&buffer);
  reader.setScaledSize(size);
  return reader.read();
}

QIcon image_icon(std::shared_ptr<const std::string> bytes) {
  return bytes ? QIcon(new ImageEngine(std::move(bytes))) : QIcon();
}

} // namespace display
