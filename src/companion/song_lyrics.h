#pragma once

#include "hostlink/current_song_finder.h"

#include <string>
#include <vector>

class BHandler;
class BMessage;
class Sonivo_FrontEnd;

/** The lyrics of the song being played, from the file next to it. Owned by a window and used on its thread only; the
    window passes on the answers of the search and the notices of the watched folder. */
class TSongLyrics {
public:
  TSongLyrics(Sonivo_FrontEnd* frontEnd, BHandler* owner);
  TSongLyrics(const TSongLyrics&) = delete;
  TSongLyrics& operator=(const TSongLyrics&) = delete;
  ~TSongLyrics();

  /** A new title starts a search; returns true when the previous lyrics were dropped. */
  bool SongIs(const std::string& title);
  void SearchAnswered(const BMessage& answer);
  /** False when the notice concerns other files. */
  bool FilesChanged(const BMessage& notice);

  const std::string& Title() const { return fTitle; }
  /** Empty until the song is found. */
  const std::string& Path() const { return fPath; }
  const std::vector<std::string>& Lines() const { return fLines; }
  /** There is a lyrics file, but it was not loaded. */
  bool HasTooManyLines() const { return fHasTooManyLines; }

private:
  void Watch();
  void Read();

  BHandler* const fOwner;
  TCurrentSongFinder fFinder;
  std::string fTitle;
  std::string fSearched; // title of the running search; empty without one
  std::string fPath;
  std::vector<std::string> fLines;
  bool fHasTooManyLines = false;
};
