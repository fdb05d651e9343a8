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

/** The preferences of both plug-ins, on pages. What the user sets is told to the manager at once, in notices that the
    plug-ins take over, and stored a moment later. Closing hides it; who owns it ends it.
    The window also heeds '_lgc' and '_ipc', the texts or the letters before them are others now, and 'Srth', what the
    editor has found about the user's stamps. */
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
  /** Sends and stores what differs from the current values. */
  void Change(const TPrefValues& values);
  /** Sends the manager what it has not been sent yet; tried again later when its queue is full. */
  void SendChanges();
  void StoreSoon();
  void StoreNow();
  void SayUnfitSoon();
  /** In the line for faults; nothing for null. */
  void Say(const char* key);

  struct TTab {
    TPrefPage* page;
    const char* titleKey;
  };

  const BMessenger fManager;
  TPrefValues fValues;
  TPrefValues fSent;   // what the manager knows
  TPrefValues fOpened; // as the window was opened
  std::vector<BMessage> fUnstored;
  std::unique_ptr<BMessageRunner> fStoreLater;
  std::unique_ptr<BMessageRunner> fSendLater;  // while the manager lacks something
  std::unique_ptr<BMessageRunner> fUnfitLater; // while a text that does not fit may still be on its way to one
  TAppearancePage* fAppearance;                // two of the pages
  TTimingPage* fTiming;
  const std::vector<TTab> fPages; // in the order of their tabs
  BTabView* fTabs;
  BStringView* fFault;
  BButton* fDefaults;
  BButton* fRevert;
  BButton* fClose;
  TKRVDlgView* fView; // the main child
};
