#pragma once

#include "platform/app/messenger.h"
#include "songsound/song_sound.h"

#include <memory>
#include <string>

/** Reads the sound of a song by the helper program sonivo-peaks, on threads that are abandoned if a disk does not
   answer. Sends kMsgSongSound to its target whenever more is known. Destroying it ends the helper. Used on its owner's
   looper, which it does not block; Sound is thread-safe. */
class TSoundReader {
public:
  explicit TSoundReader(const BMessenger& target);
  TSoundReader(const TSoundReader&) = delete;
  TSoundReader& operator=(const TSoundReader&) = delete;
  ~TSoundReader();

  /** Another song replaces the previous one, whose reading is cancelled. The wanted part comes first, then the whole
      song, which is kept in the cache. Of the same song, only a part that has not been read is requested again; nothing
      is, if it could not be read. */
  void Read(const std::string& songPath, int32 wantedFromMs, int32 wantedToMs);
  /** Forgets the song as well. */
  void Cancel();

  /** A snapshot of what is known of the song; null before anything is. */
  std::shared_ptr<const TSongSound> Sound() const;
  /** The song cannot be read, or the helper does not work: nothing more will come. */
  bool HasFailed() const;

private:
  struct TJob;
  std::unique_ptr<TJob> fJob; // of the song that is being read
  const BMessenger fTarget;
};
