#pragma once

#include <QProxyStyle>

namespace display {

/** The desktop's style, but for three things of menu bars. The sign of a bar that is too long for its window is made
    when it is first drawn: every bar makes one, and to make it loads every image format there is. Titles are all as
   high as the font itself says: a bar hides titles that are higher than it, as Japanese ones are, and measuring one
    beforehand would load a Japanese font for everybody. And a bar never takes the keyboard focus, neither by the Alt
   key alone nor when Escape closes a menu: keys typed next are text, not menu letters. F10 and Alt with a letter open
   the menus all the same. */
class QuickStyle : public QProxyStyle {
public:
  QIcon standardIcon(StandardPixmap sign, const QStyleOption* option, const QWidget* widget) const override;
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                         const QWidget* widget) const override;
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* returned) const override;
};

} // namespace display
