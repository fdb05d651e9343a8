/** Tags of songs that were not played yet, read by a helper that may fail. */

#include "player/list/tag_asker.h"
#include "player/list/tag_reader.h"
#include "player/peaks/read_tags.h"

#include "tests/support/qt_application.h"
#include "tests/support/songs.h"
#include "tests/support/testing.h"
#include "tests/support/wav.h"

#include <QCoreApplication>
#include <QProcess>

using namespace testing;

namespace {

std::shared_ptr<TSongs> numbered_songs(const std::vector<std::string>& paths) {
  TSongs songs = songs_of(paths);
  for (size_t i = 0; i < songs.size(); ++i) songs[i].id = static_cast<int64>(i + 1);
  return std::make_shared<TSongs>(songs);
}

std::string question(const std::string& path, const std::string& knownState = {}) {
  return question_bytes({knownState, path});
}

std::string answer(const std::string& title, const std::string& state = "1") {
  return answer_bytes({state, {title, "artist", 3000}});
}

/** Two seconds with title and artist. */
std::string tagged_wav(const std::string& title, const std::string& artist) {
  const auto chunk = [](const std::string& name, const std::string& bytes) {
    const char size[4] = {static_cast<char>(bytes.size())};
    return name + std::string(size, 4) + bytes + std::string(bytes.size() % 2, '\0');
  };
  return silent_wav(4).insert(36, chunk("LIST", "INFO" + chunk("INAM", title) + chunk("IART", artist)));
}

} // namespace

TEST(TagTalk, AnswersMayComeInPiecesAndOthersAreRejected) {
  const std::string bytes = answer_bytes({"12 34", {"a\ntitle", "語", 61000, "album", 3}});
  TTagAnswer read;
  for (size_t size = 0; size < bytes.size(); ++size)
    EXPECT_EQ(read_answer(bytes.substr(0, size), &read), TAnswerForm::kIncomplete) << size;
  EXPECT_EQ(read.state, "");
  EXPECT_EQ(read_answer(bytes, &read), TAnswerForm::kWhole);
  EXPECT_EQ(read.state, "12 34");
  EXPECT_EQ(read.tags, (TSongTags{"a\ntitle", "語", 61000, "album", 3}));
  const auto with_numbers = [](const std::string& duration, const std::string& track) {
    std::string fields;
    for (const std::string& field :
         {std::string("1"), duration, std::string("a"), std::string("b"), std::string("c"), track})
      fields += field + '\0';
    return fields;
  };
  for (const std::string& spoilt :
       {bytes + "x", std::string(9000, 'x'), with_numbers("x", "1"), with_numbers("", "1"), with_numbers("-5", "1"),
        with_numbers("4294967296", "1"), with_numbers("1", "x"), with_numbers("1", "-1")}) {
    EXPECT_EQ(read_answer(spoilt, &read), TAnswerForm::kBroken) << spoilt;
  }
  std::string endless = "x";
  for (int i = 0; i < 3000; ++i) endless += "語";
  ASSERT_EQ(read_answer(answer_bytes({"1", {endless, endless, 1}}), &read), TAnswerForm::kWhole);
  EXPECT_EQ(read.tags.title.size(), 1U + 341 * 3) << "between characters";
}

TEST(TagTalk, AFileIsReadUnlessItIsUnchanged) {
  const ScratchFolder folder;
  const std::string song = folder.Write("a.wav", tagged_wav("Morning", "The Band"));
  const TTagAnswer first = answer_to({"", song});
  EXPECT_EQ(first.tags, (TSongTags{"Morning", "The Band", 2000}));
  const TTagAnswer second = answer_to({first.state, song});
  EXPECT_EQ(second.state, first.state);
  EXPECT_EQ(second.tags, TSongTags());
  folder.Write("a.wav", tagged_wav("Evening", "The Band"));
  EXPECT_EQ(answer_to({first.state + "0", song}).tags.title, "Evening");

  const TTagAnswer bad = answer_to({"", folder.Write("bad.mp3", "no sound in here")});
  EXPECT_NE(bad.state, "");
  EXPECT_EQ(bad.tags, TSongTags());
  const std::string pipe = folder.File("pipe.mp3");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  for (const std::string& none : {pipe, folder.Path(), folder.File("none.mp3")})
    EXPECT_EQ(answer_to({"", none}).state, "");
}

