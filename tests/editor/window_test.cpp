#include "tests/editor/editor_fixture.h"

#include "interapp/inter_app_prefs.h"
#include "language/llt.h"
#include "lyrics/editor_view.h"
#include "platform/app/application.h"
#include "platform/app/message.h"
#include "plugin/exit_state.h"
#include "plugin/message_filters.h"
#include "plugin/pref.h"
#include "window/placement.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::StartsWith;

class EditorWindow : public EditorTest {
protected:
  static BMessage Mode(int32 mode) {
    BMessage message(kMsgMode);
    message.AddInt32("Mode", mode);
    return message;
  }
  std::vector<std::string> MarkedModes() {
    std::vector<std::string> marked;
    for (const hands::MenuLine& line : hands::menu_lines(*fWindow, {"M - Mode"}))
      if (line.isMarked) marked.push_back(line.label);
    return marked;
  }
  void ChooseInView(BMessage message) {
    fWindow->PostMessage(&message, fWindow->FindView("VesmoEditorView"));
    Settle();
  }
};

TEST_F(EditorWindow, BeginsWithANewDocument) {
  EXPECT_EQ(Title(), "New lyrics - Vesmo Editor");
  EXPECT_THAT(Lines(), ElementsAre(""));
  EXPECT_FALSE(IsModified());
  EXPECT_THAT(Status(), StartsWith(" [Tag, extended] UTF-8 <LF>   "));
  EXPECT_THAT(MarkedModes(), ElementsAre("T - Tag input, extended tags"));
}

TEST_F(EditorWindow, FileMenuHasItsItemsLettersAndShortcuts) {
  std::vector<std::string> lines;
  for (const hands::MenuLine& line : hands::menu_lines(*fWindow, {"F - File"}))
    lines.push_back(line.label + "|" + line.shortcut);
  EXPECT_THAT(lines, ElementsAre("N - New|Ctrl+N", "|", "L - Open lyrics of current song|Ctrl+L", "O - Open...|Ctrl+O",
                                 "|", "S - Save|Ctrl+S", "A - Save as...|Ctrl+2", "|", "W - Close|Ctrl+W"));
}

TEST_F(EditorWindow, NewAsksOnlyWhenSomethingWouldBeLost) {
  Open(Write("a.lrc", "[00:01]a\n"));
  Press("Ctrl+N");
  EXPECT_EQ(Title(), "New lyrics - Vesmo Editor");
  Open(PathOf("a.lrc"));
  Change();
  Answer("Y", [&] { Press("Ctrl+N"); });
  EXPECT_EQ(Title(), "New lyrics - Vesmo Editor");
  EXPECT_THAT(Lines(), ElementsAre(""));
  EXPECT_EQ(Read(PathOf("a.lrc")), std::string("a\n\0", 3));
}

TEST_F(EditorWindow, ModeChangeKeepsLinesMarkAndCurrentLine) {
  Open(Write("a.lrc", "a\nb\nc\n"));
  Press("End");
  Change();
  ASSERT_TRUE(hands::choose(*fWindow, {"M - Mode", "D - Tag input, standard tags"}));
  Settle();
  EXPECT_THAT(MarkedModes(), ElementsAre("D - Tag input, standard tags"));
  EXPECT_THAT(Status(), StartsWith(" [Tag, standard]"));
  EXPECT_THAT(Lines(), ElementsAre("a", "b", "c"));
  EXPECT_TRUE(IsModified());
  Press("Delete");
  EXPECT_THAT(Status(), testing::EndsWith("line 3"));
}

TEST_F(EditorWindow, MessagesWithoutTheirFieldsChangeNothing) {
  Open(Write("a.lrc", "a\n"));
  for (const uint32 code :
       {uint32{B_REFS_RECEIVED}, uint32{B_CANCEL}, uint32{kMsgModeChanged}, uint32{'Sssr'}, uint32{'fttr'},
        uint32{'_ipc'}, uint32{'_ahr'}, uint32{'_rhr'}, uint32{kMsgHostWindowMoved}})
    Send(BMessage(code));
  BMessage odd(B_CANCEL);
  odd.AddPointer("source", this);
  Send(odd);
  BMessage mistyped(B_REFS_RECEIVED);
  mistyped.AddString("refs", "/etc/passwd");
  Send(mistyped);
  ChooseInView(BMessage(kMsgMode));
  ChooseInView(Mode(-1));
  ChooseInView(Mode(99));
  EXPECT_THAT(Lines(), ElementsAre("a"));
  EXPECT_EQ(Title(), "a.lrc - Vesmo Editor");
  EXPECT_THAT(MarkedModes(), ElementsAre("T - Tag input, extended tags"));
}

