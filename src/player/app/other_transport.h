#pragma once

#include "player/app/message_timer.h"
#include "player/app/transport.h"

#include <optional>
#include <string>

class BMessage;
class TBus;
class TPlayerEvents;

/** Another player on the message bus that is the source: its song as last reported, and its transport. Application's
    thread. */
class TOtherTransport : public TTransport {
public:
  TOtherTransport(TBus* bus, TPlayerEvents* events, TSourceName name);

  const std::string& Id() const { return fName.id; }
  const std::string& Name() const { return fName.name; }
  void SetName(const std::string& name) { fName.name = name; }
  const TSong& Song() const { return fSong; }
  /** kMsgBusOtherIs. */
  void TakeReport(const BMessage& message);

  TPlayback Playback() const override { return fPlayback; }
  int32 PositionMs() override;
  void PlayPause() override;
  void Skip(int direction) override;
  void Seek(int64 positionMs) override;
  void PlayPart(const TSongPart& part) override;
  void EndPart() override;
  /** kMsgPartBeat. */
  void Beat();
  void SetSpeed(int64 percent) override;
  void SetVolume(int32 percent) override;

private:
  void SeekTo(int32 positionMs);
  void CancelPart();

  TBus* const fBus;
  TPlayerEvents* const fEvents;
  TSourceName fName;
  TSong fSong;
  TPlayback fPlayback;
  bool fIsSilent = false;         // does not answer
  std::optional<TSongPart> fPart; // the one that is played, with its end
  TMessageTimer fPartTimer;
};
