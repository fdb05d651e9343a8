#pragma once

#include "platform/app/messenger.h"

#include <QColor>
#include <QPointer>
#include <QPushButton>

class QColorDialog;

namespace display {

/** Shows a colour and its number; pressed, it opens a dialog of colours that blocks its window and no thread. */
class ColorButton : public QPushButton {
public:
  explicit ColorButton(const BMessenger& view);

  void Show(const QColor& color);
  void SetTitle(const QString& title);

protected:
  void keyPressEvent(QKeyEvent* event) override;

private:
  void OpenDialog();
  void Tell(const QColor& color) const;

  const BMessenger fView;
  QColor fColor;
  QString fTitle;
  QPointer<QColorDialog> fDialog; // while it is open
};

} // namespace display
