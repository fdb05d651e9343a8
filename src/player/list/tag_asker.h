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
  int64 id = 0; // of the song in the list
  TSongTags tags;
};

/** Which songs of the list are still to be looked into, one after another, each once; and what was found. What a file
    said is remembered while the program runs. Knows neither the program that looks nor the clock. One thread. */
class TTagAsker {
public:
  void Show(std::shared_ptr<const TSongs> songs);
  /** The bytes that ask about the first song from that row on, and behind the last row from the start; empty when no
      song is left. Not while an answer is waited for. */
  std::string Ask(int32 firstRow);
  bool IsWaiting() const { return fAsked.id != 0; }
  /** Bytes of the answer. False for what is none: nothing that comes after it can be understood. */
  bool Take(std::string_view bytes);
  /** No answer will come, and the song is not asked about again. */
  void GiveUp();
  /** What was found since the last call. */
  std::vector<TReadTags> TakeFound();

private:
  bool IsWanted(const TSong& song) const;
  void Learn(const TTagAnswer& answer);

  std::shared_ptr<const TSongs> fSongs = std::make_shared<TSongs>();
  int32 fFirstRow = 0;
  int32 fPassed = 0; // so many rows from the first on need no look any more
  TSong fAsked;      // without an id while no answer is waited for
  std::string fBytes;
  std::unordered_set<int64> fDone;
  std::unordered_map<std::string, TTagAnswer> fKnown; // by path
  std::vector<TReadTags> fFound;
};
