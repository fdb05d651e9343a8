/** Hours of work in one document's window, in random order, against a model: which lines are shown, whether they count
   as modified, what is asked, and what is on the disk, also after saves that fail and changes by other programs. */

#include "plugin/message_codes.h"
#include "tests/support/editor_fixture.h"
#include "tests/support/long_tests.h"
#include "tests/support/random_seed.h"

#include <gmock/gmock.h>

#include <atomic>
#include <future>
#include <map>
#include <random>

using testing::EndsWith;
using testing::HasSubstr;

namespace {

using TLines = std::list<std::string>;
enum : int32 { kUtf8, kShiftJis };

std::string replaced(std::string text, const std::string& from, const std::string& to) {
  for (size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
    text.replace(at, from.size(), to);
  return text;
}

std::string bytes_of(const TLines& lines, int32 encoding) {
  std::string text;
  for (const std::string& line : lines) text += line + '\n';
  if (encoding == kUtf8) return text + '\0';
  return replaced(replaced(text, "日", "\x93\xFA"), "é", "\x1A");
}

class AnyUseOfTheEditor : public EditorByHand {
protected:
  struct TFile {
    TLines lines;
    int32 encoding = kUtf8;
    std::string Bytes() const { return bytes_of(lines, encoding); }
  };

  size_t Random(size_t below) { return fRandom() % below; }
  const TLines& Now() const { return fStates[fAt]; }
  bool IsModified() const { return fSaved != static_cast<int>(fAt); }
  void Begin(const std::string& name, const TFile& file) {
    fName = name;
    const bool isKnown = file.Bytes().find("\x93\xFA") != std::string::npos; // ASCII is UTF-8
    fEncoding = isKnown ? file.encoding : kUtf8;
    fStates = {file.lines};
    fAt = 0;
    fSaved = 0;
    fIsTheirs = false;
    fLosesAccepted = false;
    if (!name.empty()) Recent(name);
  }
  void Recent(const std::string& name) {
    fRecent.remove(name);
    fRecent.push_front(name);
  }
  void Changed() {
    fStates.resize(fAt + 1);
    if (fSaved > static_cast<int>(fAt)) fSaved = -1;
    fStates.push_back(Lines());
    ++fAt;
  }
  /** The questions that the act must lead to, each with the key for it; any other question is cancelled. */
  void Do(const std::vector<std::pair<std::string, std::string>>& expected, const std::function<void()>& act);
  void Open(const std::string& name);
  void Save(const std::string& name, int32 encoding, const BMessage& command,
            std::vector<std::pair<std::string, std::string>> asked = {}, const std::string& next = {});
  void SaveAs();
  void Edit();
  void Replay(bool undoesAll = false);
  void OthersWrite();
  void Reload();
  void StartNew();
  void Step();
  void Check();
  /** The file whose path ends that text. */
  std::string FileNamedAtEndOf(const std::string& text) const {
    const size_t at = text.rfind(fFolder.Path());
    return at == std::string::npos ? text : fFolder.Read(text.substr(at + fFolder.Path().size() + 1));
  }

  const RandomSeed fSeed{};
  std::mt19937 fRandom{fSeed.value};
  std::map<std::string, TFile> fDisk;
  std::list<std::string> fRecent;
  std::string fName;
  int32 fEncoding = kUtf8;
  std::vector<TLines> fStates{{""}};
  size_t fAt = 0;
  int fSaved = 0;
  bool fIsTheirs = false;      // the file was written by another program since
  bool fLosesAccepted = false; // the user has agreed to lose é in this file
  int fTheirs = 0;
  std::vector<hands::Question> fAsked;
};

void AnyUseOfTheEditor::Do(const std::vector<std::pair<std::string, std::string>>& expected,
                           const std::function<void()>& act) {
  std::atomic<bool> isDone{false};
  auto asked = std::async(std::launch::async, [&] {
    std::vector<hands::Question> questions;
    while (!isDone) {
      const hands::Question question = hands::question_now();
      const bool isNew = !question.text.empty() && (questions.empty() || question.text != questions.back().text);
      if (!isNew) {
        snooze(500);
        continue;
      }
      const size_t number = questions.size();
      questions.push_back(question);
      hands::answer_with_key(number < expected.size() ? expected[number].second : "Escape");
    }
    return questions;
  });
  act();
  isDone = true;
  fAsked = asked.get();
  std::string told;
  for (const hands::Question& question : fAsked) told += question.text + "\n";
  ASSERT_EQ(fAsked.size(), expected.size()) << told;
  for (size_t i = 0; i < expected.size(); ++i) ASSERT_THAT(fAsked[i].text, HasSubstr(expected[i].first));
}

/** The command leads to a save in that file; then, if it succeeds, `next` is opened. */
void AnyUseOfTheEditor::Save(const std::string& name, int32 encoding, const BMessage& command,
                             std::vector<std::pair<std::string, std::string>> asked, const std::string& next) {
  const bool isOwn = name == fName;
  const bool fails = Random(5) == 0;
  const bool overwrites = isOwn && fIsTheirs && !fails;
  bool loses = encoding == kShiftJis && bytes_of(Now(), encoding).find('\x1A') != std::string::npos &&
               bytes_of(Now(), kUtf8).find("é") != std::string::npos;
  const bool asksLoss = loses && !(isOwn && encoding == fEncoding && fLosesAccepted);
  bool isCancelled = false;
  if (overwrites || asksLoss) {
    const std::vector<std::string> keys = {"C", "A", "U"};
    const std::string key = keys[Random(asksLoss ? 3 : 2)];
    asked.emplace_back(asksLoss ? "Saving as Shift-JIS would lose" : "was changed by another program", key);
    isCancelled = key == "C";
    if (key == "U") encoding = kUtf8, loses = false;
  }
  if (fails) { // a folder is in the file's place
    std::filesystem::remove(fFolder.File(name));
    std::filesystem::create_directory(fFolder.File(name));
    fDisk.erase(name);
    if (isOwn) fIsTheirs = false;
    if (!isCancelled) asked.emplace_back("A copy was saved here", "U");
  }
  const std::string theirs = overwrites ? fDisk.at(name).Bytes() : "";
  ASSERT_NO_FATAL_FAILURE(Do(asked, [&] { SendToView(command); }));
  if (fails) std::filesystem::remove(fFolder.File(name));
  if (isCancelled) return;
  if (fails) {
    ASSERT_EQ(FileNamedAtEndOf(fAsked.back().text), bytes_of(Now(), loses ? kUtf8 : encoding));
    fSaved = -1;
    if (Random(2)) Replay(true); // no earlier state counts as saved
    return;
  }
  const bool showsBackup = overwrites && !loses && next.empty();
  ASSERT_EQ(showsBackup ? FileNamedAtEndOf(Status()) : theirs, theirs);
  fLosesAccepted = loses || (isOwn && encoding == fEncoding && fLosesAccepted);
  fEncoding = encoding;
  fSaved = static_cast<int>(fAt);
  fIsTheirs = false;
  if (!isOwn) Recent(name);
  fName = name;
  fDisk[name] = {Now(), encoding};
  ASSERT_EQ(fFolder.Read(name), bytes_of(Now(), encoding));
  if (loses)
    for (std::string& line : fDisk[name].lines) line = replaced(line, "é", "\x1A");
  if (!next.empty()) Begin(next, fDisk.at(next));
}

void AnyUseOfTheEditor::Open(const std::string& name) {
  const BMessage open = message_of(B_REFS_RECEIVED, "refs", ref_of(fFolder.File(name)));
  const std::string ask = (fName.empty() ? "Untitled" : "\"" + fName + "\"") + " has unsaved changes";
  const size_t answer = Random(fName.empty() ? 2 : 4);
  if (IsModified() && answer > 1) return Save(fName, fEncoding, open, {{ask, "Y"}}, name);
  std::vector<std::pair<std::string, std::string>> asked;
  if (IsModified()) asked = {{ask, answer == 0 ? "Escape" : "N"}};
  const bool opens = !IsModified() || answer == 1;
  ASSERT_NO_FATAL_FAILURE(Do(asked, [&] { SendToView(open); }));
  if (opens) Begin(name, fDisk.at(name));
}

void AnyUseOfTheEditor::SaveAs() {
  const std::string name = std::string(1, static_cast<char>('a' + Random(4))) + ".lrc";
  const auto encoding = static_cast<int32>(Random(2));
  Save(name, encoding,
       message_of(B_SAVE_REQUESTED, "directory", ref_of(fFolder.Path()), "name", name, "Encoding", encoding));
}

void AnyUseOfTheEditor::Edit() {
  const size_t kind = Random(4);
  if (kind == 0) {
    const std::string text = Random(2) ? "é" : "日";
    SendToView(message_of(kMsgMode, "Mode", 2));
    Press("Ctrl+End");
    hands::paste(*fWindow, text);
    Settle();
    ASSERT_THAT(Lines().back(), EndsWith(text));
    SendToView(message_of(kMsgMode, "Mode", Random(2)));
    Changed();
  } else if (kind == 1) {
    Press(Random(2) ? "Home" : "End");
    Press("Space");
    Changed();
  } else if (kind == 2) {
    Press(Random(2) ? "Home" : "End");
    Press("Delete");
    Changed();
  } // and what typing must not join
  Shift("10");
  Changed();
}

void AnyUseOfTheEditor::Replay(bool undoesAll) {
  for (size_t times = undoesAll ? fAt : Random(6); times > 0 && !HasFatalFailure(); --times) {
    const bool undoes = undoesAll || Random(3) > 0;
    SendToView(BMessage(undoes ? kMsgUndo : kMsgRedo));
    if (undoes && fAt > 0)
      --fAt;
    else if (!undoes && fAt + 1 < fStates.size())
      ++fAt;
    Check();
  }
}

void AnyUseOfTheEditor::OthersWrite() {
  if (!fDisk.contains(fName)) return;
  fDisk[fName] = {{"[00:03]日 theirs " + std::to_string(++fTheirs)}, fEncoding};
  fFolder.Write(fName, fDisk[fName].Bytes());
  fIsTheirs = true;
}

void AnyUseOfTheEditor::Reload() {
  if (!fIsTheirs) return;
  SendToView(BMessage(kMsgReloadFile));
  Changed();
  ASSERT_EQ(Lines(), fDisk[fName].lines);
  fSaved = static_cast<int>(fAt);
  fIsTheirs = false;
  if (Random(2)) Save(fName, fEncoding, BMessage(kMsgSave));
}

void AnyUseOfTheEditor::StartNew() {
  const bool isDropped = Random(2) == 0;
  std::vector<std::pair<std::string, std::string>> asked;
  if (IsModified()) asked = {{"unsaved changes", isDropped ? "N" : "Escape"}};
  const bool starts = asked.empty() || isDropped;
  ASSERT_NO_FATAL_FAILURE(Do(asked, [&] { SendToView(BMessage(kMsgNew)); }));
  if (starts) Begin("", {{""}});
}

void AnyUseOfTheEditor::Step() {
  const size_t kind = Random(16);
  if (kind < 5) return Edit();
  if (kind < 8) return Replay();
  if (kind < 11 && !fName.empty()) return Save(fName, fEncoding, BMessage(kMsgSave));
  if (kind == 11) return SaveAs();
  if (kind == 12) return OthersWrite();
  if (kind == 13) return Reload();
  if (kind == 14 && Random(3) == 0) return StartNew();
  if (!fDisk.empty()) Open(std::next(fDisk.begin(), static_cast<long>(Random(fDisk.size())))->first);
}

void AnyUseOfTheEditor::Check() {
  ASSERT_EQ(Lines(), Now());
  ASSERT_EQ(EditorByHand::IsModified(), IsModified());
  ASSERT_EQ(Title(), (fName.empty() ? "Untitled" : fName) + " - Vesmo Editor");
  for (const auto& [name, file] : fDisk) ASSERT_EQ(fFolder.Read(name), file.Bytes()) << name;
}

} // namespace

TEST_F(AnyUseOfTheEditor, LosesNothingAndAsksOnlyWhenSomethingWouldBeLost) {
  SCOPED_TRACE(fSeed.Text());
  for (const char* name : {"a.lrc", "b.lrc"}) {
    fDisk[name] = {{"[00:10:00]日one", "[00:20:00]two", name}, name[0] == 'a' ? kUtf8 : kShiftJis};
    fFolder.Write(name, fDisk[name].Bytes());
  }
  Open("a.lrc");
  const int steps = long_tests() ? 3000 : 80;
  for (int step = 0; step < steps && !HasFatalFailure(); ++step) {
    SCOPED_TRACE("step " + std::to_string(step));
    Step();
    if (!HasFatalFailure()) Check();
  }
  const auto items = hands::menu_lines(*fWindow, {"F - File", "O - Open…"});
  size_t row = 0;
  for (const std::string& name : fRecent) EXPECT_THAT(items.at(row++).label, HasSubstr(name));
}
