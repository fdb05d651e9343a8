#pragma once

#include <QImage>
#include <QWidget>

/** The song's cover, or a placeholder. Its owner provides the context menu. */
class TCoverView : public QWidget {
public:
  TCoverView();
  void Show(const QImage& picture);
  QSize sizeHint() const override;

protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;

private:
  QImage fPicture;
};
