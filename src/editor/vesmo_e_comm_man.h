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

/** The editor's manager: owns the windows, opens and closes them on its own thread, and routes every request. */
class TVesmoECommMan : public TFamilyCommMan {
public:
  TVesmoECommMan();
  /** Closes the windows that are still open and waits for their threads. */
  void Quit() override;
  void MessageReceived(BMessage* message) override;

  void OpenMainWindowRqtd();
  void OpenMainWindow();
  void RefsReceived(BMessage* message);
  void PrepareOpenAboutWindowRqtd();
  void PrepareOpenPrefWindowRqtd();
  void MItemFineTimeTagClicked();
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
  /** In front of the main window where there is one. */
  void BringUp(TKRVWin* window) const override;

private:
  bool HandleRequest(BMessage* message);
  bool HandleNotice(BMessage* message);
  /** False when there is no main window, it is ending, or it cannot be locked within that time. */
  bool LockMainWindow(bigtime_t timeout) const;
  /** False when there is no main window that will stay: one that holds its lock for longer asks its user something. */
  bool ActivateMainWindow() const;
  void ReopenFiles(int32 taken);
  void WaitForWindowThreads();

  TEditorName fEditorName{BMessenger(this)};
  TVesmoEWin* fMainWindow = nullptr; // null while closed; used only with the window locked by its address
  BMessenger fMainAddress;
  BWindowProxy fMainProxy;         // for what must not wait for its lock
  std::deque<BMessage> fLastFiles; // handed to the main window to open, the newest last
  int32 fFilesSent = 0;            // to this main window
  /** Of every main window shown: a window that was closed by its user is forgotten before its thread has ended. */
  std::vector<thread_id> fWindowThreads;
  TSimpleInputWin* fFineTagWindow = nullptr; // null until asked for
  const bigtime_t fMadeUs = system_time();
  std::unique_ptr<BMessageRunner> fPrefWish; // while it waits for the companion
};
