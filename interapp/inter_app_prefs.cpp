#include "interapp/inter_app_prefs.h"

#include "common/koreva.h"
#include "platform/app/message.h"
#include "platform/kernel/ports.h"

TInterAppPrefs* gIAP = nullptr;

namespace {
constexpr const char* kWindowPort = "KOREVAIAPPort";
constexpr uint32 kMsgActivate = 'iawr';
} // namespace

void TInterAppPrefs::SetAppSignatureRef(const char* signature) {
  fSignature = signature;
  for (const auto& [name, item] : fItems) item->SetAppSignatureRef(signature);
}

void TInterAppPrefs::SetLLTRef(const TLLT* texts) {
  fTexts = texts;
  for (const auto& [name, item] : fItems) item->SetLLTRef(texts);
}

void TInterAppPrefs::AddItem(TIAPItem* item) {
  item->SetAppSignatureRef(fSignature);
  item->SetLLTRef(fTexts);
  item->LoadValue();
  fItems[item->Name()].reset(item);
}

TIAPItem* TInterAppPrefs::Find(const char* name) const {
  const auto found = fItems.find(name);
  return found == fItems.end() ? nullptr : found->second.get();
}

status_t TInterAppPrefs::GetBool(const char* name, bool* value) const {
  const TIAPItem* const item = Find(name);
  return item ? item->GetBool(value) : B_NAME_NOT_FOUND;
}
status_t TInterAppPrefs::GetString(const char* name, std::string* value) const {
  const TIAPItem* const item = Find(name);
  return item ? item->GetString(value) : B_NAME_NOT_FOUND;
}
status_t TInterAppPrefs::SetBool(const char* name, bool value) {
  TIAPItem* const item = Find(name);
  return item ? item->SetBool(value) : B_NAME_NOT_FOUND;
}
status_t TInterAppPrefs::SetString(const char* name, const std::string& value) {
  TIAPItem* const item = Find(name);
  return item ? item->SetString(value) : B_NAME_NOT_FOUND;
}

status_t TInterAppPrefs::SetValue(const BMessage& notice) {
  std::string name;
  if (notice.FindString("IAP:SrcIAPItem", &name) != B_OK) return B_ERROR;
  TIAPItem* const item = Find(name.c_str());
  return item ? item->SetValue(notice) : B_ERROR;
}

status_t TInterAppPrefs::CloseWindow(bool force) const {
  const port_id port = find_port(kWindowPort);
  if (port < 0) return B_OK;
  if (!force && !fMadeWindow) return B_ERROR;
  BMessage quit(B_QUIT_REQUESTED);
  return SendMessage(port, &quit);
}

status_t TInterAppPrefs::ActivateWindow(port_id port) const {
  BMessage activate(kMsgActivate);
  return SendMessage(port, &activate);
}

status_t TInterAppPrefs::SendMessage(port_id port, BMessage* message) const {
  const std::vector<char> flat = message->Flatten();
  return write_port(port, 0, flat.data(), flat.size());
}

std::string accelerator_label(const char* letter, const char* label) {
  std::string format;
  if (gIAP) gIAP->GetString("AccKeyFormat", &format);
  return koreva::merge_accelerator_key(format, letter, label);
}
