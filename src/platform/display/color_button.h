#pragma once

#include "platform/display/control_widget.h"

#include <QColor>
#include <QPointer>
#include <QPushButton>

class QColorDialog;

namespace display {

/** Shows a colour and its hex code; opens a window-modal colour dialog, which blocks no thread. */
class ColorButton : public ReturnClicks<QPushButton>, public ControlWidget {
public:
  explicit ColorButton(const BMessenger& view);

  void ShowLabel(const std::string& label) override;
  void ShowValue(int32 color) override;

private:
  void OpenDialog();
  void Report(const QColor& color) const;

  const BMessenger fView;
  QColor fColor;
  QString fTitle;
  QPointer<QColorDialog> fDialog; // null while closed
};

} // namespace display
