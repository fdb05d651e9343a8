#pragma once

#include "lane/lane_colors.h"
#include "lane/lane_model.h"
#include "lane/lane_pixels.h"
#include "platform/interface/pixel_view.h"

#include <memory>
#include <optional>
#include <string>

/** What the user does in the lane. On the window's thread. */
class TLaneListener {
public:
  TLaneListener() = default;
  TLaneListener(const TLaneListener&) = delete;
  TLaneListener& operator=(const TLaneListener&) = delete;
  virtual ~TLaneListener() = default;

  virtual void TagMoved(const TLaneMove& move) = 0;
  /** The selected line, which has no tag, gets one. */
  virtual void TagPlaced(int32 timeMs) = 0;
  virtual void PlayFrom(int32 timeMs) = 0;
  /** A neighbour's tag was clicked. */
  virtual void RowChosen(int32 row) = 0;
  virtual void LookToggled() = 0;
  /** The user is done with it: the focus goes back to the lyrics. */
  virtual void LaneLeft() = 0;
  /** Another marker is chosen, or it has moved. */
  virtual void Describe(const std::string& text) = 0;
};

/** The lane: the sound around the selected line with its tags, which mouse and keys move. The sound is rendered again
    only when range, size, colours or the sound itself have changed. On the window's thread. */
class TLaneView : public BPixelView {
public:
  /** `listener` is not owned. */
  TLaneView(BRect frame, uint32 resizingMode, TLaneListener* listener);

  void SetLyrics(const TLaneLyrics& lyrics);
  void SetSound(std::shared_ptr<const TSongSound> sound);
  /** In place of the sound, or with it; empty for none. */
  void SetText(const std::string& text);
  void SetColors(const TLaneColors& colors);
  void SetLook(TLaneLook look);
  /** Where the song plays; nothing while it does not. To be called at every poll. */
  void SetHead(std::optional<int32> headMs, bool follows);
  const TLaneModel& Model() const { return fModel; }
  void LanguageChanged();

  void AllAttached() override;
  void FrameResized(float width, float height) override;
  void KeyDown(const char* bytes, int32 count) override;

protected:
  void MouseDown(BPoint where, uint32 modifiers) override;
  void MouseDoubled(BPoint where, uint32 modifiers) override;
  void MouseDragged(BPoint where, uint32 modifiers) override;
  void MouseUp(BPoint where, uint32 modifiers) override;
  void WheelTurned(BPoint where, float steps, uint32 modifiers) override;
  void ScaleChanged() override { Render(); }

private:
  double Width() const { return static_cast<double>(Bounds().Width()) + 1; }
  int32 TimeAt(float x) const { return fModel.Range().TimeAt(static_cast<double>(x), Width()); }
  int32 SnapReachMs(uint32 modifiers) const;
  bool MoveByKey(uint8 byte, uint32 modifiers);
  bool ViewByKey(uint8 byte, uint32 modifiers);
  void Choose(bool isLater);
  void Move(const std::optional<TLaneMove>& move);
  void PlayFromChosen();
  void PlaceTagAtHead();
  void PlaceTag(int32 timeMs, int32 reachMs);
  void Zoom(double factor, int32 aboutMs);
  void RangeChanged();
  void Render();
  void DrawMarkers();
  void ShowHead();
  std::string Description() const;
  /** For screen readers and the status bar. */
  void DescribeChosen(bool isReported);

  TLaneListener* const fListener;
  TLaneModel fModel;
  TLaneColors fColors;
  TLaneLook fLook = TLaneLook::kSpectrogram;
  std::string fText;
  std::optional<int32> fHeadMs;
  std::string fDescription;
};
