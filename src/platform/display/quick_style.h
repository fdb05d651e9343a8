#pragma once

#include <QProxyStyle>

namespace display {

/** The desktop's style with three changes to menu bars:
    - The overflow icon is loaded lazily: every bar creates one, and loading it loads all image format plug-ins.
    - Titles have the height of the font itself: a bar hides titles taller than it (Japanese ones), and measuring one
      beforehand would load a Japanese font for everybody.
    - A bar never takes the keyboard focus, neither by Alt alone nor when Escape closes a menu, so that keys typed next
      go to the text. F10 and Alt with a letter still open menus. */
class QuickStyle : public QProxyStyle {
public:
  QIcon standardIcon(StandardPixmap sign, const QStyleOption* option, const QWidget* widget) const override;
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                         const QWidget* widget) const override;
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* returned) const override;
};

} // namespace display
