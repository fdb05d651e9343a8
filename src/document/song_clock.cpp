#include "document/song_clock.h"

#include "hostlink/host_link.h"
#include "language/llt.h"
#include "platform/app/message.h"
#include "platform/interface/control_peer.h"
#include "platform/interface/slider.h"
#include "platform/interface/string_view.h"
#include "plugin/message_codes.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr float kSeekBarWidth = 120;
constexpr float kGap = 6;
constexpr const char* kWidestTime = "000:00 / 000:00";

std::string minutes_and_seconds(int32 timeMs) {
  char text[16];
  std::snprintf(text, sizeof text, "%02d:%02d", static_cast<int>(timeMs / 60000), static_cast<int>(timeMs / 1000 % 60));
  return text;
}

} // namespace

TSongClock::TSongClock(BView* parent, BRect statusBar, Sonivo_FrontEnd* frontEnd) : fFrontEnd(frontEnd) {
  constexpr uint32 kBottomRight = B_FOLLOW_RIGHT | B_FOLLOW_BOTTOM;
  fTime = new BStringView(statusBar, "SongTime", "", kBottomRight);
  fTime->SetAlignment(B_ALIGN_RIGHT);
  fTime->Hide();
  parent->AddChild(fTime);
  fSeekBar =
      new BSlider(statusBar, "SeekBar", gLLT->Text("Label_Seek_Bar"), new BMessage(kMsgSeekInSong), kBottomRight);
  fSeekBar->Hide();
  parent->AddChild(fSeekBar);
}

void TSongClock::SetShown(bool isShown) {
  if (isShown == fIsShown) return;
  fIsShown = isShown;
  fText = kWidestTime;
  fTime->SetText(kWidestTime);
  fTimeWidth = fTime->PreferredSize().x;
  isShown ? fTime->Show() : fTime->Hide();
  isShown ? fSeekBar->Show() : fSeekBar->Hide();
  Update();
}

BRect TSongClock::PlaceIn(BRect bar) {
  if (!fIsShown) return bar;
  BRect place = bar;
  place.left = place.right - kSeekBarWidth;
  fSeekBar->MoveTo(place.LeftTop());
  fSeekBar->ResizeTo(place.Width(), place.Height());
  place.right = place.left - kGap;
  place.left = place.right - fTimeWidth;
  fTime->MoveTo(place.LeftTop());
  fTime->ResizeTo(place.Width(), place.Height());
  bar.right = place.left - kGap;
  return bar;
}

void TSongClock::Update() {
  if (!fIsShown) return;
  const int32 durationMs = fFrontEnd->DurationMs();
  const int32 positionMs = std::clamp(fFrontEnd->PositionMs(), int32{0}, std::max(durationMs, int32{0}));
  const std::string text =
      durationMs > 0 ? minutes_and_seconds(positionMs) + " / " + minutes_and_seconds(durationMs) : std::string();
  if (text != fText) fTime->SetText(text.c_str());
  fText = text;
  const int32 value = durationMs > 0 ? static_cast<int32>(int64{positionMs} * display::kSliderSteps / durationMs) : 0;
  if (value != fValue) fSeekBar->SetValue(value);
  fValue = value;
  if (fSeekBar->IsEnabled() != (durationMs > 0)) fSeekBar->SetEnabled(durationMs > 0);
}

void TSongClock::Seek() {
  fValue = fSeekBar->Value();
  fFrontEnd->SeekTo(static_cast<int32>(int64{fFrontEnd->DurationMs()} * fValue / display::kSliderSteps));
}

void TSongClock::LanguageChanged() {
  fSeekBar->SetLabel(gLLT->Text("Label_Seek_Bar"));
}
