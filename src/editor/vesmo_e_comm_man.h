#pragma once

#include "editor/editor_name.h"
#include "family/family_comm_man.h"
#include "platform/app/message.h"
#include "platform/app/message_runner.h"
#include "platform/interface/window.h"
#include "platform/kernel/threads.h"

#include <deque>
#include <memory>
#include <vector>

class TSimpleInputWin;
class TVesmoEWin;

/** The editor's manager: owns the windows, opens and closes them on its own thread, and dispatches all requests. */
class TVesmoECommMan : public TFamilyCommMan {
public:
  TVesmoECommMan();
  /** Closes the open windows and joins their threads. */
  void Quit() override;
  void MessageReceived(BMessage* message) override;

  void OpenMainWindowRqtd();
  void OpenMainWindow();
  void RefsReceived(BMessage* message);
  void PrepareOpenAboutWindowRqtd();
  void PrepareOpenPrefWindowRqtd();
  void MItemFineTimeTagClicked(const BMessage& message);
  void SetFineTagWinLabel();
  void LanguageChanged(const BMessage& message) override;
  void IAPChanged(const BMessage& message) override;
  void MItemKOREVACommonPrefClicked();
  void MItemHelpClicked();
  void MainWindowClosed(const BMessage& message);
  void CloseMainWindowRqtd();
  void CloseFineTimeTagWindowRqtd();
  void CloseKOREVACommonPrefWindowRqtd();

protected:
  void Forward(BMessage* message) override;
  bool FindMainWindowFrame(BRect* frame) const override;
  // vesmo_e_dialogs.cpp
  TKRVAboutWin* MakeAboutWindow() const override;
  /** In front of the main window, if there is one. */
  void OfferSongLyrics(BMessage* offer);
  void BringUp(TKRVWin* window) const override;

private:
  bool HandleRequest(BMessage* message);
  bool HandleNotice(BMessage* message);
  /** False if there is no main window, it is quitting, or it cannot be locked within that time. */
  bool LockMainWindow(bigtime_t timeout) const;
  /** False if there is no main window or it is quitting. A window that keeps its lock is waiting for its user, and is
      activated without it. */
  bool ActivateMainWindow() const;
  void ReopenFiles(int32 taken);
  void WaitForWindowThreads();

  TEditorName fEditorName{BMessenger(this)};
  TVesmoEWin* fMainWindow = nullptr; // null while closed; only used while locked through fMainAddress
  BMessenger fMainAddress;
  BWindowProxy fMainProxy;         // for calls that must not wait for its lock
  std::deque<BMessage> fLastFiles; // latest files sent to the main window, oldest first
  int32 fFilesSent = 0;            // to the current main window
  /** Of all main windows, since a window closed by its user is forgotten before its thread ends. */
  std::vector<thread_id> fWindowThreads;
  TSimpleInputWin* fFineTagWindow = nullptr; // created lazily
  BMessage fShift;                           // for which it was last opened: with the lines, if not all
  const bigtime_t fMadeUs = system_time();
  std::unique_ptr<BMessageRunner> fPrefRetry; // while the companion is not loaded yet
};
