#include "lane/lane_overlay.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace {

constexpr float kBaseline = 12;
constexpr float kLabelPoints = 8;
constexpr float kLabelGap = 4;
constexpr float kNarrowestLabel = 10;
constexpr float kLowestOnset = 3;
constexpr float kHighestOnset = 10;
constexpr float kTextMargin = 8;
/** A label is cut by the next marker, but not one of a longer text than anybody reads there. */
constexpr size_t kMostLabelBytes = 200;
/** More onsets in sight than that are no help. */
constexpr int kMostOnsets = 400;

class TOverlay {
public:
  TOverlay(const TLaneModel& model, const TLaneColors& colors, BPoint size)
      : fModel(model), fColors(colors), fSize(size) {
    fFont.SetSize(kLabelPoints);
  }

  /** Sets it off from the lyrics, which have the same background. */
  void DrawEdge() { Fill(0, 0, fSize.x, 1, fColors.neighbour); }

  void DrawOnsets() {
    const TSongSound* const sound = fModel.Sound();
    if (!sound) return;
    const std::vector<TOnset>& onsets = sound->Onsets();
    auto each = std::ranges::lower_bound(onsets, fModel.Range().fromMs, {}, &TOnset::timeMs);
    for (int count = 0; each != onsets.end() && each->timeMs < fModel.Range().toMs && count < kMostOnsets;
         ++each, ++count)
      DrawOnset(*each);
  }

  void DrawOnset(const TOnset& onset) {
    const float height =
        std::round(kLowestOnset + (kHighestOnset - kLowestOnset) * static_cast<float>(onset.strength) / 255);
    Fill(std::round(XOf(onset.timeMs)), fSize.y - height, 1, height, fColors.onset);
  }

  /** Those of the neighbours first, so that the line's own ones are over them. */
  void DrawMarkers() {
    for (const bool isMovable : {false, true})
      for (size_t i = 0; i < fModel.Markers().size(); ++i)
        if (fModel.Markers()[i].isMovable == isMovable) DrawMarker(i);
  }

  void DrawText(const std::string& text) {
    String(text, kTextMargin, std::round(fSize.y / 2) + kBaseline / 2, fSize.x - 2 * kTextMargin, fColors.text);
  }

  BPicture Take() { return std::move(fPicture); }

private:
  float XOf(int32 timeMs) const { return static_cast<float>(fModel.Range().XOf(timeMs, static_cast<double>(fSize.x))); }

  void DrawMarker(size_t index) {
    const TLaneMarker& marker = fModel.Markers()[index];
    const float x = std::round(XOf(fModel.ShownTime(marker)));
    if (x < -fSize.x || x > fSize.x) return;
    const TLaneMarker* const chosen = fModel.Chosen();
    const bool isChosen = chosen && marker.IsSame(*chosen);
    const rgb_color color = isChosen ? fColors.chosen : marker.isMovable ? fColors.tag : fColors.neighbour;
    const float top = marker.kind == TMarkerKind::kLine ? 0 : kLaneLabelHeight;
    Fill(isChosen ? x - 1 : x, top, isChosen ? 3 : 1, fSize.y - top, color);
    if (isChosen) Fill(x - 3, kLaneLabelHeight, 7, 5, color);
    if (!marker.text.empty() && !IsCovered(index)) DrawLabel(marker, x);
  }

  void DrawLabel(const TLaneMarker& marker, float x) {
    const float left = std::max(x, 0.0F) + kLabelGap;
    const float room = LabelEnd(marker) - left;
    if (room < kNarrowestLabel) return;
    const bool isQuiet = !marker.isMovable;
    String(marker.text.substr(0, kMostLabelBytes), left, kBaseline, room, isQuiet ? fColors.neighbour : fColors.text);
  }

  /** Of several tags at one time, one has a label. */
  bool IsCovered(size_t index) const {
    const TLaneMarker& marker = fModel.Markers()[index];
    for (size_t i = 0; i < fModel.Markers().size(); ++i) {
      const TLaneMarker& other = fModel.Markers()[i];
      if (i == index || other.text.empty() || fModel.ShownTime(other) != fModel.ShownTime(marker)) continue;
      if (other.isMovable == marker.isMovable ? i < index : other.isMovable) return true;
    }
    return false;
  }

  /** Where the next marker with a label is. */
  float LabelEnd(const TLaneMarker& marker) const {
    float end = fSize.x;
    const float x = XOf(fModel.ShownTime(marker));
    for (const TLaneMarker& each : fModel.Markers()) {
      const float other = XOf(fModel.ShownTime(each));
      if (!each.text.empty() && !each.IsSame(marker) && other > x) end = std::min(end, other);
    }
    return end;
  }

  void Fill(float x, float y, float width, float height, rgb_color color) {
    fPicture.ops.push_back({picture_op::kind::fill_rect, color, {x, y, x + width - 1, y + height - 1}, {}, {}});
  }

  void String(const std::string& text, float x, float y, float maxWidth, rgb_color color) {
    fPicture.ops.push_back({picture_op::kind::string, color, {x, y, x, y}, text, fFont, maxWidth});
  }

  const TLaneModel& fModel;
  const TLaneColors& fColors;
  const BPoint fSize;
  BFont fFont;
  BPicture fPicture;
};

} // namespace

BPicture lane_overlay(const TLaneModel& model, const TLaneColors& colors, BPoint size, const std::string& text) {
  TOverlay overlay(model, colors, size);
  overlay.DrawEdge();
  overlay.DrawOnsets();
  overlay.DrawMarkers();
  if (!text.empty()) overlay.DrawText(text);
  return overlay.Take();
}
