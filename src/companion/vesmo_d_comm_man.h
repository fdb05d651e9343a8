#pragma once

#include "family/family_comm_man.h"
#include "platform/app/message.h"

class TVesmoDPrefWin;
class TLyricsWindow;

/** The companion's manager: owns its windows and opens and closes them on its own thread. Applies the settings changes
    sent by the preferences window and forwards them to the editor's manager, its partner. */
class TVesmoDCommMan : public TFamilyCommMan {
public:
  explicit TVesmoDCommMan(std::string pluginPath);
  /** Closes the windows that are still open and waits for their threads. */
  void Quit() override;
  void MessageReceived(BMessage* message) override;
  void LanguageChanged(const BMessage& message) override;
  void IAPChanged(const BMessage& message) override;

protected:
  void Forward(BMessage* message) override;
  bool FindMainWindowFrame(BRect* frame) const override;
  TKRVAboutWin* MakeAboutWindow() const override;
  void BringUp(TKRVWin* window) const override;

private:
  bool HandleRequest(BMessage* message);
  bool HandleNotice(BMessage* message);
  void OpenMainWindowRqtd(bool takesFocus);
  void CloseMainWindowRqtd();
  void PrepareRqtd(uint32 code);
  void OpenPrefWindowRqtd(const BMessage& message);
  void ClosePrefWindowRqtd();
  void StampHintCame(const BMessage& message);
  void SettingsChanged(BMessage* message);
  void KeysChanged();

  TLyricsWindow* fMainWindow = nullptr;  // null until first opened; hidden when closed
  TVesmoDPrefWin* fPrefWindow = nullptr; // likewise
  BMessage fStampHint;                   // the last one
};
