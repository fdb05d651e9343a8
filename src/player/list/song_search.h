#pragma once

#include "player/model/playlist.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <stop_token>
#include <thread>

/** Looks for the songs of files, folders and lists, one search after another, on a thread of its own: a large folder or
    a slow disk holds nobody up. What is found is handed over piece by piece. Owned and called by the application's
    thread. */
class TSongSearch {
public:
  struct TPiece {
    int64 search = 0;
    TSongs songs; // in their order, after those of the pieces before
    std::vector<std::string> faults;
    bool isLast = false; // of this search
  };

  /** `news`: there is something to be taken. Called on the search's thread, once until that is taken. */
  explicit TSongSearch(std::function<void()> news);
  /** Waits until the disk has answered the question that is on its way. */
  ~TSongSearch();

  /** Returns the search's number: the first is 1, the next one more. */
  int64 Begin(std::vector<std::string> paths);
  std::vector<TPiece> Take();
  /** What was not taken yet never will be. */
  void Forget();

private:
  class TTaker;
  struct TSearch {
    int64 number = 0;
    std::vector<std::string> paths;
  };

  void Run(const std::stop_token& end);
  void Add(int64 search, const std::function<void(TPiece&)>& addTo);

  const std::function<void()> fNews;
  std::mutex fMutex; // guards the two below
  std::deque<TSearch> fWaiting;
  std::vector<TPiece> fFound;
  std::condition_variable_any fChanged;
  int64 fLast = 0;                  // the application's thread only
  std::atomic<int64> fForgotten{0}; // this one and those before
  std::jthread fThread;
};
