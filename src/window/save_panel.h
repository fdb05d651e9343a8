#pragma once

#include "platform/interface/file_panel.h"
#include "platform/support/types.h"

class BMenu;

/** A save panel with menus for the file's encoding and line-end type. Its answer
    carries them as int32 "Encoding" and int32 "CRType". Any thread that does not hold the panel's lock. */
class TVesmoESavePanel : public BFilePanel {
public:
  explicit TVesmoESavePanel(const BMessenger& target);
  ~TVesmoESavePanel() override { End(); }

  /** SetEncoding and SetCRType mark the item of that number, if there is one. */
  void SetEncoding(int32 encoding);
  void SetCRType(int32 crType);
  void SendMessage(const BMessenger* target, BMessage* message) override;

private:
  void CreateMenu();
  void Mark(const BMenu* menu, int32 index) const;

  BMenu* fCRTypeMenu; // fCRTypeMenu and fEncodingMenu: in the panel's menu bar
  BMenu* fEncodingMenu;
};