TEST(TagAsker, BeginsWithVisibleSongsAndAsksOnceAboutEachWithoutTags) {
  TSongs songs = *numbered_songs({"/a", "/played", "/b", "/gone", "http://radio", "/told", "/c"});
  songs[1].played = true;
  songs[3].error = "it is missing";
  songs[5].durationMs = 1000;
  TTagAsker asker;
  asker.Show(std::make_shared<TSongs>(songs));
  EXPECT_EQ(asker.Ask(3), question("/c"));
  EXPECT_TRUE(asker.Take(answer("C").substr(0, 5)));
  EXPECT_TRUE(asker.IsWaiting());
  EXPECT_TRUE(asker.Take(answer("C").substr(5)));
  EXPECT_FALSE(asker.IsWaiting());
  EXPECT_EQ(asker.Ask(3), question("/a")) << "after the last row from the start";
  asker.GiveUp();
  EXPECT_EQ(asker.Ask(-1), question("/b")) << "the one that was given up is not asked about again";
  EXPECT_FALSE(asker.Take(std::string("a\0b\0c\0d\0e\0f\0", 12))) << "no answer";
  asker.GiveUp();
  EXPECT_EQ(asker.Ask(0), "");
  EXPECT_FALSE(asker.Take("x")) << "nothing was asked";
  const std::vector<TReadTags> found = asker.TakeFound();
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].id, 7);
  EXPECT_EQ(found[0].tags.title, "C");
  EXPECT_THAT(asker.TakeFound(), IsEmpty());
}

TEST(TagAsker, CachesTheTagsOfAFileUntilItChanges) {
  TTagAsker asker;
  TSongs songs = *numbered_songs({"/a", "/a", "/a"});
  asker.Show(std::make_shared<TSongs>(songs));
  EXPECT_EQ(asker.Ask(0), question("/a"));
  asker.Take(answer("A"));
  EXPECT_EQ(asker.Ask(0), question("/a", "1"));
  asker.Take(answer_bytes({"1", {}}));
  EXPECT_EQ(asker.Ask(0), question("/a", "1"));
  asker.Take(answer("B", "2"));
  std::vector<std::string> titles;
  for (const TReadTags& one : asker.TakeFound()) titles.push_back(one.tags.title);
  EXPECT_THAT(titles, ElementsAre("A", "A", "B"));
}

TEST(TagReader, SkipsSongsThatItsHelperFailsOn) {
  const OwnApplication<QCoreApplication> events;
  std::vector<std::string> titles;
  TTagReader reader(
      nullptr, [] { return 0; },
      [&](const std::vector<TReadTags>& found) {
        for (const TReadTags& one : found) titles.push_back(one.tags.title);
      },
      TAG_PROGRAM);
  const auto wait_for = [&](size_t many) {
    while (titles.size() < many) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  };
  std::vector<std::string> songs{"/one", "/hangs", "/dies", "/babbles", "/two"};
  songs.insert(songs.end(), 19, "/dies"); // one more in a row would be the end
  songs.emplace_back("/three");
  reader.Show(numbered_songs(songs));
  wait_for(1); // from then on it hangs
  reader.PassOver();
  wait_for(3);
  EXPECT_THAT(titles, ElementsAre("/one", "/two", "/three"));
}

TEST(TagReader, IsNotStartedForEverWhenItIsBroken) {
  const OwnApplication<QCoreApplication> events;
  const ScratchFolder folder;
  const std::string program = folder.Write("broken", "#!/bin/sh\necho >>" + folder.File("starts") + "\n");
  std::filesystem::permissions(program, std::filesystem::perms::owner_all);
  TTagReader reader(
      nullptr, [] { return 0; }, [](const std::vector<TReadTags>&) {}, QString::fromStdString(program));
  reader.Show(numbered_songs(std::vector<std::string>(40, "/song")));
  while (reader.findChild<QProcess*>() != nullptr) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  EXPECT_EQ(folder.Read("starts").size(), 20U);
}
