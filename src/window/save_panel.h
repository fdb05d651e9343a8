#pragma once

#include "platform/interface/file_panel.h"
#include "platform/support/types.h"

class BMenu;

/** The save panel with the two menus by which the encoding and the line-end type of the file are chosen. Its answer
    carries them as int32 "Encoding" and int32 "CRType". Any thread that does not hold the panel's lock. */
class TVesmoESavePanel : public BFilePanel {
public:
  explicit TVesmoESavePanel(const BMessenger& target);
  ~TVesmoESavePanel() override { End(); }

  /** Mark the item of that number; nothing for a number without one. */
  void SetEncoding(int32 encoding);
  void SetCRType(int32 crType);
  void SendMessage(const BMessenger* target, BMessage* message) override;

private:
  void CreateMenu();
  void Mark(const BMenu* menu, int32 index) const;

  BMenu* fCRTypeMenu; // in the panel's menu bar, as the next
  BMenu* fEncodingMenu;
};
