#pragma once

#include "platform/app/message.h"
#include "plugin/family_comm_man.h"

class BWindow;
class TKRVAboutWin;
class TKRVWin;
class TVesmoDPrefWin;
class TVesmoDWin;

/** From the plug-in: the display was open at the last end, and comes up beside what the user does meanwhile. */
inline constexpr uint32 kMsgReopenMain = 'Srom';

/** The display's manager: owns the windows, opens and closes them on its own thread. Changes of the shared settings,
    which the preferences window sends it, it takes over and hands to the editor's manager, its partner. */
class TVesmoDCommMan : public TFamilyCommMan {
public:
  explicit TVesmoDCommMan(std::string pluginPath);
  /** Closes the windows that are still open and waits for their threads. */
  void Quit() override;
  void MessageReceived(BMessage* message) override;

  /** Returns when everything that was asked so far is done. Any thread but the manager's. */
  void WaitForWindows();

private:
  bool HandleRequest(BMessage* message);
  bool HandleNotice(BMessage* message);
  void OpenMainWindowRqtd(bool takesFocus);
  void CloseMainWindowRqtd();
  void PrepareRqtd(uint32 code);
  void OpenAboutWindowRqtd(const BMessage& message);
  void CloseAboutWindowRqtd();
  void SetAboutWinContent();
  void OpenPrefWindowRqtd(const BMessage& message);
  void ClosePrefWindowRqtd();
  void StampHintCame(const BMessage& message);
  void SettingsChanged(BMessage* message);
  void LanguageChanged(BMessage* message);
  void IAPChanged(const BMessage& message);
  /** To the windows that there are. */
  void Forward(BMessage* message);
  static void BringUp(TKRVWin* window);
  /** Ends the window and waits for its thread. */
  static void End(BWindow* window);

  TVesmoDWin* fMainWindow = nullptr;    // null until asked for; hidden when its user closes it
  TKRVAboutWin* fAboutWindow = nullptr; // the same, as the next
  TVesmoDPrefWin* fPrefWindow = nullptr;
  BMessage fStampHint; // the last one
};
