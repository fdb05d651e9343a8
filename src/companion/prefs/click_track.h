#pragma once

#include "common/thread.h"
#include "companion/prefs/click_output.h"
#include "platform/app/message.h"
#include "platform/app/messenger.h"

#include <functional>
#include <memory>

/** Plays the clicks of a tap test on a thread of its own, and tells of each when it is heard. */
class TClickTrack : public koreva::TThread {
public:
  using TOpen = std::function<std::unique_ptr<TClickOutput>(const TIsCancelled& isCancelled)>;
  static constexpr int kClicks = 16;

  /** `open` is called on the track's thread, and may give null: the clicks come in silence then. Ending the track
      cancels what the output waits for, so that the destructor is not held up by a sound server. */
  TClickTrack(const BMessenger& target, int32 number, TOpen open);
  ~TClickTrack() override;

protected:
  int32 Execute() override;

private:
  void Tell(BMessage message) const;

  const BMessenger fTarget;
  const int32 fNumber;
  const TOpen fOpen;
};
