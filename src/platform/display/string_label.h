#pragma once

#include <QLabel>

namespace display {

/** A label that elides text that is too wide and shrinks a font that is too tall for it. */
class StringLabel : public QLabel {
public:
  StringLabel();
  QSize minimumSizeHint() const override { return QSize(0, 0); }

protected:
  void paintEvent(QPaintEvent* event) override;

private:
  QFont FittingFont() const;
};

} // namespace display
