#pragma once

#include "platform/app/messenger.h"
#include "player/sound/song_source.h"

/** Forwards what the sound reports to the application's looper. Called on the source's thread. */
class TSoundMessages : public TSongEvents {
public:
  explicit TSoundMessages(const BMessenger& player) : fPlayer(player) {}
  void SongLoaded(int64 load, const TSongTags& tags) override;
  void SongEnded(int64 load) override;
  void SongJoined(int64 load, int64 next, int32 endedMs) override;
  void SongFailed(int64 load, const std::string& reason) override;
  void PartEnded(int64 part) override;
  void OutputChanged(bool isSilent) override;
  void DevicesFound(const std::vector<TSoundDevice>& devices) override;
  void DeviceLost(const std::string& device) override;
  void DeviceReturned(const std::string& device) override;

private:
  void Send(const BMessage& message) const;
  const BMessenger fPlayer;
};
