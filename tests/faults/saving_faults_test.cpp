/** Every system call of a save and of the settings made to fail, or to be the last one of the process. */

#include "common/archivable.h"
#include "common/atomic_replace.h"
#include "common/file_replacement.h"
#include "platform/storage/entry.h"
#include "tests/faults/fault_table.h"
#include "tests/support/editor_fixture.h"

using namespace testing;

namespace {

const std::string kOld = "[00:01]a line\n[00:02]another\n";
const std::string kNew = std::string("a line\n[00:02]another\n\0", 23);

class Saves : public EditorByHand {
protected:
  Saves() { setenv("TMPDIR", fTemporary.Path().c_str(), 1); }
  ~Saves() override { unsetenv("TMPDIR"); }

  /** Does it, answering messages; returns the texts of these. */
  std::vector<std::string> ToldBy(const std::function<void()>& act) {
    std::atomic<bool> isDone{false};
    auto told = std::async(std::launch::async, [&isDone] {
      std::vector<std::string> texts;
      hands::until([&] {
        const std::string text = hands::question_now().text;
        if (!text.empty() && hands::answer_with_key("U")) texts.push_back(text);
        return isDone.load();
      });
      return texts;
    });
    act();
    isDone = true;
    return told.get();
  }
  void Prepare(const std::string& shape) {
    const std::string folder = fFolder.File("lyrics");
    std::filesystem::remove_all(folder);
    std::filesystem::create_directory(folder);
    fFolder.Write("lyrics/a.lrc", kOld);
    if (shape == "two names") std::filesystem::create_hard_link(folder + "/a.lrc", folder + "/b.lrc");
    Open(folder + "/a.lrc");
    Change();
  }
  const ScratchFolder fTemporary; // the last resort for texts that no file takes
  /** Saves with failing calls; false when there are no further calls. */
  bool SaveFailing(const std::string& shape, int call, const Error& error, bool areAll) {
    SCOPED_TRACE(shape + ", call " + std::to_string(call) + ", " + error.name + (areAll ? " from then on" : ""));
    Prepare(shape);
    failing_calls::arm(fFolder.Path(), call, error.number, failing_calls::Fate::kFails, areAll);
    const auto told = ToldBy([&] {
      SendToView(BMessage(kMsgSave));
      failing_calls::disarm();
    });
    const std::string bytes = fFolder.Read("lyrics/a.lrc");
    const bool isSaved = bytes == kNew;
    // A file with two names is written in place; when that can be neither finished nor undone, its copy is whole.
    const bool isTorn = bytes != kOld && bytes != kNew;
    EXPECT_TRUE(!isTorn || (shape == "two names" && areAll && fFolder.Read("lyrics/a.lrc.before-save") == kOld))
        << testing::PrintToString(bytes);
    if (std::filesystem::exists(fFolder.File("lyrics/a.lrc.before-save"))) {
      EXPECT_EQ(fFolder.Read("lyrics/a.lrc.before-save"), kOld) << "no half of a copy is left";
    }
    EXPECT_EQ(IsModified(), !isSaved);
    EXPECT_EQ(told.empty(), isSaved);
    if (!told.empty()) {
      EXPECT_THAT(told.front(), AnyOf(HasSubstr("A copy was saved here:"), HasSubstr("still in the editor")));
    }
    report("save, " + shape + (areAll ? ", all calls from" : ""), call, failing_calls::failed_call(), error.name,
           isSaved  ? "new file"
           : isTorn ? "whole copy beside it, told"
                    : "old file, told");
    const auto leave = [&] { SendToView(BMessage(kMsgNew)); }; // before its file is removed
    if (IsModified())
      Answer("N", leave);
    else
      leave();
    fCalls += failing_calls::failed_call() + " ";
    return !failing_calls::failed_call().empty();
  }
  std::string fCalls; // in the order in which a save makes them
};

} // namespace

TEST_F(Saves, LeaveTheOldOrTheNewFileWhicheverCallFailsAndTheUserIsTold) {
  for (const std::string shape : {"one name", "two names"}) {
    for (const Error& error : errors()) {
      for (const bool areAll : {false, true}) {
        int call = 1;
        fCalls.clear();
        while (call < kMostCalls && SaveFailing(shape, call, error, areAll)) ++call;
        EXPECT_GT(call, 4) << "no calls were counted";
        if (shape == "one name" && !areAll) {
          EXPECT_LT(fCalls.find("fsync"), fCalls.find("rename")) << fCalls;
        }
      }
    }
  }
}

