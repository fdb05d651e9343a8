#pragma once

#include "player/model/player_state.h"

#include <QSlider>

/** The song from left to right: its loudness, where it is, the part that is repeated, and under it a mark for every
    tagged line. Goes where it is clicked; a click on a mark goes there exactly. In ms. `valueChanged` is the user's
    wish alone. */
class TSeekBar : public QSlider {
public:
  TSeekBar();

  void ShowSong(const TPlayerState& state);
  void ShowPosition(int32 positionMs);
  /** Of each part of the song, 0 to 255; empty while it is not known. */
  void ShowLoudness(std::vector<unsigned char> loudness);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void sliderChange(SliderChange change) override;

private:
  void DrawLoudness(QPainter* painter, const QRect& dirty) const;
  void DrawRepeat(QPainter* painter) const;
  void DrawMarks(QPainter* painter) const;
  void DrawPlace(QPainter* painter) const;
  QRect Wave() const;
  double XOf(int32 timeMs) const;
  /** The moment under the pointer: a mark's own where it points at one. */
  int32 MomentAt(QPointF where) const;
  /** Null where no mark is. */
  const int32* MarkAt(QPointF where) const;
  void ShowMoment(const QPointF& where, const QPoint& onScreen);

  std::vector<unsigned char> fLoudness;
  std::shared_ptr<const std::vector<int32>> fMarksMs;
  int32 fRepeatFromMs = -1;
  int32 fRepeatToMs = -1;
  int fShownX = 0;
};
