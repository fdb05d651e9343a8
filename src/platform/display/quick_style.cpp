#include "platform/display/quick_style.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QStyleOption>

namespace display {

namespace {

/** Lazy icon: asks the style for it when it is drawn. */
class LazyIcon : public QIconEngine {
public:
  explicit LazyIcon(QStyle::StandardPixmap sign) : fSign(sign) {}

  QIconEngine* clone() const override { return new LazyIcon(fSign); }
  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
    Icon().paint(painter, rect, Qt::AlignCenter, mode, state);
  }
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    return Icon().pixmap(size, mode, state);
  }

private:
  QIcon Icon() const {
    const auto* const style = dynamic_cast<const QProxyStyle*>(QApplication::style());
    return style ? style->baseStyle()->standardIcon(fSign) : QIcon();
  }

  const QStyle::StandardPixmap fSign;
};

} // namespace

QIcon QuickStyle::standardIcon(StandardPixmap sign, const QStyleOption* option, const QWidget* widget) const {
  if (sign == SP_ToolBarHorizontalExtensionButton) return QIcon(new LazyIcon(sign));
  return QProxyStyle::standardIcon(sign, option, widget);
}

QSize QuickStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                                   const QWidget* widget) const {
  const bool isTitle = type == CT_MenuBarItem && !contents.isEmpty();
  const QSize text = isTitle ? QSize(contents.width(), option->fontMetrics.height()) : contents;
  return QProxyStyle::sizeFromContents(type, option, text, widget);
}

int QuickStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* returned) const {
  if (hint == SH_MenuBar_AltKeyNavigation) return 0;
  return QProxyStyle::styleHint(hint, option, widget, returned);
}

} // namespace display
