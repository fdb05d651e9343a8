#include "companion/prefs/keys_page.h"

#include "commands/key_names.h"
#include "companion/prefs/command_list.h"
#include "language/llt.h"
#include "platform/app/message.h"
#include "platform/interface/button.h"
#include "platform/interface/key_field.h"
#include "platform/interface/key_text.h"
#include "platform/interface/string_view.h"
#include "plugin/message_codes.h"

TKeysPage::TKeysPage(const BMessenger& manager)
    : TPrefPage("Keys"), fManager(manager), fList(new TCommandList([this] { ShowCommand(); })),
      fField(new BKeyField({}, "CommandKey", "", "")), fNote(new BStringView({}, "KeyNote", "")),
      fNone(new BButton({}, "NoKey", "", new BMessage(kMsgNoKey))),
      fDefault(new BButton({}, "DefaultKey", "", new BMessage(kMsgDefaultKey))),
      fAllDefaults(new BButton({}, "DefaultKeys", "", new BMessage(kMsgDefaultKeys))) {
  fField->SetModificationMessage(new BMessage(kMsgKeyPressed));
  AddWide(fList);
  AddWide(fField, fNone);
  AddWide(fNote, fDefault);
  AddWide(new BStringView({}, "", ""), fAllDefaults);
  fList->Select(0);
}

void TKeysPage::AttachedToWindow() {
  fField->SetTarget(this);
  for (BButton* button : {fNone, fDefault, fAllDefaults}) button->SetTarget(this);
}

void TKeysPage::Relabel() {
  TPrefPage::Relabel();
  fList->SetAccessibleName(gLLT->Text("Pref_Tab_Keys"));
  fField->SetLabel(gLLT->Text("Pref_Key_Of_Command"));
  fNone->SetLabel(gLLT->Text("Button_No_Key"));
  fDefault->SetLabel(gLLT->Text("Button_Default_Key"));
  fAllDefaults->SetLabel(gLLT->Text("Button_Default_Keys"));
  fList->ShowKeys(*current_keys());
  ShowCommand();
  LayOut();
}

void TKeysPage::Opened() {
  fOpened = *current_keys();
}

void TKeysPage::Revert() {
  Change(fOpened);
}

void TKeysPage::SetDefaults() {
  Change(TKeys());
}

void TKeysPage::MessageReceived(BMessage* message) {
  switch (message->what) {
  case kMsgKeyPressed:
    return KeyPressed();
  case kMsgNoKey:
    return ChangeKey("");
  case kMsgDefaultKey:
    return KeyWanted(command(fList->Selected()).keys);
  case kMsgDefaultKeys:
    return SetDefaults();
  default:
    TPrefPage::MessageReceived(message);
  }
}

void TKeysPage::Note(const std::string& text) {
  fNote->SetText(text.c_str());
  fNote->SetToolTip(text);
}

void TKeysPage::ShowCommand() {
  fWanted.clear();
  fField->SetText(current_keys()->Of(fList->Selected()).c_str());
  Note(gLLT->Text("Pref_Press_Key"));
}

void TKeysPage::KeyPressed() {
  const auto keys = normalized_keys(fField->Text());
  if (keys && !are_reserved_keys(*keys)) return KeyWanted(*keys);
  ShowCommand();
  Note(gLLT->Text("Pref_Err_Key_Reserved"));
}

void TKeysPage::KeyWanted(const std::string& keys) {
  const auto other = current_keys()->OtherWith(keys, fList->Selected());
  if (!other || fWanted == keys) return ChangeKey(keys);
  ShowCommand();
  fWanted = keys;
  Note(shown_keys({keys}).front() + gLLT->Text("Pref_Key_Taken_1") + gLLT->Text(command(*other).textKey) +
       gLLT->Text("Pref_Key_Taken_2"));
}

void TKeysPage::ChangeKey(const std::string& keys) {
  TKeys changed = *current_keys();
  if (const auto other = changed.OtherWith(keys, fList->Selected())) changed.Set(*other, "");
  changed.Set(fList->Selected(), keys);
  Change(changed);
}

void TKeysPage::Change(const TKeys& keys) {
  if (keys == *current_keys()) return ShowCommand();
  gKeyBindings->SetValues(keys);
  const bool isSaved = save_key_bindings();
  fManager.SendCoalesced(BMessage(kMsgKeys));
  fList->ShowKeys(keys);
  ShowCommand();
  if (!isSaved) Note(gLLT->Text("Pref_Err_Store"));
}
