#include "interapp/iap_win.h"

#include "platform/app/looper_lock.h"
#include "platform/app/message.h"
#include "platform/app/roster.h"
#include "platform/interface/button.h"
#include "platform/interface/check_box.h"
#include "platform/interface/menu_field.h"
#include "platform/interface/string_view.h"
#include "platform/kernel/threads.h"
#include "plugin/message_codes.h"
#include "toolkit/krv_dlg_view.h"
#include "toolkit/simple_input_win.h"

#include <algorithm>

namespace {

/** Prefix of the signatures of the family's applications. */
constexpr const char* kFamily = "application/x-vnd.KOREVA-";
/** How long to wait for a full message queue; a busier application misses the notice. */
constexpr bigtime_t kPatienceUs = 1000000;
constexpr const char* kItem = "IAP:SrcIAPItem";
/** Limits, since any program can add controls and applications. */
constexpr size_t kMaxControls = 100;
constexpr size_t kMaxApps = 100;

/** Index of the value's choice, which is added if necessary. */
int32 choice_of(TIAPControl* control) {
  const auto is_value = [control](const TIAPControl::TChoice& choice) {
    return !choice.asks && choice.value == control->text;
  };
  auto found = std::find_if(control->choices.begin(), control->choices.end(), is_value);
  if (found == control->choices.end()) {
    const auto asking = std::find_if(control->choices.begin(), control->choices.end(),
                                     [](const TIAPControl::TChoice& choice) { return choice.asks; });
    found = control->choices.insert(asking, {control->text, control->text, false});
  }
  return static_cast<int32>(found - control->choices.begin());
}

} // namespace

TIAPWin::TIAPWin()
    : TKRVDlgWin("KOREVA Common Preferences"), fView(new TKRVDlgView("CommonPreferences")),
      fPortManager(BMessenger(this)) {
  auto* const ok = new BButton({}, "OK", "OK", new BMessage(B_QUIT_REQUESTED));
  auto* const cancel = new BButton({}, "Cancel", "Cancel", new BMessage(kMsgIAPCancel));
  fView->AddButtons({new BButton({}, "Default", "Default", new BMessage(kMsgIAPDefaults)), cancel, ok});
  fView->SetDefaultButton(ok);
  fView->SetCancelButton(cancel);
  AddMainChild(fView);
  ok->MakeFocus(); // not "Default", which a single key press would trigger
  KeepWhenClosed(false);
  Fit();
  fPortManager.Resume();
}

TIAPWin::~TIAPWin() = default;

void TIAPWin::Quit() {
  // First, so that other processes find no port from now on and may open another window.
  fPortManager.Stop();
  if (fInput && fInput->Lock()) fInput->Quit();
  if (fInputThread > 0) wait_for_thread(fInputThread, nullptr);
  TKRVDlgWin::Quit();
}

void TIAPWin::MessageReceived(BMessage* message) {
  switch (message->what) {
  case kMsgIAPControls:
    return AddControls(*message);
  case kMsgIAPActivate:
    return BringUp();
  case kMsgIAPControlChanged:
    return ControlChanged(*message);
  case kMsgIAPTextTyped:
    return TextTyped(*message);
  case kMsgIAPDefaults:
    return SetAllToDefault();
  case kMsgIAPCancel:
    BringBackAll();
    PostMessage(B_QUIT_REQUESTED);
    return;
  default:
    TKRVDlgWin::MessageReceived(message);
  }
}

void TIAPWin::AddControls(const BMessage& message) {
  BMessage archive;
  TIAPControl control;
  for (const std::string& name : message.FieldNames())
    if (message.FindMessage(name.c_str(), &archive) == B_OK && control.Unarchive(archive)) AddControl(control);
  Fit();
}

/** One control per preference; all applications that added it are notified of changes. */
void TIAPWin::AddControl(const TIAPControl& control) {
  if (fEntries.size() >= kMaxControls && !fEntries.contains(control.item)) return;
  TEntry& entry = fEntries[control.item];
  const bool isKnown = std::ranges::find(entry.apps, control.app) != entry.apps.end();
  if (!isKnown && entry.apps.size() < kMaxApps) entry.apps.push_back(control.app);
  if (entry.view) return;
  entry.control = entry.opened = control;
  entry.view = MakeView(control);
  ShowValue(&entry);
}

