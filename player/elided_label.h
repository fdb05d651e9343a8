#pragma once

#include <QLabel>

/** A line of text that ends in "…" where it has no room, and never widens its window. Assistive programs are told the
    whole of it. */
class TElidedLabel : public QLabel {
public:
  TElidedLabel();

protected:
  void paintEvent(QPaintEvent* event) override;
};
