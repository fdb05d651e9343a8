#pragma once

#include <QProxyStyle>

namespace display {

/** The desktop's style, but for one thing: the sign of a menu bar that is too long for its window is made when it is
    first drawn. Every menu bar makes one, and to make it loads every image format there is. */
class QuickStyle : public QProxyStyle {
public:
  QIcon standardIcon(StandardPixmap sign, const QStyleOption* option, const QWidget* widget) const override;
};

} // namespace display
