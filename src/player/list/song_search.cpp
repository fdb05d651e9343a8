#include "player/list/song_search.h"

#include "player/list/song_files.h"

#include <utility>

class TSongSearch::TTaker : public TSongTaker {
public:
  TTaker(TSongSearch* owner, int64 number, std::stop_token end)
      : fOwner(owner), fNumber(number), fEnd(std::move(end)) {}
  void Take(TSong song) override {
    fOwner->Add(fNumber, [&](TPiece& piece) { piece.songs.push_back(std::move(song)); });
  }
  void ReportError(std::string error) override {
    fOwner->Add(fNumber, [&](TPiece& piece) { piece.errors.push_back(std::move(error)); });
  }
  bool HasEnough() const override { return fEnd.stop_requested() || fNumber <= fOwner->fForgotten; }

private:
  TSongSearch* const fOwner;
  const int64 fNumber;
  const std::stop_token fEnd;
};

TSongSearch::TSongSearch(std::function<void()> news) : fNews(std::move(news)) {}

TSongSearch::~TSongSearch() {
  fThread = {}; // joins it while the members it uses still exist
}

int64 TSongSearch::Begin(std::vector<std::string> paths) {
  {
    const std::lock_guard lock(fMutex);
    fWaiting.push_back({++fLast, std::move(paths)});
  }
  if (!fThread.joinable()) fThread = std::jthread([this](const std::stop_token& end) { Run(end); });
  fChanged.notify_one();
  return fLast;
}

std::vector<TSongSearch::TPiece> TSongSearch::Take() {
  fOwnerThread.Check();
  const std::lock_guard lock(fMutex);
  return std::exchange(fFound, {});
}

void TSongSearch::Forget() {
  fOwnerThread.Check();
  fForgotten = fLast;
  const std::lock_guard lock(fMutex);
  fWaiting.clear();
  fFound.clear();
}

void TSongSearch::Run(const std::stop_token& end) {
  for (;;) {
    TSearch search;
    {
      std::unique_lock lock(fMutex);
      if (!fChanged.wait(lock, end, [this] { return !fWaiting.empty(); })) return;
      search = std::move(fWaiting.front());
      fWaiting.pop_front();
    }
    TTaker taker(this, search.number, end);
    for (const std::string& path : search.paths) {
      if (!taker.HasEnough()) gather_songs(path, &taker);
    }
    Add(search.number, [](TPiece& piece) { piece.isLast = true; });
  }
}

void TSongSearch::Add(int64 search, const std::function<void(TPiece&)>& addTo) {
  bool isNews = false;
  {
    const std::lock_guard lock(fMutex);
    if (search <= fForgotten) return;
    isNews = fFound.empty();
    if (isNews || fFound.back().search != search) fFound.emplace_back().search = search;
    addTo(fFound.back());
  }
  if (isNews) fNews();
}
