#include "companion/prefs/vesmo_d_pref_win.h"

#include "companion/prefs/appearance_page.h"
#include "companion/prefs/files_page.h"
#include "companion/prefs/general_page.h"
#include "companion/prefs/keys_page.h"
#include "companion/prefs/notices.h"
#include "companion/prefs/timing_page.h"
#include "family/message_filters.h"
#include "interapp/inter_app_prefs.h"
#include "language/llt.h"
#include "lyrics/reaction_time.h"
#include "platform/app/message.h"
#include "platform/interface/button.h"
#include "platform/interface/string_view.h"
#include "platform/interface/tab_view.h"
#include "plugin/message_codes.h"
#include "plugin/shared_prefs.h"
#include "toolkit/krv_dlg_view.h"

#include <algorithm>

namespace {

/** Debounce: trying out colours does not write the file for each. */
constexpr bigtime_t kStoreAfterUs = 400000;
/** Backoff while the manager's queue is full. */
constexpr bigtime_t kSendAgainAfterUs = 50000;
/** Wait before reporting an invalid number, so that a half-typed "-" is not flagged. */
constexpr bigtime_t kInvalidAfterUs = 700000;

/** Only the name of the language file is kept: language files are in the plug-in's folder. */
TPrefValues current_settings() {
  TPrefValues values = *gPref->Values();
  values.languageFile.erase(0, values.languageFile.rfind('/') + 1);
  return values;
}

} // namespace

TVesmoDPrefWin::TVesmoDPrefWin(const std::string& languageFolder, const BMessenger& manager,
                               TClickTrack::TOpen openOutput)
    : TKRVDlgWin(""), fManager(manager), fAppearance(new TAppearancePage),
      fTiming(new TTimingPage(std::move(openOutput))), fPages{{new TGeneralPage(languageFolder), "Pref_Tab_General"},
                                                              {fAppearance, "Pref_Tab_Appearance"},
                                                              {fTiming, "Pref_Tab_Timing"},
                                                              {new TFilesPage, "Pref_Tab_Files"},
                                                              {new TKeysPage(manager), "Pref_Tab_Keys"}},
      fTabs(new BTabView({}, "PrefTabs")), fError(new BStringView({}, "Error", "")),
      fDefaults(new BButton({}, "Defaults", "", new BMessage(kMsgPrefDefaults))),
      fRevert(new BButton({}, "Revert", "", new BMessage(kMsgPrefRevert))),
      fClose(new BButton({}, "Close", "", new BMessage(B_QUIT_REQUESTED))), fView(new TKRVDlgView("Preferences")) {
  for (const TTab& tab : fPages) fTabs->AddTab(tab.page, "");
  fTabs->ScrollPages(); // on small screens
  fView->AddRow({fTabs});
  fView->AddRow({fError});
  fView->AddButtons({fDefaults, fRevert, fClose});
  fView->SetDefaultButton(fClose);
  fView->SetCancelButton(fClose);
  AddMainChild(fView);
  fTabs->MakeFocus();
  Relabel();
}

TVesmoDPrefWin::~TVesmoDPrefWin() = default;

void TVesmoDPrefWin::Show() {
  if (!fSendLater) fValues = fSent = current_settings();
  fOpened = fValues;
  for (const TTab& tab : fPages) tab.page->Opened();
  ShowError(nullptr);
  Relabel();
  TKRVDlgWin::Show();
}

void TVesmoDPrefWin::PutAway() {
  fTiming->StopTest();
  StoreNow();
  TKRVDlgWin::PutAway();
}

void TVesmoDPrefWin::Quit() {
  fTiming->StopTest();
  StoreNow();
  TKRVDlgWin::Quit();
}

void TVesmoDPrefWin::MessageReceived(BMessage* message) {
  switch (message->what) {
  case kMsgSettingChanged:
    return SettingChanged(*message);
  case kMsgUseOffset:
    return UseOffset(*message);
  case kMsgStampHint:
    return TakeStampHint(*message);
  case kMsgPrefDefaults:
    for (const TTab& tab : fPages) tab.page->SetDefaults();
    return SetAll(TPrefValues());
  case kMsgPrefRevert:
    for (const TTab& tab : fPages) tab.page->Revert();
    return SetAll(fOpened);
  case kMsgPrefStore:
    return StoreNow();
  case kMsgPrefSendAgain:
    return SendChanges();
  case kMsgPrefInvalid:
    return ShowError("Pref_Err_Number");
  case kMsgLanguageChanged:
  case kMsgIAPChanged:
    return Relabel();
  default:
    TKRVDlgWin::MessageReceived(message);
  }
}

