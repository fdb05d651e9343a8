#include "player/list/song_search.h"

#include "tests/support/testing.h"

#include <semaphore>

using namespace testing;

namespace {

struct SongSearch : testing::Test {
  /** Everything up to the end of that search. */
  TSongs Until(int64 search) {
    TSongs songs;
    for (;;) {
      if (!fNews.try_acquire_for(std::chrono::seconds(30))) return songs;
      for (TSongSearch::TPiece& piece : fSearch.Take()) {
        EXPECT_GE(piece.search, fSeen) << "one after another";
        fSeen = piece.search;
        std::move(piece.songs.begin(), piece.songs.end(), std::back_inserter(songs));
        std::move(piece.errors.begin(), piece.errors.end(), std::back_inserter(fErrors));
        if (piece.search == search && piece.isLast) return songs;
      }
    }
  }

  const ScratchFolder fFolder;
  std::vector<std::string> fErrors;
  int64 fSeen = 0;
  std::counting_semaphore<> fNews{0};
  TSongSearch fSearch{[this] { fNews.release(); }};
};

} // namespace

TEST_F(SongSearch, FindsInTheOrderOfTheRequestsAndReportsWhatItCouldNot) {
  std::filesystem::create_directory(fFolder.File("many"));
  for (int i = 100; i < 400; ++i) fFolder.Write("many/" + std::to_string(i) + ".mp3", "");
  std::filesystem::create_directory(fFolder.File("empty"));
  fSearch.Begin({fFolder.File("first.mp3"), fFolder.File("many")});
  fSearch.Begin({fFolder.File("empty")});
  const TSongs songs = Until(fSearch.Begin({fFolder.File("last.mp3")}));
  ASSERT_EQ(songs.size(), 302U);
  EXPECT_EQ(songs.front().title, "first");
  for (size_t i = 1; i <= 300; ++i) ASSERT_EQ(songs[i].title, std::to_string(99 + i));
  EXPECT_EQ(songs.back().title, "last");
  EXPECT_THAT(fErrors, ElementsAre(HasSubstr("No songs found in")));
}

TEST_F(SongSearch, ForgottenSearchesDeliverNothing) {
  fFolder.Write("a.mp3", "");
  for (int i = 0; i < 100; ++i) fSearch.Begin({fFolder.Path()});
  fSearch.Forget();
  const TSongs songs = Until(fSearch.Begin({fFolder.File("b.mp3")}));
  ASSERT_EQ(songs.size(), 1U);
  EXPECT_EQ(songs.front().title, "b");
}

TEST_F(SongSearch, WhatIsFoundAfterItsSearchWasForgottenIsDropped) {
  std::counting_semaphore<> found(0);
  std::counting_semaphore<> goOn(0);
  TSongSearch search([&] {
    found.release();
    goOn.acquire();
  });
  search.Begin({fFolder.File("a.mp3")});
  found.acquire(); // the search goes on to its end after Forget
  search.Forget();
  goOn.release(100);
  const int64 second = search.Begin({fFolder.File("b.mp3")});
  for (bool isOver = false; !isOver;) {
    ASSERT_TRUE(found.try_acquire_for(std::chrono::seconds(30)));
    for (const TSongSearch::TPiece& piece : search.Take()) {
      EXPECT_EQ(piece.search, second);
      isOver |= piece.search == second && piece.isLast;
    }
  }
}
