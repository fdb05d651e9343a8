#pragma once

#include <QLabel>

namespace display {

/** A label that shortens what does not fit with an ellipsis, and sets it smaller where the label is too low for its
 * font. */
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
