#pragma once

#include "platform/interface/view.h"
#include "plugin/pref.h"

/** Three sample lines, the middle one selected, with the font and colours being edited. */
class TLyricsPreview : public BView {
public:
  TLyricsPreview();

  void SetLook(const TPrefValues& look);
  BPoint PreferredSize() override;
  void AttachedToWindow() override { Invalidate(); }
  void FrameResized(float width, float height) override;
  void Draw(BRect updateRect) override;

private:
  void DrawRow(BRect row, const std::string& text, bool isActive, float ascent);

  TPrefValues fLook;
};
