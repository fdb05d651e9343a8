#pragma once

#include "platform/display/control_widget.h"

#include <QColor>
#include <QPointer>
#include <QPushButton>

class QColorDialog;

namespace display {

/** Shows a colour and its number; pressed, it opens a dialog of colours that blocks its window and no thread. */
class ColorButton : public ReturnClicks<QPushButton>, public ControlWidget {
public:
  explicit ColorButton(const BMessenger& view);

  void ShowLabel(const std::string& label) override;
  void ShowValue(int32 color) override;

private:
  void OpenDialog();
  void Tell(const QColor& color) const;

  const BMessenger fView;
  QColor fColor;
  QString fTitle;
  QPointer<QColorDialog> fDialog; // while it is open
};

} // namespace display
