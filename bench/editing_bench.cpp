/** What a user waits for in a long document, in the real editor window beside a player that answers at once: a key of
   the tag input mode, a switch of the mode, undoing a command over every line. Beside them what the toolkit's own plain
   text control takes to show the same text. Prints milliseconds, medians and worst. */

#include "document/editor_view.h"
#include "interapp/inter_app_prefs.h"
#include "language/builtin_texts.h"
#include "language/llt.h"
#include "platform/app/message.h"
#include "platform/display/display.h"
#include "platform/display/display_thread.h"
#include "platform/kernel/threads.h"
#include "plugin/exit_state.h"
#include "plugin/message_codes.h"
#include "plugin/pref.h"
#include "tests/hostlink/strange_host.h"
#include "window/editor_window.h"

#include <QApplication>
#include <QPlainTextEdit>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <thread>
#include <vector>

namespace {

constexpr int kLines = 100000;
constexpr int kRounds = 21;
/** The wait that a stamp makes on purpose. */
constexpr double kStampWaitMs = 20;

void make_world() {
  gExitState = new TExitState;
  gExitState->fWindowFrame = {50, 50, 549, 349};
  gIAP = new TInterAppPrefs;
  gIAP->AddItem(new TIAPItemAccKeyFormat);
  gIAP->AddItem(new TIAPItemFlatToolBar);
  gPref = new TPref;
  gLLT = new TLLT;
  const BResources resources = builtin_resources();
  gLLT->Load(&resources, kBuiltinTextsId);
}

std::string write_document(const std::string& folder) {
  const std::string path = folder + "/long.lrc";
  std::ofstream file(path);
  for (int i = 0; i < kLines; ++i) file << "[00:10:00]This is line " << i << ", sung to the end of it\n";
  return path;
}

/** The window handles its messages one after the other: an answer says that all before it is done. */
void wait_for(const BMessenger& window) {
  const BMessage question('rest');
  BMessage answer;
  window.SendMessage(&question, &answer);
}

double milliseconds_of(auto work) {
  const bigtime_t start = system_time();
  work();
  return static_cast<double>(system_time() - start) / 1000;
}

struct Times {
  std::vector<double> values;
  void Print(const char* what, double reference) {
    std::sort(values.begin(), values.end());
    const double median = values[values.size() / 2];
    std::printf("%-52s %9.2f %9.2f", what, median, values.back());
    if (reference > 0) std::printf(" %8.2fx", median / reference);
    std::printf("\n");
  }
};

class Measurement {
public:
  explicit Measurement(const std::string& path) : fManager(new BLooper("manager")) {
    auto* const window = new TVesmoEWin(gExitState->fWindowFrame, fManager);
    fWindow = BMessenger(window);
    fView = BMessenger(window->FindView("VesmoEditorView"));
    fList = BMessenger(window->FindView("TagInputView"));
    window->Show();
    BMessage open(B_REFS_RECEIVED);
    entry_ref ref;
    get_ref_for_path(path.c_str(), &ref);
    open.AddRef("refs", &ref);
    fWindow.SendMessage(&open);
    wait_for(fWindow);
  }
  ~Measurement() {
    if (fWindow.LockTarget()) {
      BLooper* window = nullptr;
      fWindow.Target(&window);
      window->Quit();
    }
    if (fManager->Lock()) fManager->Quit();
  }

  double Key(char key) {
    BMessage press(B_KEY_DOWN);
    press.AddString("bytes", std::string(1, key));
    return milliseconds_of([&] {
      fList.SendMessage(&press);
      wait_for(fWindow);
    });
  }
  /** Until the text is on the display. */
  double Command(BMessage command) {
    return milliseconds_of([&] {
      fView.SendMessage(&command);
      wait_for(fWindow);
      display::call([] { return 0; });
    });
  }
  double Mode(int32 mode) {
    BMessage go(kMsgMode);
    go.AddInt32("Mode", mode);
    return Command(go);
  }
  double Shift() {
    BMessage shift(kMsgShiftTags);
    shift.AddString("_SmplIptData", "10");
    return Command(shift);
  }

private:
  BLooper* fManager;
  BMessenger fWindow;
  BMessenger fView;
  BMessenger fList;
};

/** The toolkit's own: the text set and shown in a plain text control of the same size. */
double toolkit_shows(const QString& text) {
  return display::call([&text] {
    QPlainTextEdit control;
    control.resize(500, 300);
    control.show();
    QApplication::processEvents();
    return milliseconds_of([&] {
      control.setPlainText(text);
      control.repaint();
    });
  });
}

void measure(const std::string& folder) {
  const std::string path = write_document(folder);
  std::ifstream file(path);
  const QString text = QString::fromStdString({std::istreambuf_iterator<char>(file), {}});
  Measurement editor(path);
  Times space, nudge, toFree, toTags, shift, undo, toolkit;
  for (int i = 0; i < kRounds; ++i) {
    toolkit.values.push_back(toolkit_shows(text));
    space.values.push_back(editor.Key(B_SPACE) - kStampWaitMs);
    nudge.values.push_back(editor.Key('+'));
    toFree.values.push_back(editor.Mode(2));
    toTags.values.push_back(editor.Mode(0));
    shift.values.push_back(editor.Shift());
    undo.values.push_back(editor.Command(BMessage(kMsgUndo)));
  }
  const double reference = (std::sort(toolkit.values.begin(), toolkit.values.end()), toolkit.values[kRounds / 2]);
  std::printf("%-52s %9s %9s\n", "100 000 lines, ms", "median", "worst");
  toolkit.Print("plain text control of the toolkit: text shown", 0);
  space.Print("space bar, without its wait of 20 ms", 0);
  nudge.Print("plus key", 0);
  toFree.Print("tag input to free edit, beside the control", reference);
  toTags.Print("free edit to tag input, beside the control", reference);
  shift.Print("shift of all tags, beside the control", reference);
  undo.Print("undo of it, beside the control", reference);
}

} // namespace

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  char folder[] = "/tmp/editing_benchXXXXXX";
  if (mkdtemp(folder) == nullptr) return 1;
  setenv("XDG_CONFIG_HOME", folder, 1);
  setenv("XDG_STATE_HOME", folder, 1);
  std::thread work;
  const int exitCode = display::run(argc, argv, [&] {
    work = std::thread([&] {
      make_world();
      auto* const host = new StrangeHost;
      host->Run();
      measure(folder);
      if (host->Lock()) host->Quit();
      display::quit();
    });
  });
  work.join();
  return exitCode;
}
