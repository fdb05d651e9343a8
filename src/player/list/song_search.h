#pragma once

#include "platform/kernel/thread_checker.h"
#include "player/model/playlist.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <stop_token>
#include <thread>

/** Finds the songs of files, folders and playlists on a worker thread, one search after another, and delivers them in
    batches, so that a large folder or a slow disk blocks nothing else. Owned and called by the application's thread. */
class TSongSearch {
public:
  struct TPiece {
    int64 search = 0;
    TSongs songs; // in order, continuing the previous piece
    std::vector<std::string> errors;
    bool isLast = false; // of this search
  };

  /** `news` is called on the worker thread when there is something to take; not again before that is taken. */
  explicit TSongSearch(std::function<void()> news);
  /** Joins the worker, after its current disk access. */
  ~TSongSearch();

  /** Returns the search's number: 1 for the first, incremented for each. */
  int64 Begin(std::vector<std::string> paths);
  std::vector<TPiece> Take();
  /** Cancels all searches and drops results not taken yet. */
  void Forget();

private:
  class TTaker;
  struct TSearch {
    int64 number = 0;
    std::vector<std::string> paths;
  };

  void Run(const std::stop_token& end);
  void Add(int64 search, const std::function<void(TPiece&)>& addTo);

  ThreadChecker fOwnerThread;
  const std::function<void()> fNews;
  std::mutex fMutex; // guards fWaiting, fFound
  std::deque<TSearch> fWaiting;
  std::vector<TPiece> fFound;
  std::condition_variable_any fChanged;
  int64 fLast = 0;                  // application's thread only
  std::atomic<int64> fForgotten{0}; // this search and all earlier ones
  std::jthread fThread;
};
