#pragma once

#include "lyrics/line_times.h"
#include "platform/interface/view.h"
#include "platform/support/types.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

class BMessageRunner;

/** The lyrics of a song: the current line large in the middle, the others dimmed above and below it. Lyrics without
    time tags are shown as plain text and scrolled with the arrow keys. To be used on the window's thread. */
class TLyricsView : public BView {
public:
  explicit TLyricsView(BRect frame);
  ~TLyricsView() override;

  /** `placeholder` is shown when there are no lines. */
  void SetLines(const std::vector<std::string>& lines, const std::string& placeholder);
  void SetPosition(int32 positionMs);
  /** The line being sung, or the placeholder; empty before the first line. */
  std::string CurrentLine() const;
  /** Takes font and colours from the settings. */
  void SetAppearance();

  void AttachedToWindow() override { SetAppearance(); }
  void FrameResized(float width, float height) override;
  void KeyDown(const char* bytes, int32 count) override;
  void MessageReceived(BMessage* message) override;
  void Draw(BRect updateRect) override;

private:
  /** One row of text; `top` is relative to the middle of the view. */
  struct TRow {
    int32 line;
    float top;
    std::string text;
    float width;
    size_t at = 0; // in bytes of the line
  };
  struct TFace {
    BFont font;
    font_height height;
    float RowHeight() const { return height.ascent + height.descent + height.leading; }
  };

  const TFace& FaceOf(int32 line) const { return fIsTimed && line == fCurrent ? fLarge : fSmall; }
  std::vector<TRow> RowsOf(int32 line) const;
  float HeightOf(const std::vector<TRow>& rows, int32 line) const;
  void LayOut();
  void Update();
  /** Where the middle of the line is drawn now; 0 if it is not laid out. */
  float MiddleOf(int32 line) const;
  void AnimateTo(int32 line);
  void AnimationStep();
  void ScrollBy(int32 lines);
  rgb_color ColorOf(int32 line) const;
  /** The sung part of the current line, in bytes; all of it without times of its words. */
  size_t SungBytes() const;
  void DrawRow(const TRow& row, const TFace& face, float baseLine, size_t sungBytes);

  std::vector<std::string> fLines;         // without their tags
  std::map<int32, std::string> fWordLines; // those with times within them, as written
  std::string fPlaceholder;
  TLineTimes fLineTimes;
  bool fIsTimed = false;
  int32 fCurrent = -1; // the line being sung; in a plain text the topmost one
  int32 fPositionMs = 0;
  size_t fSungBytes = SIZE_MAX; // of the current line, as drawn
  TFace fSmall;
  TFace fLarge;
  std::vector<TRow> fRows; // the visible ones and a few more
  float fShift = 0;        // current distance of the rows from their places, during the animation
  float fShiftAtStart = 0;
  bigtime_t fAnimationStartUs = 0;
  std::unique_ptr<BMessageRunner> fAnimation;
};
