#include "companion/prefs/lyrics_preview.h"

#include "family/appearance.h"
#include "language/llt.h"

namespace {
constexpr BPoint kSize{299, 89};
constexpr const char* kTags[] = {"[00:12:34]", "[00:15:08]", "[00:18:50]"};
constexpr int kActiveRow = 1;
} // namespace

TLyricsPreview::TLyricsPreview() : BView({}, "Preview", B_FOLLOW_LEFT_TOP, B_WILL_DRAW | B_FRAME_EVENTS) {}

void TLyricsPreview::SetLook(const TPrefValues& look) {
  fLook = look;
  const BFont font = lyrics_font(BFont(), look);
  SetFont(&font);
  SetAccessibleName(gLLT->Text("Pref_Preview"));
  Invalidate();
}

BPoint TLyricsPreview::PreferredSize() {
  return kSize;
}

void TLyricsPreview::FrameResized(float, float) {
  Invalidate();
}

void TLyricsPreview::Draw(BRect) {
  SetHighColor(fLook.background);
  FillRect(Bounds());
  BFont font;
  GetFont(&font);
  font_height height;
  font.GetHeight(&height);
  BRect row = Bounds();
  for (int i = 0; i < 3; ++i) {
    row.bottom = row.top + height.ascent + height.descent;
    DrawRow(row, std::string(kTags[i]) + gLLT->Text("Pref_Sample_Line"), i == kActiveRow, height.ascent);
    row.top = row.bottom + 1;
  }
}

void TLyricsPreview::DrawRow(BRect row, const std::string& text, bool isActive, float ascent) {
  if (isActive) {
    SetHighColor(fLook.activeBackground);
    FillRect(row);
  }
  if (isActive && fLook.useActiveFrame) {
    SetHighColor(fLook.activeFrame);
    StrokeRect(row);
  }
  SetHighColor(isActive ? fLook.activeLyrics : fLook.lyrics);
  DrawString(text, BPoint{row.left, row.top + ascent});
}
