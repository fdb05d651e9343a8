#pragma once

#include "player/app/player_events.h"

#include <string>
#include <vector>

/** Keeps what the player's parts report. */
struct TRecorder final : TPlayerEvents {
  void StateChanged() override {}
  void ErrorOccurred(const std::string& error) override { errors.push_back(error); }
  void SongErrorOccurred(const std::string& error) override { errors.push_back(error); }
  void ErrorResolved(const std::string& error) override { std::erase(errors, error); }
  void ErrorsResolved() override { errors.clear(); }
  void UserChose() override { ++choices; }
  void SongBegins() override { ++begun; }
  void SongIsHeard() override {}
  void SongSought(int32 positionMs) override { soughtMs.push_back(positionMs); }
  void PositionJumped(int32 positionMs) override { shownMs.push_back(positionMs); }

  std::vector<std::string> errors;
  int choices = 0;
  int begun = 0;
  std::vector<int32> soughtMs;
  std::vector<int32> shownMs;
};
