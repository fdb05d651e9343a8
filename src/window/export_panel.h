#pragma once

#include "platform/interface/file_panel.h"
#include "platform/support/types.h"

#include <string>

class BMenu;

/** A save panel for exports, with a menu of formats. Its answer carries the format as int32 "Format"; choosing a format
    proposes a file name for it. Any thread that does not hold the panel's lock. */
class TExportPanel : public BFilePanel {
public:
  /** `answer` gets the file and the format; `name` is that of the document's file. */
  TExportPanel(const BMessenger& target, const BMessage& answer, const std::string& folder, std::string name);
  ~TExportPanel() override { End(); }

  /** Proposes the document's name in the marked format; "song.lrc" only if the shown folder has no such file. */
  void ProposeName();
  void SendMessage(const BMessenger* target, BMessage* message) override;

private:
  int32 Format() const;

  const std::string fName;
  BMenu* fFormatMenu; // in the panel's menu bar
};
