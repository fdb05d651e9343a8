#include "companion/prefs/tap_pad.h"

#include "companion/prefs/click_track.h"
#include "lyrics/reaction_time.h"
#include "platform/app/message.h"
#include "platform/interface/window.h"
#include "platform/kernel/threads.h"
#include "plugin/message_codes.h"

namespace {

constexpr BPoint kSize{299, 69};
constexpr bigtime_t kLightUs = 120000;
constexpr bigtime_t kUsPerMs = 1000;
constexpr rgb_color kDark{40, 44, 52, 255};
constexpr rgb_color kLight{255, 214, 90, 255};
constexpr rgb_color kOnDark{230, 230, 230, 255};
constexpr rgb_color kOnLight{30, 30, 30, 255};
constexpr float kPoints = 18;

} // namespace

TTapPad::TTapPad() : BView({}, "TapPad", B_FOLLOW_LEFT_TOP, B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE) {
  BFont large(*be_bold_font);
  large.SetSize(kPoints);
  SetFont(&large);
}

void TTapPad::Begin() {
  fClicksMs.clear();
  fTapsMs.clear();
  MakeFocus();
  Invalidate();
}

void TTapPad::Click(bigtime_t whenUs) {
  fClicksMs.push_back(whenUs / kUsPerMs);
  fIsLit = true;
  const BMessage end(kMsgTapLightEnd);
  fLightEnd = std::make_unique<BMessageRunner>(BMessenger(this), &end, kLightUs, 1);
  Invalidate();
}

std::optional<int32> TTapPad::Lateness() const {
  return tapped_lateness(fClicksMs, fTapsMs);
}

BPoint TTapPad::PreferredSize() {
  return kSize;
}

void TTapPad::FrameResized(float, float) {
  Invalidate();
}

/** Any key except those that close the window or move the focus counts as a tap. */
bool TTapPad::TakesKey(const char* bytes) const {
  return bytes[0] != B_ESCAPE && bytes[0] != B_TAB && bytes[0] != B_RETURN;
}

void TTapPad::KeyDown(const char* bytes, int32 count) {
  const BMessage* const key = Window() ? Window()->CurrentMessage() : nullptr;
  if (key == nullptr || count < 1 || !TakesKey(bytes)) return BView::KeyDown(bytes, count);
  int64 whenUs = 0;
  if (key->GetInt32("key_repeat") == 0 && key->FindInt64("when", &whenUs) == B_OK) fTapsMs.push_back(whenUs / kUsPerMs);
}

void TTapPad::MessageReceived(BMessage* message) {
  if (message->what != kMsgTapLightEnd) return BView::MessageReceived(message);
  fIsLit = false;
  Invalidate();
}

void TTapPad::Draw(BRect) {
  SetHighColor(fIsLit ? kLight : kDark);
  FillRect(Bounds());
  SetHighColor(fIsLit ? kOnLight : kOnDark);
  const std::string count = std::to_string(CountClicks()) + " / " + std::to_string(TClickTrack::kClicks);
  BFont font;
  GetFont(&font);
  font_height height;
  font.GetHeight(&height);
  DrawString(count, BPoint{(Bounds().Width() - font.StringWidth(count)) / 2,
                           (Bounds().Height() + height.ascent - height.descent) / 2});
}
