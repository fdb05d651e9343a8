#pragma once

#include "companion/prefs/vesmo_d_pref_win.h"
#include "plugin/kept_record.h"
#include "plugin/message_codes.h"
#include "tests/support/hands.h"
#include "tests/support/messages.h"
#include "tests/support/own_looper.h"
#include "tests/support/plugin_globals.h"
#include "tests/support/testing.h"

/** The preferences window, its messages delivered by the test, with a manager that applies the notices. */
struct PrefWindow : testing::Test, PluginGlobals {
  ~PrefWindow() override {
    if (fWindow && fWindow->Lock()) fWindow->Quit();
    fManager.reset();
  }

  void Open(TClickTrack::TOpen openOutput = {}) {
    fWindow = new TVesmoDPrefWin(TEXTS_FOLDER, BMessenger(fManager.get()), std::move(openOutput));
    fWindow->SetRunsOnShow(false);
    fWindow->Show();
    fWindow->Activate();
    Settle();
  }
  void Settle() { hands::settle(*fWindow); }
  template <typename Condition>
  bool Until(const Condition& holds) {
    return hands::until(*fWindow, holds);
  }
  void Click(const char* view) {
    hands::click(*fWindow, view, {8, 8});
    Settle();
  }
  void Press(const std::string& key) {
    hands::press(*fWindow, key);
    Settle();
  }
  /** Replaces the text of a field. */
  void Type(const char* field, const std::string& text) {
    fWindow->FindView(field)->MakeFocus();
    Settle();
    Press("Ctrl+A");
    for (const char c : text) Press(std::string(1, c));
  }
  enum Tab { kGeneral, kAppearance, kTiming, kFiles, kKeys };
  void SelectTab(Tab index) {
    hands::select_tab(*fWindow, "PrefTabs", index);
    Settle();
  }
  void Post(const BMessage& message) {
    fWindow->PostMessage(&message);
    Settle();
  }
  std::string Label(const char* view) { return hands::label_text(*fWindow, view); }
  /** The notices since the last call, as "code: fields". */
  std::vector<std::string> Notices() {
    fManager->DeliverAll();
    return std::exchange(fManager->fNotices, {});
  }
  /** The settings on disk. */
  static TPrefValues Stored() {
    TPref stored;
    load_record(&stored, "Shared", kFile);
    return *stored.Values();
  }
  /** As another program would. */
  static bool StoreDefaults() {
    TPref defaults;
    return save_record(&defaults, "Shared", kFile);
  }
  static constexpr const char* kFile = "VesmoShared_Prefs.arc";

  struct Manager : BLooper {
    void MessageReceived(BMessage* message) override {
      message->what == kMsgOptions ? gPref->UnarchiveOptions(*message) : gPref->Unarchive(*message);
      std::string notice;
      for (int shift = 24; shift >= 0; shift -= 8) notice += static_cast<char>(message->what >> shift);
      notice += ":";
      for (const std::string& field : message->FieldNames()) notice += " " + field;
      fNotices.push_back(notice);
    }
    std::vector<std::string> fNotices;
  };
  OwnLooper<Manager> fManager{new Manager};
  TVesmoDPrefWin* fWindow = nullptr;
};
