#pragma once

#include "companion/prefs/click_track.h"
#include "companion/prefs/pref_page.h"
#include "platform/app/message_runner.h"
#include "toolkit/krv_dlg_win.h"

#include <memory>
#include <string>
#include <vector>

class BButton;
class BStringView;
class BTabView;
class TAppearancePage;
class TKRVDlgView;
class TTimingPage;

/** The preferences of both plug-ins. Changes are sent to the manager at once, in notices that both plug-ins apply, and
    saved a moment later (debounced). Closing hides the window; the owner calls Quit.
    Also handles '_lgc' (language changed), '_ipc' (accelerator format changed) and 'Srth' (stamp-latency hint). */
class TVesmoDPrefWin : public TKRVDlgWin {
public:
  TVesmoDPrefWin(const std::string& languageFolder, const BMessenger& manager,
                 TClickTrack::TOpen openOutput = open_click_output);
  ~TVesmoDPrefWin() override;

  void Show() override;
  void PutAway() override;
  void Quit() override;
  void MessageReceived(BMessage* message) override;

private:
  void Relabel();
  void SettingChanged(const BMessage& message);
  void UseOffset(const BMessage& message);
  void TakeStampHint(const BMessage& message);
  void SetAll(const TPrefValues& values);
  /** Sends and saves what differs from the current values. */
  void Change(const TPrefValues& values);
  /** Sends the manager the changes since fSent; retried later if its queue is full. */
  void SendChanges();
  void StoreSoon();
  void StoreNow();
  void ReportInvalidSoon();
  /** Shows the text in the error line; null clears it. */
  void ShowError(const char* key);

  struct TTab {
    TPrefPage* page;
    const char* titleKey;
  };

  const BMessenger fManager;
  TPrefValues fValues;
  TPrefValues fSent;   // what the manager has
  TPrefValues fOpened; // when the window was opened
  std::vector<BMessage> fUnstored;
  std::unique_ptr<BMessageRunner> fStoreLater;
  std::unique_ptr<BMessageRunner> fSendLater;    // while a retry is pending
  std::unique_ptr<BMessageRunner> fInvalidLater; // while an invalid text may still become valid
  TAppearancePage* fAppearance;                  // also in fPages
  TTimingPage* fTiming;                          // also in fPages
  const std::vector<TTab> fPages;                // in tab order
  BTabView* fTabs;
  BStringView* fError;
  BButton* fDefaults;
  BButton* fRevert;
  BButton* fClose;
  TKRVDlgView* fView; // the main child
};