void TVesmoDPrefWin::Relabel() {
  SetTitle(gLLT->Text("Pref_Win_Title"));
  int32 index = 0;
  for (const TTab& tab : fPages) {
    fTabs->SetTabLabel(index++, gLLT->Text(tab.titleKey));
    tab.page->Relabel();
    tab.page->ShowValues(fValues);
  }
  fDefaults->SetLabel(accelerator_label("D", gLLT->Text("Button_Defaults")).c_str());
  fRevert->SetLabel(accelerator_label("R", gLLT->Text("Button_Revert")).c_str());
  fClose->SetLabel(accelerator_label("C", gLLT->Text("Button_Close")).c_str());
  ShowError(nullptr); // it is in the previous language
  Fit();
  fView->LayOut();
}

void TVesmoDPrefWin::SettingChanged(const BMessage& message) {
  void* source = nullptr;
  if (message.FindPointer("source", &source) != B_OK) source = nullptr;
  TPrefValues values = fValues;
  for (const TTab& tab : fPages) {
    const auto taken = tab.page->Take(source, &values);
    if (taken == TPrefPage::TTaken::kInvalid) return ReportInvalidSoon();
  }
  ShowError(nullptr);
  Change(values);
  fAppearance->Preview(values);
}

void TVesmoDPrefWin::UseOffset(const BMessage& message) {
  TPrefValues values = fValues;
  if (message.FindInt32("TmDf", &values.timeOffsetMs) == B_OK) SetAll(values);
}

void TVesmoDPrefWin::TakeStampHint(const BMessage& message) {
  int32 latenessMs = 0;
  int32 offsetMs = 0;
  if (message.FindInt32("LateMs", &latenessMs) == B_OK && message.FindInt32("TmDf", &offsetMs) == B_OK)
    fTiming->SetStampHint(latenessMs, offsetMs);
}

void TVesmoDPrefWin::SetAll(const TPrefValues& values) {
  ShowError(nullptr);
  Change(values);
  for (const TTab& tab : fPages) tab.page->ShowValues(fValues);
}

void TVesmoDPrefWin::Change(const TPrefValues& values) {
  for (const BMessage& notice : notices_of_change(fValues, values)) fUnstored.push_back(notice);
  fValues = values;
  SendChanges();
  if (!fUnstored.empty()) StoreSoon();
}

void TVesmoDPrefWin::SendChanges() {
  fSendLater.reset();
  const std::vector<BMessage> notices = notices_of_change(fSent, fValues);
  const auto isSent = [this](const BMessage& notice) { return fManager.SendMessage(&notice, BMessenger(), 0) == B_OK; };
  if (std::all_of(notices.begin(), notices.end(), isSent)) {
    fSent = fValues;
    return;
  }
  // The manager's queue is full. Sending some notices twice is harmless.
  const BMessage again(kMsgPrefSendAgain);
  fSendLater = std::make_unique<BMessageRunner>(BMessenger(this), &again, kSendAgainAfterUs, 1);
}

void TVesmoDPrefWin::StoreSoon() {
  const BMessage store(kMsgPrefStore);
  fStoreLater = std::make_unique<BMessageRunner>(BMessenger(this), &store, kStoreAfterUs, 1);
}

void TVesmoDPrefWin::StoreNow() {
  fStoreLater.reset();
  if (fUnstored.empty()) return;
  if (!store_shared_prefs(fUnstored, fValues)) return ShowError("Pref_Err_Store");
  fUnstored.clear();
}

void TVesmoDPrefWin::ReportInvalidSoon() {
  const BMessage invalid(kMsgPrefInvalid);
  fInvalidLater = std::make_unique<BMessageRunner>(BMessenger(this), &invalid, kInvalidAfterUs, 1);
}

void TVesmoDPrefWin::ShowError(const char* key) {
  fInvalidLater.reset();
  fError->SetText(key ? gLLT->Text(key) : "");
}
