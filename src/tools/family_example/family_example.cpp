/** A minimal application of the family: it has the two common preferences, opens the common window, and shows changes
    at once, whichever application's window they are made in. */

#include "interapp/iap_win.h"
#include "interapp/inter_app_prefs.h"
#include "platform/app/application.h"
#include "platform/app/message.h"
#include "platform/display/display.h"
#include "platform/interface/button.h"
#include "platform/interface/string_view.h"
#include "platform/kernel/threads.h"
#include "plugin/message_codes.h"
#include "toolkit/krv_dlg_view.h"
#include "toolkit/krv_dlg_win.h"

#include <cstdio>
#include <cstring>

namespace {

constexpr const char* kSignature = "application/x-vnd.KOREVA-FamilyExample";

enum : uint32 {
  kMsgStart = 'star',
  kMsgShowCommon = 'show', // from the button
  kMsgShowValues = 'vals', // to the window: string "label", bool "flat"
};

/** Shows the values; the button sends its request to the application. */
class ExampleWindow : public TKRVDlgWin {
public:
  ExampleWindow() : TKRVDlgWin("Family Example") {
    KeepWhenClosed(false);
    auto* const view = new TKRVDlgView("Example");
    view->AddRow({fLetter});
    view->AddRow({fBar});
    auto* const preferences = new BButton({}, "Preferences", "Common Preferences...", new BMessage(kMsgShowCommon));
    preferences->SetTarget(be_app);
    view->AddButtons({preferences});
    AddMainChild(view);
    MoveTo(80, 520);
    Fit();
  }
  void MessageReceived(BMessage* message) override {
    if (message->what != kMsgShowValues) return TKRVDlgWin::MessageReceived(message);
    std::string label;
    bool isFlat = false;
    if (message->FindString("label", &label) != B_OK || message->FindBool("flat", &isFlat) != B_OK) return;
    fLetter->SetText(("Labels look like this: " + label).c_str());
    fBar->SetText(isFlat ? "Tool bars are flat." : "Tool bars are raised.");
    Fit();
  }
  void Quit() override {
    be_app->PostMessage(B_QUIT_REQUESTED);
    TKRVDlgWin::Quit();
  }

private:
  BStringView* const fLetter = new BStringView({}, "Letter", "Labels look like this: Open");
  BStringView* const fBar = new BStringView({}, "Bar", "Tool bars are raised.");
};

class Example : public BApplication {
public:
  explicit Example(bool prints, bool opens)
      : BApplication(kSignature, {kMsgIAPChanged}), fPrints(prints), fOpens(opens) {
    gIAP = &fPrefs;
    fPrefs.SetAppSignatureRef(kSignature);
    fPrefs.AddItem(new TIAPItemAccKeyFormat);
    fPrefs.AddItem(new TIAPItemFlatToolBar);
  }

  void MessageReceived(BMessage* message) override {
    switch (message->what) {
    case kMsgStart:
      return Start();
    case kMsgShowCommon:
      fPrefs.ShowWindow({120, 560, 420, 700});
      return;
    case kMsgIAPChanged:
      // All that an application of the family has to do: apply the value and show it.
      if (fPrefs.SetValue(*message) == B_OK) ShowValues();
      return;
    default:
      BApplication::MessageReceived(message);
    }
  }

  void Quit() override {
    fPrefs.EndWindow();
    gIAP = nullptr;
    display::quit();
    BApplication::Quit();
  }

private:
  void Start() {
    auto* const window = new ExampleWindow;
    fWindow = BMessenger(window);
    window->Show();
    ShowValues();
    if (fOpens) PostMessage(kMsgShowCommon);
  }
  void ShowValues() {
    bool isFlat = false;
    fPrefs.GetBool("FlatToolBar", &isFlat);
    BMessage values(kMsgShowValues);
    values.AddString("label", accelerator_label("O", "Open"));
    values.AddBool("flat", isFlat);
    fWindow.SendMessage(&values);
    if (!fPrints) return;
    std::printf("%s|%s\n", accelerator_label("O", "Open").c_str(), isFlat ? "flat" : "raised");
    std::fflush(stdout);
  }

  TInterAppPrefs fPrefs;
  BMessenger fWindow;
  const bool fPrints;
  const bool fOpens;
};

} // namespace

int main(int argc, char** argv) {
  bool prints = false;
  bool opens = false;
  for (int i = 1; i < argc; ++i) {
    prints |= std::strcmp(argv[i], "--print") == 0;
    opens |= std::strcmp(argv[i], "--open") == 0;
  }
  auto* const app = new Example(prints, opens);
  const thread_id thread = app->Run();
  const int exitCode = display::run(argc, argv, [] { be_app->PostMessage(kMsgStart); });
  if (exitCode != 0 && be_app) be_app->PostMessage(B_QUIT_REQUESTED);
  wait_for_thread(thread, nullptr);
  return exitCode;
}
