#pragma once

#include "commands/key_bindings.h"
#include "companion/prefs/pref_page.h"
#include "platform/app/messenger.h"

class BKeyField;
class TCommandList;

/** All commands of the editor with their keys, which take effect at once. To be used on the window's thread. */
class TKeysPage : public TPrefPage {
public:
  /** `manager` is notified of each change (kMsgKeys). */
  explicit TKeysPage(const BMessenger& manager);

  void Opened() override;
  void Revert() override;
  void SetDefaults() override;
  void AttachedToWindow() override;
  void Relabel() override;
  void MessageReceived(BMessage* message) override;

private:
  void KeyPressed();
  /** Asks before it takes them from another command. */
  void KeyWanted(const std::string& keys);
  void ChangeKey(const std::string& keys);
  void Change(const TKeys& keys);
  void ShowCommand();
  void Note(const std::string& text);

  const BMessenger fManager;
  TCommandList* fList; // the children
  BKeyField* fField;
  BStringView* fNote;
  BButton* fNone;
  BButton* fDefault;
  BButton* fAllDefaults;
  TKeys fOpened;
  std::string fWanted; // keys of another command, which are moved when they are pressed again
};
