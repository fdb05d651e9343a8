#include "tests/companion/prefs/pref_world.h"

#include "common/koreva.h"
#include "language/llt.h"
#include "platform/interface/tab_view.h"
#include "platform/interface/window.h"
#include "platform/storage/entry.h"
#include "tests/display/hands.h"

#include <utility>

class PrefWindow::Manager : public BLooper {
public:
  void MessageReceived(BMessage* message) override {
    gPref->Unarchive(*message);
    std::string notice;
    for (int shift = 24; shift >= 0; shift -= 8) notice += static_cast<char>(message->what >> shift);
    notice += ":";
    for (const std::string& field : message->FieldNames()) notice += " " + field;
    fNotices.push_back(notice);
  }
  std::vector<std::string> fNotices;
};

PrefWindow::PrefWindow() : fManager(new Manager) {
  setenv("XDG_CONFIG_HOME", fFolder.Path().c_str(), 1);
  gPref = new TPref;
  gLLT = new TLLT;
  gLLT->Load(TEXTS_FOLDER "/English.llt");
}

PrefWindow::~PrefWindow() {
  if (fWindow && fWindow->Lock()) fWindow->Quit();
  fManager->Lock();
  fManager->Quit();
  delete std::exchange(gLLT, nullptr);
  delete std::exchange(gPref, nullptr);
}

void PrefWindow::Open(TClickTrack::TOpen openOutput) {
  fWindow = new TVesmoDPrefWin(TEXTS_FOLDER, BMessenger(fManager), std::move(openOutput));
  fWindow->SetRunsOnShow(false);
  fWindow->Show();
  fWindow->Activate();
  Settle();
}

void PrefWindow::Settle() {
  hands::settle(*fWindow);
}

void PrefWindow::Click(const char* view) {
  hands::click(*fWindow, view, {8, 8});
  Settle();
}

void PrefWindow::Press(const char* key) {
  hands::press(*fWindow, key);
  Settle();
}

void PrefWindow::Type(const char* field, const std::string& text) {
  fWindow->FindView(field)->MakeFocus();
  Settle();
  Press("Ctrl+A");
  for (const char c : text) Press(std::string(1, c).c_str());
}

void PrefWindow::SelectTab(int32 index) {
  static_cast<BTabView*>(fWindow->FindView("PrefTabs"))->Select(index);
  Settle();
}

void PrefWindow::Post(const BMessage& message) {
  fWindow->PostMessage(&message);
  Settle();
}

std::string PrefWindow::Label(const char* view) {
  return hands::label_text(*fWindow, view);
}

std::vector<std::string> PrefWindow::Notices() {
  fManager->DeliverAll();
  return std::exchange(fManager->fNotices, {});
}

TPrefValues PrefWindow::Stored() {
  BEntry entry;
  TPref stored;
  koreva::get_entry("VesmoShared_Prefs.arc", &entry, koreva::kSettingsDir, "Shared");
  stored.Load(entry);
  return *stored.Values();
}
