#pragma once

#include "common/thread.h"
#include "companion/prefs/click_output.h"
#include "platform/app/message.h"
#include "platform/app/messenger.h"

#include <functional>
#include <memory>

/** Plays the clicks of a tap test on its own thread and reports each when it is heard. */
class TClickTrack : public koreva::TThread {
public:
  using TOpen = std::function<std::unique_ptr<TClickOutput>(const TIsCancelled& isCancelled)>;
  static constexpr int kClicks = 16;

  /** `open` is called on the track's thread; if it returns null, the clicks are silent. The destructor cancels waits of
      the output, so a sound server cannot block it. */
  TClickTrack(const BMessenger& target, int32 number, TOpen open);
  ~TClickTrack() override;

protected:
  int32 Execute() override;

private:
  void Report(BMessage message) const;

  const BMessenger fTarget;
  const int32 fNumber;
  const TOpen fOpen;
};
