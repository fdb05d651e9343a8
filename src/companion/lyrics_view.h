#pragma once

#include "lyrics/line_times.h"
#include "platform/interface/view.h"
#include "platform/support/types.h"

#include <memory>
#include <string>
#include <vector>

class BMessageRunner;

/** The lyrics of a song: the line that is sung stands large in the middle, those before and after it dimmed above and
    below. Lyrics without times stand there plain, and are scrolled by the arrow keys. On the window's thread. */
class TLyricsView : public BView {
public:
  explicit TLyricsView(BRect frame);
  ~TLyricsView() override;

  /** `instead`: what is shown when there are none. */
  void SetLines(const std::vector<std::string>& lines, const std::string& instead);
  void SetPosition(int32 positionMs);
  /** The line that is sung, or what is shown instead of lyrics; empty while none is. */
  std::string CurrentLine() const;
  /** Takes font and colours from the settings again. */
  void SetAppearance();

  void AttachedToWindow() override { SetAppearance(); }
  void FrameResized(float width, float height) override;
  void KeyDown(const char* bytes, int32 count) override;
  void MessageReceived(BMessage* message) override;
  void Draw(BRect updateRect) override;

private:
  /** One row of text; `top` counts from the middle of the view. */
  struct TRow {
    int32 line;
    float top;
    std::string text;
    float width;
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
  void ShowAgain();
  /** The middle of the line as it stands there; 0 when it does not. */
  float MiddleOf(int32 line) const;
  void MoveTo(int32 line);
  void MoveOn();
  void ScrollBy(int32 lines);
  rgb_color ColorOf(int32 line) const;

  std::vector<std::string> fLines; // without their tags
  std::string fInstead;
  TLineTimes fLineTimes;
  bool fIsTimed = false;
  int32 fCurrent = -1; // the line that is sung, or of a plain text the topmost
  int32 fPositionMs = 0;
  TFace fSmall;
  TFace fLarge;
  std::vector<TRow> fRows; // those that can be seen, and a few more
  float fShift = 0;        // how far they stand from their places, while they move there
  float fShiftBegan = 0;
  bigtime_t fMoveBeganUs = 0;
  std::unique_ptr<BMessageRunner> fMover;
};
