#include "document/song_lyrics_job.h"
#include "songtags/songtags_program.h"
#include "tests/support/testing.h"
#include "tests/support/waiter.h"

#include <signal.h>

#include <semaphore>

namespace {

/** Stops the helper program; false if it is not running, or not yet: before its start it holds up who starts it. */
bool stop_helper() {
  for (const auto& task : std::filesystem::directory_iterator("/proc/self/task")) {
    pid_t child = 0;
    std::string name;
    std::ifstream(task.path() / "children") >> child;
    std::ifstream("/proc/" + std::to_string(child) + "/comm") >> name;
    if (name == "vesmo-songtags") return kill(child, SIGSTOP) == 0;
  }
  return false;
}

} // namespace

TEST(SongLyricsJob, ClosingTheWindowDoesNotWaitForAHelperProgramThatNeverEnds) {
  const auto killed = std::make_shared<std::counting_semaphore<>>(0);
  const auto reader = [killed](const std::string&, const std::stop_token&) {
    killed->acquire();
    return TSongReading();
  };
  {
    TSongLyricsJob job(BMessenger(), reader);
    job.Read("song.mp3");
    EXPECT_TRUE(job.IsRunning());
  }
  killed->release(); // the abandoned thread ends
}

TEST(SongLyricsJob, AHelperProgramThatHangsIsKilledWhenItsAnswerIsNoLongerWanted) {
  const ScratchFolder folder;
  const std::string song = folder.Write("song.mp3", "ID3");
  std::stop_source stop;
  for (bool hangs = false; !hangs;) { // it may be done before it is stopped
    std::atomic<bool> isDone{false};
    const Waiter reader([&] {
      read_song_lyrics(song, stop.get_token());
      isDone = true;
    });
    while (!isDone && !stop_helper()) {
    }
    hangs = reader.Sleeps();
    stop.request_stop();
    EXPECT_TRUE(reader.IsWoken());
    if (!hangs) stop = std::stop_source();
  }
}
