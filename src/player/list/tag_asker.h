#pragma once

#include "player/model/playlist.h"
#include "player/pictures/tag_talk.h"

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

struct TReadTags {
  int64 id = 0; // TSong::id
  TSongTags tags;
};

/** Decides which song's tags to read next, each song once, and collects the results. Caches the tags per file for as
    long as the program runs. Independent of the helper process and the clock. Not thread-safe. */
class TTagAsker {
public:
  void Show(std::shared_ptr<const TSongs> songs);
  /** The question about the next song, searching from that row on and wrapping around; empty if none is left. Must not
      be called while an answer is pending. */
  std::string Ask(int32 firstRow);
  bool IsWaiting() const { return fAsked.id != 0; }
  /** Takes a piece of the answer. False if it is malformed: the rest of the stream is useless then. */
  bool Take(std::string_view bytes);
  /** Skips the song that is asked about, for good. */
  void GiveUp();
  /** The tags found since the last call. */
  std::vector<TReadTags> TakeFound();

private:
  bool IsWanted(const TSong& song) const;
  void Learn(const TTagAnswer& answer);

  std::shared_ptr<const TSongs> fSongs = std::make_shared<TSongs>();
  int32 fFirstRow = 0;
  int32 fPassed = 0; // number of rows, from fFirstRow on, that are done
  TSong fAsked;      // id 0 while no answer is pending
  std::string fBytes;
  std::unordered_set<int64> fDone;
  std::unordered_map<std::string, TTagAnswer> fKnown; // by path
  std::vector<TReadTags> fFound;
};
