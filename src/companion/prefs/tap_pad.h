#pragma once

#include "platform/app/message_runner.h"
#include "platform/interface/view.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

/** The tap area: flashes at each click and records the times of clicks and key presses. */
class TTapPad : public BView {
public:
  TTapPad();

  /** Clears the recorded times and takes the focus. */
  void Begin();
  void Click(bigtime_t whenUs);
  size_t CountClicks() const { return fClicksMs.size(); }
  /** Typical delay of the taps in ms; nothing if they are too few or too irregular. */
  std::optional<int32> Lateness() const;

  BPoint PreferredSize() override;
  void AttachedToWindow() override { Invalidate(); }
  void FrameResized(float width, float height) override;
  void KeyDown(const char* bytes, int32 count) override;
  void MessageReceived(BMessage* message) override;
  void Draw(BRect updateRect) override;

private:
  bool TakesKey(const char* bytes) const;

  std::vector<int64> fClicksMs;
  std::vector<int64> fTapsMs;
  bool fIsLit = false;
  std::unique_ptr<BMessageRunner> fLightEnd;
};
