#include "interapp/inter_app_prefs.h"

#include "common/koreva.h"
#include "interapp/iap_win.h"
#include "platform/app/message.h"
#include "platform/kernel/ports.h"
#include "platform/kernel/threads.h"
#include "plugin/message_codes.h"

TInterAppPrefs* gIAP = nullptr;

namespace {
constexpr bigtime_t kLookUs = 20000;
constexpr int kTries = 3;
/** Timeout for room in the common window's port; a stopped process is waited for a few seconds longer. */
constexpr bigtime_t kPatienceUs = 1000000;
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

status_t TInterAppPrefs::AddControls(port_id port) const {
  BMessage controls(kMsgIAPControls);
  for (const auto& [name, item] : fItems) {
    BMessage archive;
    item->MakeConfigurationView().Archive(&archive);
    controls.AddMessage(name.c_str(), &archive);
  }
  return SendMessage(port, &controls);
}

port_id TInterAppPrefs::MakeWindow(BRect frame) {
  EndWindow(); // a window that the user has closed may still be ending
  auto* const window = new TIAPWin;
  window->MoveTo(frame.LeftTop());
  fWindow = BMessenger(window);
  window->Show();
  fWindowThread = window->Thread();
  port_id port = 0;
  while (port == 0 && fWindow.LockTarget()) {
    port = window->Port();
    window->Unlock();
    if (port == 0) snooze(kLookUs);
  }
  if (port <= 0) EndWindow();
  return port;
}

status_t TInterAppPrefs::ShowWindow(BRect frame) {
  // The window may be closed or its process killed meanwhile, or another process may create it first.
  for (int i = 0; i < kTries; ++i) {
    port_id port = find_port(kIAPPortName);
    status_t status = B_OK;
    if (port < 0)
      port = MakeWindow(frame);
    else
      status = ActivateWindow(port);
    if (port > 0 && status == B_OK) status = AddControls(port);
    if (port > 0 && status == B_OK) return B_OK;
    if (status == B_TIMED_OUT) break; // its process is stopped or hangs
  }
  return B_ERROR;
}

TIAPWin* TInterAppPrefs::LockWindow() const {
  BLooper* window = nullptr;
  if (!fWindow.LockTarget()) return nullptr;
  fWindow.Target(&window);
  // A window can still be locked between the end of its loop and its deletion.
  if (fWindow.IsValid()) return static_cast<TIAPWin*>(window);
  window->Unlock();
  return nullptr;
}

void TInterAppPrefs::EndWindow() {
  if (TIAPWin* const window = LockWindow()) window->Quit();
  if (fWindowThread > 0) wait_for_thread(fWindowThread, nullptr);
  fWindow = BMessenger();
  fWindowThread = -1;
}

status_t TInterAppPrefs::CloseWindow(bool force) const {
  const port_id port = find_port(kIAPPortName);
  if (port < 0) return B_OK;
  if (!force && !MadeWindow()) return B_ERROR;
  BMessage quit(B_QUIT_REQUESTED);
  return SendMessage(port, &quit);
}

status_t TInterAppPrefs::ActivateWindow(port_id port) const {
  BMessage activate(kMsgIAPActivate);
  return SendMessage(port, &activate);
}

status_t TInterAppPrefs::SendMessage(port_id port, BMessage* message) const {
  const std::vector<char> flat = message->Flatten();
  return write_port_etc(port, 0, flat.data(), flat.size(), kPatienceUs);
}

std::string accelerator_label(const char* letter, const char* label) {
  std::string format;
  if (gIAP) gIAP->GetString("AccKeyFormat", &format);
  return koreva::merge_accelerator_key(format, letter, label);
}
