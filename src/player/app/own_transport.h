#pragma once

#include "platform/kernel/thread_checker.h"
#include "player/app/song_clicks.h"
#include "player/app/transport.h"

#include <memory>
#include <optional>

class BMessage;
class TPlayerEvents;
class TSongSource;

/** Plays the songs of the list with this player's own sound. Application's thread. */
class TOwnTransport : public TTransport {
public:
  /** `songs` and `events` outlive this. */
  TOwnTransport(TPlaylist* songs, std::shared_ptr<TSongSource> sound, TPlayerEvents* events);

  /** Does nothing for an index outside the list. */
  void PlaySong(int32 index, bool paused, int32 fromMs = 0);
  void Stop();
  void Pause();
  /** Beyond the song's end the next song follows. */
  void SeekBy(int32 byMs);
  /** For the next song; does not load the audio library yet. */
  void RestoreVolume(int32 percent) { fPlayback.volumePercent = percent; }
  const TPlayerChoices& Choices() const { return fChoices; }
  const std::vector<TSoundDevice>& Devices() const { return fDevices; }
  void SetChoices(const TPlayerChoices& choices);
  bool CanSkip(int direction) { return fOrder.SkipTarget(direction) >= 0; }
  /** What the sound reports; false for any other message. */
  bool Handle(const BMessage& message);
  /** The tagged moments at which clicks are to be heard; null for none. */
  void SetClicks(TSongClicks::TTimes marksMs);
  /** kMsgHostCountIn. */
  void CountIn(const BMessage& message);
  /** Ten times a second while a song plays. */
  void Tick();
  /** Lets go of the sound, which takes up to two seconds. Nothing may be called after that. */
  void End();

  /** For threads that ask for the position; null after End. */
  TSongSource* Sound() const { return fSound.get(); }
  /** The key of the text that says why nothing is heard, or null. */
  const char* SoundProblem() const;
  /** Differs for each song begun; 0 for none. */
  int64 LoadNumber() const { return fLoad; }

  TPlayback Playback() const override { return fPlayback; }
  int32 PositionMs() override;
  void PlayPause() override;
  void Skip(int direction) override;
  void SkipAsItIs(int direction) override;
  void Seek(int64 positionMs) override;
  void PlayPart(const TSongPart& part) override;
  void EndPart() override;
  void SetSpeed(int64 percent) override;
  void SetVolume(int32 percent) override;
  void SetRepeat(uint32 request, int32 agoMs) override;

private:
  /** The song that the sound has queued, to begin without a gap. */
  struct TFollower {
    std::string path; // empty for none
    int64 load = 0;
    bool operator==(const TFollower&) const = default;
  };
  void Begin(int32 index, bool paused, int64 load);
  void SkipTo(int direction, bool startsPaused);
  void ForgetRepeat();
  void ApplySound();
  void ApplyClicks();
  void QueueFollower();
  std::string FollowerPath();
  void TakeDevices(const BMessage& message);
  void DeviceLost(const BMessage& message);
  void DeviceReturned(const BMessage& message);
  void Joined(const BMessage& message);
  void WarnOfMissingFile();
  bool IsAboutThisLoad(const BMessage& message) const;
  void Loaded(const BMessage& message);
  void Ended(int32 positionMs);
  void PlayOn();
  void Failed(const BMessage& message);
  void PartEnded(const BMessage& message);

  ThreadChecker fThread;
  TPlaylist* const fSongs;
  std::shared_ptr<TSongSource> fSound;
  TPlayerEvents* const fEvents;
  TPlayerChoices fChoices;
  std::vector<TSoundDevice> fDevices;
  TSoundChoices fAppliedSound; // as the sound has it
  std::string fDeviceError;    // the last one reported
  TSongClicks fClicks;
  TPlayingOrder fOrder;
  TFollower fFollower;
  TPlayback fPlayback;
  bool fHasNoDevice = false;
  bool fIsHanging = false; // as of the last tick; ticks end with a pause
  int64 fLoad = 0;
  int64 fLoadedLoad = 0;  // the last one that the sound could begin
  int64 fMissingLoad = 0; // the last one whose file was found missing
  int64 fTicks = 0;
  int32 fResumeMs = 0; // where the song continues once it is loaded
  int64 fPart = 0;     // the one that is played; 0 for none
  int32 fPartFromMs = 0;
  std::optional<TSongPart> fWaitingPart; // to be played once the song is loaded
};