BControl* TIAPWin::MakeView(const TIAPControl& control) {
  auto* const changed = new BMessage(kMsgIAPControlChanged);
  changed->AddString(kItem, control.item);
  if (control.kind == TIAPControl::kCheckBox) {
    auto* const box = new BCheckBox({}, control.item.c_str(), control.label.c_str(), changed);
    fView->AddRow({box});
    return box;
  }
  auto* const field = new BMenuField({}, control.item.c_str(), control.label.c_str(), changed);
  fView->AddRow({new BStringView({}, (control.item + "Label").c_str(), control.label.c_str()), field});
  return field;
}

void TIAPWin::ShowValue(TEntry* entry) {
  if (entry->control.kind == TIAPControl::kCheckBox) return entry->view->SetValue(entry->control.flag ? 1 : 0);
  auto* const field = static_cast<BMenuField*>(entry->view);
  const int32 chosen = choice_of(&entry->control);
  std::vector<std::string> shown;
  for (const TIAPControl::TChoice& choice : entry->control.choices) shown.push_back(choice.shown);
  if (shown != field->Choices()) field->SetChoices(shown);
  field->SetValue(chosen);
}

TIAPWin::TEntry* TIAPWin::Find(const BMessage& message) {
  std::string item;
  if (message.FindString(kItem, &item) != B_OK) return nullptr;
  const auto found = fEntries.find(item);
  return found == fEntries.end() ? nullptr : &found->second;
}

void TIAPWin::ControlChanged(const BMessage& message) {
  TEntry* const entry = Find(message);
  if (entry == nullptr) return;
  const int32 value = entry->view->Value();
  if (entry->control.kind == TIAPControl::kCheckBox) {
    entry->control.flag = value != 0;
    return Notify(*entry);
  }
  if (value < 0 || value >= static_cast<int32>(entry->control.choices.size())) return;
  const TIAPControl::TChoice& choice = entry->control.choices[static_cast<size_t>(value)];
  if (choice.asks) return AskForText(entry->control.item);
  entry->control.text = choice.value;
  Notify(*entry);
}

void TIAPWin::AskForText(const std::string& item) {
  TEntry& entry = fEntries[item];
  ShowValue(&entry); // until a new one has been entered
  if (fInput == nullptr) fInput = new TSimpleInputWin;
  const TLooperLock lock(fInput);
  if (!lock) return;
  fInput->SetLabels({entry.control.label, "a:", "OK", "Cancel"});
  BMessage typed(kMsgIAPTextTyped);
  typed.AddString(kItem, item);
  fInput->SetMessage(typed, BMessenger(this));
  fInput->MoveTo(Frame().left + 20, Frame().top + 40);
  fInput->BringUp();
  fInputThread = fInput->Thread();
}

void TIAPWin::TextTyped(const BMessage& message) {
  TEntry* const entry = Find(message);
  std::string text;
  if (entry == nullptr || message.FindString(kInputField, &text) != B_OK) return;
  TIAPControl value = entry->control;
  value.text = text;
  SetValue(entry, value);
}

void TIAPWin::SetValue(TEntry* entry, const TIAPControl& value) {
  if (value.flag == entry->control.flag && value.text == entry->control.text) return;
  entry->control.flag = value.flag;
  entry->control.text = value.text;
  ShowValue(entry);
  Notify(*entry);
}

/** Notifies the applications that added a control, and all others of the family that are running, which may have the
    preference as well. */
void TIAPWin::Notify(const TEntry& entry) const {
  std::vector<std::string> apps = be_roster->Signatures(kFamily);
  for (const std::string& app : entry.apps)
    if (std::ranges::find(apps, app) == apps.end()) apps.push_back(app);
  for (const std::string& app : apps) {
    BMessage notice(kMsgIAPChanged);
    notice.AddString("IAP:SrcApp", app);
    notice.AddString(kItem, entry.control.item);
    if (entry.control.kind == TIAPControl::kCheckBox)
      notice.AddBool("IAP:Value", entry.control.flag);
    else
      notice.AddString("IAP:Value", entry.control.text);
    BMessenger(app.c_str()).SendLater(notice, kPatienceUs);
  }
}

void TIAPWin::SetAllToDefault() {
  for (auto& [item, entry] : fEntries) {
    TIAPControl value = entry.control;
    value.flag = value.defaultFlag;
    value.text = value.defaultText;
    SetValue(&entry, value);
  }
}

void TIAPWin::BringBackAll() {
  for (auto& [item, entry] : fEntries) SetValue(&entry, entry.opened);
}
