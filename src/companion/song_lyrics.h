#pragma once

#include "hostlink/current_song_finder.h"

#include <string>
#include <vector>

class BHandler;
class BMessage;
class Sonivo_FrontEnd;

/** The lyrics of the song that plays, as they lie beside it. Owned by a window, on whose thread everything happens; the
    window hands over the answers of the search and the notices of the watched folder. */
class TSongLyrics {
public:
  TSongLyrics(Sonivo_FrontEnd* frontEnd, BHandler* owner);
  TSongLyrics(const TSongLyrics&) = delete;
  TSongLyrics& operator=(const TSongLyrics&) = delete;
  ~TSongLyrics();

  /** Another title begins a search; true when what was known is gone. */
  bool SongIs(const std::string& title);
  void SearchAnswered(const BMessage& answer);
  /** False when the notice is about other files. */
  bool FilesChanged(const BMessage& notice);

  const std::string& Title() const { return fTitle; }
  /** Empty while no song was found. */
  const std::string& Path() const { return fPath; }
  const std::vector<std::string>& Lines() const { return fLines; }
  /** There are lyrics, but they are not read. */
  bool HasTooManyLines() const { return fHasTooManyLines; }

private:
  void Watch();
  void Read();

  BHandler* const fOwner;
  TCurrentSongFinder fFinder;
  std::string fTitle;
  std::string fSearched; // the title that the search under way is for; empty while there is none
  std::string fPath;
  std::vector<std::string> fLines;
  bool fHasTooManyLines = false;
};
