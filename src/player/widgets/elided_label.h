#pragma once

#include <QLabel>

/** A line of text that is elided instead of widening its window. Screen readers get the whole text. */
class TElidedLabel : public QLabel {
public:
  /** Opacity; 1 is the normal text colour. */
  explicit TElidedLabel(double strength = 1);

protected:
  void paintEvent(QPaintEvent* event) override;

private:
  const double fStrength;
};
