#include "player/list/folder_watch.h"

#include "player/list/folder_events.h"
#include "player/list/folder_scan.h"
#include "tests/support/scratch_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <semaphore>

using namespace testing;
namespace fs = std::filesystem;

namespace {

struct WatchedFolder : Test {
  /** A file that nobody is writing any more. */
  void Song(const std::string& name) {
    fs::create_directories(fs::path(fFolder.File(name)).parent_path());
    fFolder.Write(name, "");
    fs::last_write_time(fFolder.File(name), fs::file_time_type::clock::now() - std::chrono::minutes(1));
  }
  TFolderScan Scan() {
    return scan_folder(fFolder.Path(), &fState, &fEvents, [] { return false; });
  }
  static std::string Titles(const TSongs& songs) {
    std::string titles;
    for (const TSong& song : songs) titles += song.title + ' ';
    return titles;
  }

  const ScratchFolder fFolder;
  TFolderState fState;
  TFolderEvents fEvents;
};

} // namespace

TEST_F(WatchedFolder, GivesItsSongsOnceAndOnlyThose) {
  for (const char* name : {"b.mp3", "album/a.ogg", "words.lrc", ".trash/gone.mp3", ".hidden.mp3"}) Song(name);
  fs::create_directory_symlink(fFolder.Path(), fFolder.File("album/loop"));
  std::string deep;
  for (int i = 0; i < 40; ++i) deep += "d/";
  Song(deep + "deep.mp3");
  fFolder.Write("copied.mp3", ""); // a moment ago
  TFolderScan scan = Scan();
  EXPECT_EQ(Titles(scan.come), "a b ");
  EXPECT_TRUE(scan.isFirst && scan.isUnsettled && !scan.isUnwatched);
  EXPECT_THAT(scan.errors, ElementsAre(HasSubstr("more than 32 levels below " + fFolder.Path()))) << "some are skipped";
  Song("copied.mp3");
  fs::remove(fFolder.File("b.mp3"));
  scan = Scan();
  EXPECT_EQ(Titles(scan.come), "copied ");
  EXPECT_THAT(scan.gone, ElementsAre(fFolder.File("b.mp3")));
  EXPECT_FALSE(scan.isFirst || scan.isUnsettled);
  EXPECT_THAT(scan.errors, IsEmpty()) << "once";
}

TEST_F(WatchedFolder, NoSongIsGoneWithTheDiskThatIsUnmounted) {
  const std::string disk = fFolder.File("disk");
  const auto scan = [&] { return scan_folder(disk, &fState, &fEvents, [] { return false; }); };
  EXPECT_TRUE(scan().isAbsent);
  Song("disk/a.mp3");
  EXPECT_TRUE(scan().isFirst);
  fs::rename(disk, fFolder.File("elsewhere"));
  EXPECT_THAT(scan(), AllOf(Field(&TFolderScan::isAbsent, true), Field(&TFolderScan::gone, IsEmpty())));
  fs::create_directory(disk); // an empty mount point
  EXPECT_THAT(scan(), AllOf(Field(&TFolderScan::isAbsent, false), Field(&TFolderScan::gone, IsEmpty())));
  fs::remove(disk);
  fs::rename(fFolder.File("elsewhere"), disk);
  EXPECT_EQ(Titles(scan().come), "a ");
}

TEST_F(WatchedFolder, NewsCome) {
  std::counting_semaphore<> news(0);
  TFolderWatch watch([&] { news.release(); });
  const auto next = [&] {
    return news.try_acquire_for(std::chrono::seconds(30)) ? watch.Take() : TFolderWatch::TNews();
  };
  Song("a.mp3");
  watch.Watch({fFolder.Path()});
  const TFolderWatch::TNews first = next();
  EXPECT_EQ(Titles(first.come), "a ");
  EXPECT_THAT(first.firstScanned, ElementsAre(fFolder.Path()));
  ScratchFolder other;
  fs::create_directories(other.File("sub"));
  fs::rename(fFolder.File("a.mp3"), other.File("sub/b.mp3"));
  EXPECT_THAT(next().gone, ElementsAre(fFolder.File("a.mp3")));
  fs::rename(other.File("sub"), fFolder.File("sub"));
  EXPECT_EQ(Titles(next().come), "b ") << "in a folder that is new itself";
  watch.Watch({});
  watch.Watch({fFolder.Path()});
  EXPECT_EQ(Titles(next().come), "b ") << "watched from the start again";
  fFolder.Write("copied.mp3", "");
  EXPECT_EQ(Titles(next().come), "copied ") << "once it is no longer written";
  watch.Watch({fFolder.Path(), fFolder.File("absent")});
  EXPECT_THAT(next().absent, ElementsAre(fFolder.File("absent")));
}
