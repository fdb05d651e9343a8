#pragma once

#include "lane/lane_range.h"
#include "platform/app/handler.h"

#include <memory>
#include <string>

class BView;
class Sonivo_FrontEnd;
class TCurrentSongFinder;
class TSongSound;
class TSoundReader;

/** What is known of the sound of the song that the player has. */
enum class TSoundState { kNoSong, kNoFile, kReading, kFailed, kKnown };

/** Reads the sound of the player's current song while somebody needs it. A handler of its own, so that answers reach
   who has started the search. Owned by the document's view, on its window's thread. */
class TSongSoundSource : public BHandler {
public:
  /** `owner` is attached. Nothing is owned. */
  TSongSoundSource(const BView* owner, Sonivo_FrontEnd* frontEnd);
  ~TSongSoundSource() override;

  /** To be called at every poll while the sound of that part, at least, is needed: finds and reads the song. */
  void Poll(const TLaneRange& wanted);
  /** Nobody needs the sound any more: reading ends, and its memory is freed. */
  void Rest();

  TSoundState State() const;
  /** A snapshot; null before anything is known. Another one when more is known. */
  std::shared_ptr<const TSongSound> Sound() const;

  void MessageReceived(BMessage* message) override;

private:
  void Search(const std::string& song);
  void SongFound(const std::string& path);

  Sonivo_FrontEnd* const fFrontEnd;
  std::unique_ptr<TCurrentSongFinder> fFinder; // made at first use
  std::unique_ptr<TSoundReader> fReader;
  std::string fSong;         // title and duration of that which was searched for last; empty while resting
  std::string fPath;         // empty unless it is a file
  bool fIsSearching = false; // no answer yet
};
