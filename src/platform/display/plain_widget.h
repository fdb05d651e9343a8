#pragma once

#include "platform/interface/picture.h"

#include <QWidget>

namespace display {

/** Shows a recorded picture. */
class PlainWidget : public QWidget {
public:
  void SetPicture(BPicture picture);

protected:
  void paintEvent(QPaintEvent* event) override;

private:
  BPicture fPicture;
};

} // namespace display
