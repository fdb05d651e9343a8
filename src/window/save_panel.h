#pragma once

#include "platform/interface/file_panel.h"
#include "platform/support/types.h"

class BMenu;

/** A save panel with menus for the file's encoding, line-end type and dialect (lyrics/dialect.h). Its answer
    carries them as int32 "Encoding", "CRType" and "Dialect". Any thread that does not hold the panel's lock. */
class TVesmoESavePanel : public BFilePanel {
public:
  explicit TVesmoESavePanel(const BMessenger& target);
  ~TVesmoESavePanel() override { End(); }

  /** SetEncoding, SetCRType and SetDialect mark the item of that number, if there is one. The foreign encoding of a
      document is offered as a fourth one. */
  void SetEncoding(int32 encoding);
  void SetCRType(int32 crType);
  void SetDialect(int32 dialect);
  void SendMessage(const BMessenger* target, BMessage* message) override;

private:
  void CreateMenu();
  void Mark(const BMenu* menu, int32 index) const;

  int32 fForeign = 0; // the number of the fourth encoding
  // In the panel's menu bar.
  BMenu* fCRTypeMenu;
  BMenu* fEncodingMenu;
  BMenu* fDialectMenu;
};
