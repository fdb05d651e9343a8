#include "document/song_lyrics_job.h"

#include <gtest/gtest.h>

#include <semaphore>

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
