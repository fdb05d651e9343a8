#pragma once

#include "player/model/song_part.h"

#include <string>

struct mpv_handle;

/** Has the audio library play a part of the song, sample-accurately: once or in a loop without a gap. The user's A-B
    repeat is suspended meanwhile. Used by the source's thread only. */
class TPartPlayer {
public:
  /** `mpv` outlives the last call. */
  void Begin(mpv_handle* mpv) { fMpv = mpv; }
  /** The user's A-B repeat; -1 for either end stops it. */
  void SetRepeat(int32 fromMs, int32 toMs);
  /** Seeks there. If the song is paused, it has to be resumed. */
  void Play(const TSongPart& part);
  /** Seeks, and the song plays on from there: it ends at its own end only. */
  void SeekTo(int32 positionMs);
  /** Continues from there, whatever is played: the sound was interrupted. */
  void Resume(int32 positionMs) { Seek(positionMs); }
  /** Seeks to the beginning of the part, at whose end the library has paused. The library goes on pausing at the end
      until the song is resumed: it would take a song whose last moments it has decoded for ended, also while paused. */
  void Return();
  /** The song ends at its own end only. */
  void Cancel();
  /** Whether the library has paused the song at the end of the part, all of which has been heard. */
  bool HasEnded() const;
  int32 FromMs() const { return fPart ? fPart->fromMs : 0; }

private:
  void Leave();
  void Seek(int32 positionMs);
  void SetEnd(std::optional<int32> positionMs);
  void SetLoop(int32 fromMs, int32 toMs);
  void SetText(const char* property, const std::string& value);
  bool Is(const char* property) const;
  std::optional<int32> HeardMs() const;

  mpv_handle* fMpv = nullptr;
  std::optional<TSongPart> fPart;     // with an end
  std::optional<int32> fReturnedToMs; // paused there after a part
  int32 fRepeatFromMs = -1;
  int32 fRepeatToMs = -1;
};
