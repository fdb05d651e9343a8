#pragma once

#include "platform/interface/file_panel.h"
#include "platform/support/types.h"

#include <string>

class BMenu;

/** To the window, from the panel's menu. */
enum : uint32 { kMsgExportFormat = '_exf' };

/** The panel in which the lyrics are given a name for other programs, with a menu of formats, whose number its answer
    carries as int32 "Format". A format chosen proposes the document's name in that format. Any thread that does not
    hold the panel's lock. */
class TExportPanel : public BFilePanel {
public:
  /** `name` is the document's. */
  TExportPanel(const BMessenger& target, std::string name);
  ~TExportPanel() override { End(); }

  /** The document's name in the format that is marked. */
  void ProposeName();
  void SendMessage(const BMessenger* target, BMessage* message) override;

private:
  int32 Format() const;

  const std::string fName;
  BMenu* fFormatMenu; // in the panel's menu bar
};
