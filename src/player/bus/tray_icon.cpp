#include "player/bus/tray_icon.h"

#include "player/icon/program_icon.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QImage>
#include <QList>
#include <QtEndian>

namespace {
/** Those of usual panels; other sizes are scaled by the tray. */
constexpr int kSides[] = {16, 22, 32, 48, 64};
} // namespace

struct TTrayPixels {
  int width = 0;
  int height = 0;
  QByteArray bytes;
};
Q_DECLARE_METATYPE(TTrayPixels)

QDBusArgument& operator<<(QDBusArgument& argument, const TTrayPixels& pixels) {
  argument.beginStructure();
  argument << pixels.width << pixels.height << pixels.bytes;
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, TTrayPixels& pixels) {
  argument.beginStructure();
  argument >> pixels.width >> pixels.height >> pixels.bytes;
  argument.endStructure();
  return argument;
}

namespace {

TTrayPixels tray_pixels(int side) {
  const QImage image = program_icon_image(side).convertToFormat(QImage::Format_ARGB32);
  TTrayPixels pixels{image.width(), image.height(), QByteArray(image.sizeInBytes(), '\0')};
  qToBigEndian<quint32>(image.constBits(), pixels.bytes.size() / 4, pixels.bytes.data());
  return pixels;
}

QVariant all_pixels() {
  qDBusRegisterMetaType<TTrayPixels>();
  qDBusRegisterMetaType<QList<TTrayPixels>>();
  QList<TTrayPixels> all;
  for (const int side : kSides) all.push_back(tray_pixels(side));
  return QVariant::fromValue(all);
}

} // namespace

const QVariant& tray_icon() {
  static const QVariant icon = all_pixels();
  return icon;
}
