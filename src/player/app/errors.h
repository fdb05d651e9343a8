#pragma once

#include <string>
#include <vector>

/** The errors since the user last chose what to play, as the window shows them. Those that concern one song disappear
    earlier. */
class TErrors {
public:
  enum class TLife { kUntilChosen, kOfSong };
  /** Ignores duplicates. */
  void Add(const std::string& error, TLife life = TLife::kUntilChosen);
  /** A song can be heard: removes the errors of songs that were shown during the one before. */
  void SongIsHeard();
  /** False when it is not shown. */
  bool Remove(const std::string& error);
  /** False when there were none. */
  bool Clear();
  /** The last few, a line each, after a line that counts the earlier ones. */
  std::string Text() const;

private:
  struct TError {
    std::string text;
    TLife life = TLife::kUntilChosen;
    bool isOld = false; // shown since an earlier song
  };
  std::vector<TError> fErrors;
};
