#pragma once

#include <QImage>
#include <QWidget>

/** The song's cover, or a placeholder. */
class TCoverView : public QWidget {
public:
  TCoverView();
  void Show(const QImage& picture);
  QSize sizeHint() const override;

protected:
  void paintEvent(QPaintEvent* event) override;

private:
  QImage fPicture;
};
