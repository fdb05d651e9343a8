#include "tests/support/editor_fixture.h"

#include "editviews/free_edit_view.h"
#include "editviews/tag_input_view.h"

namespace {

constexpr BRect kFrame{20, 20, 579, 419};
/** A beat between the messages that a test delivers would only blur what it sees. */
constexpr bigtime_t kNoPolling = 3600000000;

} // namespace

class EditorByHand::HandDrivenWindow : public TVesmoEWin {
public:
  HandDrivenWindow(BLooper* manager, std::atomic<bool>* closed) : TVesmoEWin(kFrame, manager), fClosed(closed) {
    SetRunsOnShow(false);
  }
  ~HandDrivenWindow() override { *fClosed = true; }

private:
  std::atomic<bool>* fClosed;
};

EditorByHand::EditorByHand() : fManager(new Keeping<BLooper>("manager")) {
  gExitState->fPanelFolder = fFolder.Path();
  gIAP->SetString("AccKeyFormat", "a - ");
  SetPref([](TPrefValues* values) { values->pollIntervalUs = kNoPolling; });
  fWindow = new HandDrivenWindow(fManager, &fClosed);
  fWindow->Show();
  Settle();
}

EditorByHand::~EditorByHand() {
  if (!fClosed && fWindow->Lock()) fWindow->Quit();
  if (fManager->Lock()) fManager->Quit();
  hands::wait_for_display();
}

void EditorByHand::Settle() {
  for (int quiet = 0; quiet < 3; ++quiet) {
    hands::wait_for_display();
    if (fClosed) return;
    if (fWindow->DeliverAll() > 0) quiet = -1;
  }
}

void EditorByHand::Send(BMessage message) {
  fWindow->PostMessage(&message);
  Settle();
}

void EditorByHand::SendToView(BMessage message) {
  fWindow->PostMessage(&message, fWindow->FindView("VesmoEditorView"));
  Settle();
}

void EditorByHand::Shift(const char* amountMs) {
  Send(message_of(kMsgShiftTags, "_SmplIptData", amountMs));
}

void EditorByHand::PressCloseButton() {
  hands::press_close_button(*fWindow);
  Settle();
}

void EditorByHand::Open(const std::string& path) {
  Send(message_of(B_REFS_RECEIVED, "refs", ref_of(path)));
}

void EditorByHand::PlayAt(int32 positionMs, const std::string& title) {
  EditorWorld::PlayAt(positionMs, title, [this] { SendToView(BMessage(kMsgRefreshInfo)); });
}

void EditorByHand::Press(const std::string& key) {
  hands::press(*fWindow, key);
  Settle();
}

void EditorByHand::Click(const char* view) {
  hands::click(*fWindow, view, {8, 8});
  Settle();
}

void EditorByHand::Show(const std::string& lyrics, int32 selected) {
  Open(fFolder.Write("a.lrc", lyrics));
  EditView().SetCurLine(selected);
  Settle();
}

bool EditorByHand::WasTold(const StrangeHost::Command& command) {
  return Until([&] { return !fHost->Commands().empty() && fHost->Commands().back() == command; });
}

std::string EditorByHand::Notice() const {
  return fWindow->FindView("NoticeBar")->IsHidden() ? std::string() : hands::label_text(*fWindow, "NoticeText");
}

std::vector<hands::Question> EditorByHand::Answer(const std::vector<std::string>& keys,
                                                  const std::function<void()>& act) {
  auto asked = std::async(std::launch::async, [&] {
    std::vector<hands::Question> questions;
    for (const std::string& key : keys) {
      hands::Question next = hands::wait_for_question();
      // An answered question goes when its button comes up again.
      while (!questions.empty() && next.text == questions.back().text) next = hands::wait_for_question();
      questions.push_back(next);
      hands::answer_with_key(key);
    }
    return questions;
  });
  act();
  return asked.get();
}

bool EditorByHand::Until(const std::function<bool()>& isSo) {
  return hands::until([&] {
    if (!fClosed) fWindow->DeliverAll();
    return isSo();
  });
}

TEditViewInterface& EditorByHand::EditView() const {
  if (auto* const tagInput = fWindow->FindView("TagInputView")) return *static_cast<TTagInputView*>(tagInput);
  return *static_cast<TFreeEditView*>(fWindow->FindView("FreeEditView"));
}

std::list<std::string> EditorByHand::Lines() const {
  std::list<std::string> lines;
  EditView().GetLines(&lines);
  return lines;
}

bool EditorByHand::IsModified() const {
  return EditView().IsModified();
}
