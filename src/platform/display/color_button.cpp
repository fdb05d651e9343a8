#include "platform/display/color_button.h"

#include "platform/display/convert.h"

#include <QColorDialog>
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
  ShowValue(0);
}

void ColorButton::ShowValue(int32 color) {
  fColor = QColor::fromRgb(static_cast<QRgb>(color) >> 8);
  setText(fColor.name().toUpper());
  setIcon(swatch_of(fColor, palette().color(QPalette::Mid), devicePixelRatioF()));
}

void ColorButton::ShowLabel(const std::string& label) {
  fTitle = to_qstring(label);
  if (fDialog) fDialog->setWindowTitle(fTitle);
}

void ColorButton::OpenDialog() {
  fDialog = new QColorDialog(fColor, window());
  fDialog->setAttribute(Qt::WA_DeleteOnClose);
  // The desktop's own dialog may run a nested event loop and need not report the colours tried.
  fDialog->setOption(QColorDialog::DontUseNativeDialog);
  fDialog->setWindowTitle(fTitle);
  fDialog->setWindowModality(Qt::WindowModal);
  connect(fDialog, &QColorDialog::currentColorChanged, this, [this](const QColor& color) { Report(color); });
  connect(fDialog, &QDialog::finished, this, [this, before = fColor](int result) {
    if (result == QDialog::Rejected) Report(before);
    window()->activateWindow(); // if no window manager does
  });
  fDialog->show();
}

void ColorButton::Report(const QColor& color) const {
  send_value(fView, static_cast<int32>(static_cast<uint32>(color.rgb()) << 8));
}

std::shared_ptr<ControlPeer> make_color_peer(const BMessenger& view) {
  return std::make_shared<ControlPeer>(view, Keys::to_control, [view]() -> QWidget* { return new ColorButton(view); });
}

} // namespace display
