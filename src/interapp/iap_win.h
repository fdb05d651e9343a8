#pragma once

#include "interapp/iap_control.h"
#include "interapp/iap_port_manager.h"
#include "toolkit/krv_dlg_win.h"

#include <map>
#include <memory>

class BControl;
class BMenuField;
class TKRVDlgView;
class TSimpleInputWin;

/** "KOREVA Common Preferences": the controls of the preferences shared by the family's applications. One per system,
    since its port has a unique name. Deletes itself when closed. */
class TIAPWin : public TKRVDlgWin {
public:
  TIAPWin();
  ~TIAPWin() override;

  void MessageReceived(BMessage* message) override;
  bool QuitRequested() override { return true; }
  void Quit() override;

  /** 0 until the port exists, TIAPPortManager::kNoPort if it cannot be created. Thread-safe. */
  port_id Port() const { return fPortManager.Port(); }

private:
  struct TEntry {
    TIAPControl control; // current value
    TIAPControl opened;  // value when the window was opened
    std::vector<std::string> apps;
    BControl* view = nullptr;
  };

  void AddControls(const BMessage& message);
  void AddControl(const TIAPControl& control);
  BControl* MakeView(const TIAPControl& control);
  void ControlChanged(const BMessage& message);
  void TextTyped(const BMessage& message);
  void SetValue(TEntry* entry, const TIAPControl& value);
  void ShowValue(TEntry* entry);
  void Notify(const TEntry& entry) const;
  void AskForText(const std::string& item);
  void SetAllToDefault();
  void BringBackAll();
  TEntry* Find(const BMessage& message);

  TKRVDlgView* fView; // the main child
  std::map<std::string, TEntry> fEntries;
  TSimpleInputWin* fInput = nullptr; // created lazily; quit with this window
  thread_id fInputThread = -1;
  TIAPPortManager fPortManager;
};