namespace {

class Record : public koreva::TArchivable {
public:
  explicit Record(std::string text) : fText(std::move(text)) {}
  bool Archive(BMessage* archive) override { return archive->AddString("Text", fText) == B_OK; }
  bool Unarchive(const BMessage& archive) override { return archive.FindString("Text", &fText) == B_OK; }
  std::string fText;
};

} // namespace

TEST(KilledSaves, LeaveTheOldOrTheNewFileAndTheNextSaveWorks) {
  const ScratchFolder folder;
  const std::string path = folder.File("a.lrc");
  const std::string copy = path + ".before-save";
  for (const bool hasTwoNames : {false, true}) {
    int call = 1;
    for (bool isKilled = true; isKilled && call < kMostCalls; ++call) {
      folder.Write("a.lrc", kOld);
      std::filesystem::remove(folder.File("b.lrc"));
      if (hasTwoNames) std::filesystem::create_hard_link(path, folder.File("b.lrc"));
      isKilled = killed_at(call, folder.Path(), [&] { static_cast<void>(atomic_replace(path, kNew)); });
      const std::string bytes = folder.Read("a.lrc");
      const bool isWhole = bytes == kOld || bytes == kNew;
      // A file with several names is written in place; then the copy beside it is whole.
      EXPECT_TRUE(isWhole || (hasTwoNames && folder.Read("a.lrc.before-save") == kOld)) << call;
      report(hasTwoNames ? "killed save, two names" : "killed save", call, "", "-",
             bytes == kNew   ? "new file"
             : bytes == kOld ? "old file"
                             : "whole copy beside it");
      EXPECT_EQ(atomic_replace(path, kNew), B_OK);
      EXPECT_EQ(folder.Read("a.lrc"), kNew);
      std::filesystem::remove(copy);
    }
    EXPECT_GT(call, 5) << "no calls were counted";
  }
}

TEST(FailingSettings, LeaveTheOldOrTheNewRecordAndTheCallerIsTold) {
  const ScratchFolder folder;
  const BEntry entry(folder.File("record.arc").c_str());
  const auto stored = [&entry] {
    Record record("");
    return record.Load(entry) ? record.fText : "unreadable";
  };
  for (const Error& error : errors()) {
    int call = 0;
    do {
      ASSERT_TRUE(Record("old").Save(entry));
      failing_calls::arm(folder.Path(), ++call, error.number);
      const bool isSaved = Record("new").Save(entry);
      failing_calls::disarm();
      EXPECT_EQ(stored(), isSaved ? "new" : "old") << call;
      report("settings", call, failing_calls::failed_call(), error.name, isSaved ? "new record" : "old record, told");
    } while (!failing_calls::failed_call().empty() && call < kMostCalls);
    EXPECT_GT(call, 5) << "no calls were counted";
  }
  int call = 1;
  for (bool isKilled = true; isKilled && call < kMostCalls; ++call) {
    ASSERT_TRUE(Record("old").Save(entry));
    isKilled = killed_at(call, folder.Path(), [&] { static_cast<void>(Record("new").Save(entry)); });
    EXPECT_THAT(stored(), AnyOf("old", "new")) << call;
    report("killed settings", call, "", "-", stored() + " record");
  }
  EXPECT_GT(call, 4) << "no calls were counted";
}

TEST(Replacing, FailsWhenOnlyCloseReportsTheError) {
  const ScratchFolder folder;
  const std::string path = folder.Write("a", "old");
  status_t status = B_OK;
  for (int call = 1; call == 1 || !failing_calls::failed_call().empty(); ++call) {
    TFileTarget target;
    ASSERT_EQ(find_file_target(path, &target), B_OK);
    TFileReplacement replacement;
    failing_calls::arm(folder.Path(), call, EDQUOT);
    status = replacement.Write(target, "new", true);
    failing_calls::disarm();
    if (failing_calls::failed_call() == "close") break;
  }
  EXPECT_EQ(failing_calls::failed_call(), "close");
  EXPECT_NE(status, B_OK);
}
