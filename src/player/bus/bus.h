#pragma once

#include "platform/app/messenger.h"
#include "platform/kernel/thread_checker.h"
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

/** The desktop's message bus: publishes this player there (MPRIS), and follows another player there as the source of
    the song. Reports to the application by the messages of player/model/bus_messages.h. Works on a thread of its own,
    which Start begins; no call waits. Owned and called by the application's thread; PositionMs by any thread. */
class TBus : public TSongControl {
public:
  /** `ownPositionMs` is called on the bus's thread until End returns. */
  TBus(const BMessenger& player, std::function<int32()> ownPositionMs);
  ~TBus() override;

  void Start();
  /** Joins the thread. */
  void End();
  void Show(const TOwnStatus& status);
  const BMessenger& Player() const { return fPlayer; }
  void SignalSeeked(int32 positionMs);
  /** In the desktop's file manager; kMsgBusNoFileManager follows if there is none. */
  void ShowInFolder(const std::string& path);

  /** Follows the other player with that id; empty for none. */
  void Choose(const std::string& id);
  /** Skips to the other player's next (1) or previous (-1) song. */
  void Skip(int direction);

  // Controls of the other player.
  void SetPaused(bool paused) override;
  void SeekTo(int32 positionMs) override;
  void SetSpeed(double speed) override;
  void SetVolume(double percent) override;
  int32 PositionMs() override { return fOtherPosition->PositionMs(); }

private:
  void Run(std::promise<TActions*>* started);
  void Do(const std::function<void(TBusLink&)>& action);

  ThreadChecker fOwnerThread;
  const BMessenger fPlayer;
  const std::function<int32()> fOwnPositionMs;
  const std::shared_ptr<TSharedPosition> fOtherPosition;
  TOwnStatus fStatus;
  std::thread fThread;
  TActions* fActions = nullptr; // between Start and End
  // Used by the bus's thread only.
  QEventLoop* fLoop = nullptr;
  std::unique_ptr<TBusLink> fLink;
};
