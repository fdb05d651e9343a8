#pragma once

#include <QImage>
#include <QWidget>

/** The picture that belongs to the song, or a note where there is none. */
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
