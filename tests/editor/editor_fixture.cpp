#include "tests/editor/editor_fixture.h"

#include "editviews/tag_input_view.h"
#include "interapp/inter_app_prefs.h"
#include "language/llt.h"
#include "language/load_language.h"
#include "platform/app/message.h"
#include "platform/app/roster.h"
#include "plugin/exit_state.h"
#include "plugin/host_protocol.h"
#include "plugin/pref.h"

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>
#include <utility>

namespace {

constexpr BRect kFrame{20, 20, 579, 419};
/** The tests deliver every message themselves; a beat in between would only blur what they see. */
constexpr bigtime_t kNoPolling = 3600000000;

template <class T>
void destroy(T** object) {
  delete std::exchange(*object, nullptr);
}

} // namespace

FakePlayer::FakePlayer() : BLooper("fake player") {
  be_roster->AddName(kHostSignature, BMessenger(this));
}

FakePlayer::~FakePlayer() {
  be_roster->RemoveName(kHostSignature);
}

void FakePlayer::MessageReceived(BMessage* message) {
  BMessage answer(message->what);
  THostInformation record;
  const int32 positionMs = fPositionMs;
  switch (message->what) {
  case kMsgHostHandshake:
    answer.AddMessenger("Msgr", BMessenger(this));
    break;
  case kMsgHostInformation:
    std::memcpy(record.bytes + THostInformation::kPositionAt, &positionMs, sizeof positionMs);
    std::memcpy(record.bytes + THostInformation::kTitleAt, "Song", 5);
    answer.AddData("Info", B_STRING_TYPE, record.bytes, THostInformation::kSize);
    ++fRecordsSent;
    break;
  default:
    return AnswerAboutSongs(message);
  }
  message->SendReply(&answer);
}

void FakePlayer::AnswerAboutSongs(BMessage* question) {
  if (fIsSilent) {
    fUnanswered.push_back(*question);
    return;
  }
  BMessage answer(B_REPLY);
  std::string property;
  uint32 form = 0;
  int32 index = 0;
  question->GetCurrentSpecifier(&property, &form, &index); // the playlist
  question->PopSpecifier();
  question->GetCurrentSpecifier(&property, &form, &index); // the song in it
  if (question->what == B_COUNT_PROPERTIES) {
    answer.AddInt32("result", fSongPath.empty() ? 0 : 1);
  } else if (index == 0) {
    answer.AddString("filename", fSongPath);
    answer.AddString("title", "Song");
    answer.AddInt32("time", 60);
    answer.AddBool("played", true);
    answer.AddInt32("nr", 0);
  }
  question->SendReply(&answer);
}

EditorGlobals::EditorGlobals() {
  std::string folder = testing::TempDir() + "editorXXXXXX";
  fFolder = mkdtemp(folder.data());
  setenv("XDG_CONFIG_HOME", (fFolder + "/settings").c_str(), 1);
  gExitState = new TExitState;
  gExitState->fPanelFolder = fFolder;
  gIAP = new TInterAppPrefs;
  gIAP->AddItem(new TIAPItemAccKeyFormat);
  gIAP->SetString("AccKeyFormat", "a - ");
  gPref = new TPref;
  TPrefValues settings;
  settings.languageFile.clear();
  settings.pollIntervalUs = kNoPolling;
  gPref->SetValues(settings);
  gLLT = new TLLT;
  load_language("");
}

EditorGlobals::~EditorGlobals() {
  destroy(&gExitState);
  destroy(&gIAP);
  destroy(&gLLT);
  destroy(&gPref);
  std::filesystem::remove_all(fFolder);
}

class EditorTest::HandDrivenWindow : public TVesmoEWin {
public:
  HandDrivenWindow(BLooper* manager, std::atomic<bool>* closed) : TVesmoEWin(kFrame, manager), fClosed(closed) {
    SetRunsOnShow(false);
  }
  ~HandDrivenWindow() override { *fClosed = true; }

private:
  std::atomic<bool>* fClosed;
};

EditorTest::EditorTest() : fPlayer(new FakePlayer), fManager(new BLooper("manager")) {
  fPlayer->Run();
  fWindow = new HandDrivenWindow(fManager, &fClosed);
  fWindow->Show();
  Settle();
}

EditorTest::~EditorTest() {
  for (BLooper* looper : {fClosed ? nullptr : static_cast<BLooper*>(fWindow), fManager, static_cast<BLooper*>(fPlayer)})
    if (looper && looper->Lock()) looper->Quit();
  hands::wait_for_display();
}

std::string EditorTest::Write(const std::string& name, const std::string& bytes) const {
  std::ofstream(PathOf(name), std::ios::binary) << bytes;
  return PathOf(name);
}

std::string EditorTest::Read(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void EditorTest::Settle() {
  for (int quiet = 0; quiet < 3; ++quiet) {
    hands::wait_for_display();
    if (fClosed) return;
    if (fWindow->DeliverAll() > 0) quiet = -1;
  }
}

void EditorTest::Send(BMessage message) {
  fWindow->PostMessage(&message);
  Settle();
}

void EditorTest::Open(const std::string& path) {
  BMessage open(B_REFS_RECEIVED);
  entry_ref ref;
  get_ref_for_path(path.c_str(), &ref);
  open.AddRef("refs", &ref);
  Send(open);
}

void EditorTest::Press(const std::string& key) {
  hands::press(*fWindow, key);
  Settle();
}

std::vector<hands::Question> EditorTest::Answer(const std::vector<std::string>& keys,
                                                const std::function<void()>& act) {
  auto asked = std::async(std::launch::async, [&] {
    std::vector<hands::Question> questions;
    for (const std::string& key : keys) {
      hands::Question next = hands::wait_for_question();
      // An answered question goes when its button comes up again.
      while (!questions.empty() && next.text == questions.back().text) next = hands::wait_for_question();
      questions.push_back(next);
      hands::answer_with_key(key);
      ++fAnsweredQuestions;
    }
    return questions;
  });
  act();
  return asked.get();
}

bool EditorTest::Until(const std::function<bool()>& isSo) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (!isSo() && std::chrono::steady_clock::now() < end) {
    if (!fClosed) fWindow->DeliverAll();
    hands::wait_for_display();
    std::this_thread::yield();
  }
  return isSo();
}

std::list<std::string> EditorTest::Lines() const {
  std::list<std::string> lines;
  static_cast<TTagInputView*>(fWindow->FindView("TagInputView"))->GetLines(&lines);
  return lines;
}

bool EditorTest::IsModified() const {
  return static_cast<TTagInputView*>(fWindow->FindView("TagInputView"))->IsModified();
}
