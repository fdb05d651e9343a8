#pragma once

#include "player/model/player_state.h"

#include <QSlider>

/** Seek bar with the song's waveform, the position, the A-B repeat, and a mark below for each tagged line. Clicking
    seeks there; clicking a mark seeks to its exact time. Values are in ms; `valueChanged` is emitted for actions of the
    user only. Display thread. */
class TSeekBar : public QSlider {
public:
  TSeekBar();

  void ShowSong(const TPlayerState& state);
  void ShowPosition(int32 positionMs);
  /** 0 to 255 per part of the song; empty while unknown. */
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
  void changeEvent(QEvent* event) override;

private:
  void ShowTexts();
  void DrawLoudness(QPainter* painter, const QRect& dirty) const;
  void DrawRepeat(QPainter* painter) const;
  void DrawMarks(QPainter* painter) const;
  void DrawPlace(QPainter* painter) const;
  QRect Wave() const;
  double XOf(int32 timeMs) const;
  /** The time under the pointer; that of a mark if it points at one. */
  int32 MomentAt(QPointF where) const;
  /** Null if there is none. */
  const int32* MarkAt(QPointF where) const;
  void ShowMoment(const QPointF& where, const QPoint& onScreen);

  std::vector<unsigned char> fLoudness;
  std::shared_ptr<const std::vector<int32>> fMarksMs;
  int32 fRepeatFromMs = -1;
  int32 fRepeatToMs = -1;
  int fShownX = 0;
};
