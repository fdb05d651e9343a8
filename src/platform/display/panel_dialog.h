#pragma once

#include "platform/app/messenger.h"
#include "platform/interface/file_panel.h"

#include <QFileDialog>

namespace display {

/** Qt's file dialog without its questions in nested event loops. Reports the chosen files and its closing to the
    panel's window. */
class PanelDialog : public QFileDialog {
public:
  PanelDialog(const BMessenger& window, file_panel_mode mode, bool allowMultiple);
  void SetSaveText(const QString& name);
  void accept() override;
  void done(int result) override;

private:
  void HideSuggestions();
  void AskToReplace(const QString& path);
  void Say(const QString& text);

  BMessenger fWindow;
  bool fMayReplace = false;
};

} // namespace display
