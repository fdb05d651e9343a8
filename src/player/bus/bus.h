#pragma once

#include "platform/app/messenger.h"
#include "player/bus/own_status.h"
#include "player/bus/shared_position.h"
#include "player/sound/song_source.h"

#include <functional>
#include <future>
#include <memory>
#include <thread>

class QEventLoop;
class TActions;
class TBusLink;

/** The desktop's message bus: shows this player there, and takes another player there as the source of the song. What
    the bus has to tell comes to the application as the messages of player/model/bus_messages.h. All of it happens on a
    thread of its own, which begins with Start; no call waits. Owned and called by the application's thread, but for
    PositionMs. */
class TBus : public TSongControl {
public:
  /** `ownPositionMs` is called on the bus's thread until the end. */
  TBus(const BMessenger& player, std::function<int32()> ownPositionMs);
  ~TBus() override;

  void Start();
  /** Waits until nothing is asked of `ownPositionMs` any more. */
  void End();
  void Show(const TOwnStatus& status);
  void TellSeeked(int32 positionMs);

  /** The other player whose song counts; empty for none. */
  void Choose(const std::string& id);
  /** The other player's song to the next (1) or the one before (-1). */
  void Skip(int direction);

  // The other player's sound.
  void SetPaused(bool paused) override;
  void SeekTo(int32 positionMs) override;
  void SetSpeed(double speed) override;
  void SetVolume(double percent) override;
  int32 PositionMs() override { return fOtherPosition->PositionMs(); }

private:
  void Run(std::promise<TActions*>* started);
  void Do(const std::function<void(TBusLink&)>& action);

  const BMessenger fPlayer;
  const std::function<int32()> fOwnPositionMs;
  const std::shared_ptr<TSharedPosition> fOtherPosition;
  TOwnStatus fStatus;
  std::thread fThread;
  TActions* fActions = nullptr; // from the start to the end
  // The thread's own.
  QEventLoop* fLoop = nullptr;
  std::unique_ptr<TBusLink> fLink;
};
