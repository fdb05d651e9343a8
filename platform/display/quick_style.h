#pragma once

#include <QProxyStyle>

namespace display {

/** The desktop's style, but for two things of menu bars. The sign of a bar that is too long for its window is made when
    it is first drawn: every bar makes one, and to make it loads every image format there is. And titles are all as high
    as the font itself says: a bar hides titles that are higher than it, as Japanese ones are, and measuring one
    beforehand would load a Japanese font for everybody. */
class QuickStyle : public QProxyStyle {
public:
  QIcon standardIcon(StandardPixmap sign, const QStyleOption* option, const QWidget* widget) const override;
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                         const QWidget* widget) const override;
};

} // namespace display