TEST_F(EditorWindow, ClosingTellsTheManagerAndKeepsPlaceAndMode) {
  ChooseInView(Mode(1));
  hands::move_by_hand(*fWindow, 60, 70);
  Settle();
  const BRect frame = fWindow->Frame();
  Press("Ctrl+W");
  EXPECT_TRUE(IsClosed());
  EXPECT_EQ(fManager->CountMessages(), 1);
  EXPECT_EQ(gExitState->fMode, 1);
  EXPECT_EQ(gExitState->fWindowFrame, frame);
}

TEST_F(EditorWindow, NewFormatOfTheLettersRebuildsTheMenus) {
  ChooseInView(Mode(1));
  gIAP->SetString("AccKeyFormat", "(a) ");
  BMessage notice(kMsgIAPChanged);
  notice.AddString("IAP:SrcIAPItem", "AccKeyFormat");
  Send(notice);
  EXPECT_EQ(hands::menu_lines(*fWindow, {"(F) File"}).front().label, "(N) New");
  EXPECT_TRUE(hands::menu_lines(*fWindow, {"(M) Mode"}).at(1).isMarked);
}

TEST_F(EditorWindow, StaysOnTopWhenTheSettingsSaySo) {
  TPrefValues settings = *gPref->Values();
  settings.stayOnTop = true;
  gPref->SetValues(settings);
  Send(BMessage('Spsc'));
  EXPECT_TRUE(hands::is_on_top(*fWindow));
}

/** With the player's window already on the screen when the editor's opens. */
class Following : public testing::Test {
protected:
  struct HostWindow : BWindow {
    HostWindow() : BWindow({100, 100, 299, 199}, "Sonivo - Song") { SetRunsOnShow(false); }
  };
  Following() : fApp(new BApplication("application/x-vnd.test-editor")), fHost(new HostWindow), fManager(new BLooper) {
    fHost->Show();
    hands::settle(*fHost);
    fEditor = new TVesmoEWin({320, 100, 719, 399}, fManager);
    fEditor->SetRunsOnShow(false);
    fEditor->Show();
    Settle();
  }
  ~Following() override {
    for (BLooper* looper :
         {static_cast<BLooper*>(fEditor), static_cast<BLooper*>(fHost), fManager, static_cast<BLooper*>(fApp)})
      if (looper && looper->Lock()) looper->Quit();
  }
  void Settle() {
    hands::settle(*fHost);
    if (fEditor) hands::settle(*fEditor);
  }
  EditorGlobals fGlobals;
  BApplication* fApp;
  HostWindow* fHost;
  BLooper* fManager;
  TVesmoEWin* fEditor;
};

TEST_F(Following, EditorKeepsItsPlaceBesideThePlayer) {
  const BPoint apart = fEditor->Frame().LeftTop() - fHost->Frame().LeftTop();
  for (const int x : {150, 40}) {
    hands::move_by_hand(*fHost, x, 130);
    Settle();
    EXPECT_EQ(fEditor->Frame().LeftTop() - fHost->Frame().LeftTop(), apart);
  }
}

TEST_F(Following, PlayerGoesOnWhenTheEditorIsGone) {
  fEditor->Lock();
  fEditor->Quit();
  fEditor = nullptr;
  hands::move_by_hand(*fHost, 150, 130);
  Settle();
  EXPECT_EQ(fHost->Frame().LeftTop(), (BPoint{150, 130}));
}

TEST(FrameBeside, RightElseLeftElseOverItAndAlwaysOnTheScreen) {
  const BRect screen{0, 0, 1279, 799};
  struct {
    const char* name;
    BRect neighbour;
    float left, top;
  } const rows[] = {
      {"room to the right", {10, 20, 409, 219}, 417, 20},
      {"room to the left only", {800, 20, 1199, 219}, 232, 20},
      {"no room on either side", {300, 20, 999, 219}, 300, 20},
      {"too low", {10, 700, 409, 790}, 417, 399},
      {"half off the screen", {-500, -50, -101, 100}, 0, 0},
  };
  for (const auto& row : rows) {
    const BRect frame = frame_beside(row.neighbour, 560, 400, screen);
    EXPECT_EQ(frame, (BRect{row.left, row.top, row.left + 560, row.top + 400})) << row.name;
  }
}
