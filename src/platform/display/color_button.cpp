#include "platform/display/color_button.h"

#include "platform/app/message.h"
#include "platform/interface/view_peer.h"

#include <QColorDialog>
#include <QKeyEvent>
#include <QPainter>

namespace display {

namespace {

constexpr QSize kSwatch{36, 16};

QIcon swatch_of(const QColor& color, const QColor& frame, qreal pixelRatio) {
  QPixmap pixmap(kSwatch * pixelRatio);
  pixmap.setDevicePixelRatio(pixelRatio);
  pixmap.fill(color);
  QPainter painter(&pixmap);
  painter.setPen(frame);
  painter.drawRect(0, 0, kSwatch.width() - 1, kSwatch.height() - 1);
  painter.end();
  return pixmap;
}

} // namespace

ColorButton::ColorButton(const BMessenger& view) : fView(view) {
  setIconSize(kSwatch);
  connect(this, &QPushButton::clicked, this, [this] { OpenDialog(); });
}

void ColorButton::Show(const QColor& color) {
  fColor = color;
  setText(color.name().toUpper());
  setIcon(swatch_of(color, palette().color(QPalette::Mid), devicePixelRatioF()));
}

void ColorButton::SetTitle(const QString& title) {
  fTitle = title;
  if (fDialog) fDialog->setWindowTitle(title);
}

void ColorButton::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return click();
  QPushButton::keyPressEvent(event);
}

void ColorButton::OpenDialog() {
  fDialog = new QColorDialog(fColor, window());
  fDialog->setAttribute(Qt::WA_DeleteOnClose);
  // The desktop's own may run in a loop of its own, and need not tell of the colours tried.
  fDialog->setOption(QColorDialog::DontUseNativeDialog);
  fDialog->setWindowTitle(fTitle);
  fDialog->setWindowModality(Qt::WindowModal);
  connect(fDialog, &QColorDialog::currentColorChanged, this, [this](const QColor& color) { Tell(color); });
  connect(fDialog, &QDialog::finished, this, [this, before = fColor](int result) {
    if (result == QDialog::Rejected) Tell(before);
    window()->activateWindow(); // where no window manager does
  });
  fDialog->show();
}

void ColorButton::Tell(const QColor& color) const {
  BMessage chosen(DISPLAY_VALUE_CHOSEN);
  chosen.AddInt32("value", static_cast<int32>(static_cast<uint32>(color.rgb()) << 8));
  fView.SendMessage(&chosen, BMessenger(), 0);
}

} // namespace display
