#pragma once

#include <QLabel>

/** A line of text that ends in "…" where it has no room, and never widens its window. Assistive programs are told the
    whole of it. */
class TElidedLabel : public QLabel {
public:
  /** 1 is the full colour of texts. */
  explicit TElidedLabel(double strength = 1);

protected:
  void paintEvent(QPaintEvent* event) override;

private:
  const double fStrength;
};
