#include "platform/interface/file_panel.h"

#include "platform/app/message.h"
#include "platform/interface/menu_bar.h"
#include "platform/interface/panel_peer.h"
#include "platform/interface/view_peer.h"
#include "platform/interface/window.h"

#include <atomic>
#include <cassert>
#include <typeinfo>
#include <utility>

/** The panel's looper; its lock guards fTarget and fMessage. */
class BFilePanel::PanelWindow : public BWindow {
public:
  PanelWindow(BFilePanel* panel, bool allowMultiple)
      : BWindow(kFrame, "",
                [panel, allowMultiple](const BMessenger& window) {
                  const display::WindowSetup setup{kFrame, {}, B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, 0};
                  return std::make_shared<display::PanelPeer>(window, setup, panel->fMode, allowMultiple);
                }),
        fMessage(panel->fMode == B_SAVE_PANEL ? B_SAVE_REQUESTED : B_REFS_RECEIVED), fPanel(panel) {
    KeepWhenClosed();
    AddChild(new BMenuBar({0, 0, kFrame.right, 0}, "MenuBar"));
  }

  display::PanelPeer* Dialog() const { return static_cast<display::PanelPeer*>(Peer()); }

  /** The close button of the frame cancels. */
  void PutAway() override { Dialog()->Cancel(); }

  void MessageReceived(BMessage* message) override {
    switch (message->what) {
    case display::DISPLAY_FILES_CHOSEN:
      return Answer(*message);
    case display::DISPLAY_PANEL_CLOSED:
      return Closed();
    default:
      return BWindow::MessageReceived(message);
    }
  }

  BMessenger fTarget;
  BMessage fMessage;
  std::atomic<bool> fIsShowing{false};

private:
  static constexpr BRect kFrame{0, 0, 639, 439};

  void Answer(const BMessage& chosen) {
    BMessage answer(fMessage);
    std::string path;
    for (int32 i = 0; chosen.FindString("path", i, &path) == B_OK; ++i) {
      entry_ref file;
      if (get_ref_for_path(path.c_str(), &file) == B_OK) AddFile(answer, file);
    }
    const BMessenger target = fTarget;
    fPanel->SendMessage(&target, &answer);
  }

  void AddFile(BMessage& answer, const entry_ref& file) const {
    if (fPanel->fMode == B_OPEN_PANEL) {
      answer.AddRef("refs", &file);
      return;
    }
    entry_ref folder;
    if (get_ref_for_path(file.directory.c_str(), &folder) != B_OK) return;
    answer.AddRef("directory", &folder);
    answer.AddString("name", file.name);
  }

  void Closed() {
    fIsShowing = false;
    BMessage closed(B_CANCEL);
    closed.AddPointer("source", fPanel);
    fTarget.SendMessage(&closed, BMessenger(), 0);
  }

  BFilePanel* fPanel;
};

BFilePanel::BFilePanel(file_panel_mode mode, const BMessenger* target, const entry_ref* directory, bool allowMultiple,
                       const BMessage* message)
    : fMode(mode), fWindow(new PanelWindow(this, allowMultiple)) {
  if (target) fWindow->fTarget = *target;
  if (message) fWindow->fMessage = *message;
  if (directory) SetPanelDirectory(directory);
  fWindow->Run();
}

BFilePanel::~BFilePanel() {
  assert(fEnded || !fHasHook); // a derived class must call End in its own destructor
  End();
}

void BFilePanel::End() {
  if (!std::exchange(fEnded, true) && fWindow->Lock()) fWindow->Quit();
}

BWindow* BFilePanel::Window() const {
  return fWindow;
}

void BFilePanel::Show() {
  fHasHook = typeid(*this) != typeid(BFilePanel);
  fWindow->fIsShowing = true;
  fWindow->Dialog()->Show(true);
}

bool BFilePanel::IsShowing() const {
  return fWindow->fIsShowing;
}

void BFilePanel::SetMessage(const BMessage* message) {
  if (!fWindow->Lock()) return;
  fWindow->fMessage = *message;
  fWindow->Unlock();
}

void BFilePanel::SetPanelDirectory(const entry_ref* directory) {
  SetPanelDirectory(directory->FullPath().c_str());
}

void BFilePanel::SetPanelDirectory(const char* path) {
  fWindow->Dialog()->SetDirectory(path);
}

void BFilePanel::SetPlaces(const std::vector<std::string>& folders) {
  fWindow->Dialog()->SetPlaces(folders);
}

void BFilePanel::GetPanelDirectory(entry_ref* directory) const {
  const std::string path = fWindow->Dialog()->Directory();
  if (!path.empty()) get_ref_for_path(path.c_str(), directory);
}

void BFilePanel::SetSaveText(const char* name) {
  fWindow->Dialog()->SetSaveText(name);
}

void BFilePanel::SetButtonLabel(file_panel_button button, const char* label) {
  fWindow->Dialog()->SetButtonLabel(button, label);
}

void BFilePanel::SetTitle(const char* title) {
  fWindow->Dialog()->SetTitle(title);
}

void BFilePanel::SendMessage(const BMessenger* target, BMessage* message) {
  target->SendMessage(message, BMessenger(), 0);
}
