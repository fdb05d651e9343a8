#include "lane/lane_view.h"

#include "lane/lane_overlay.h"
#include "language/llt.h"
#include "lyrics/time_tags.h"
#include "platform/app/message.h"
#include "platform/interface/window.h"
#include "platform/kernel/modifiers.h"

#include <cmath>

namespace {

/** In pixels. */
constexpr double kSnapReach = 8;
constexpr double kGrabReach = 5;
constexpr double kZoomStep = 1.25;
constexpr double kPanPart = 0.1;
constexpr int32 kStepMs = 10;
constexpr int32 kLargeStepMs = 100;

uint32 modifiers_of(const BWindow* window) {
  const BMessage* const event = window ? window->CurrentMessage() : nullptr;
  return event ? static_cast<uint32>(event->GetInt32("modifiers")) : 0;
}

const char* key_of(TMarkerKind kind) {
  switch (kind) {
  case TMarkerKind::kWord:
    return "Lane_Word_Tag";
  case TMarkerKind::kEnd:
    return "Lane_End_Tag";
  case TMarkerKind::kLine:
    break;
  }
  return "Lane_Line_Tag";
}

} // namespace

TLaneView::TLaneView(BRect frame, uint32 resizingMode, TLaneListener* listener)
    : BPixelView(frame, "Lane", resizingMode), fListener(listener) {
  LanguageChanged();
}

void TLaneView::LanguageChanged() {
  SetAccessibleName(gLLT->Text("Lane_Name"));
  SetToolTip(gLLT->Text("Lane_Tip"));
  DescribeChosen(false);
}

void TLaneView::AllAttached() {
  Render();
}

void TLaneView::FrameResized(float, float) {
  Render();
}

void TLaneView::SetLyrics(const TLaneLyrics& lyrics) {
  const TLaneRange before = fModel.Range();
  fModel.SetLyrics(lyrics);
  fModel.Range() == before ? DrawMarkers() : RangeChanged();
  DescribeChosen(false);
}

void TLaneView::SetSound(std::shared_ptr<const TSongSound> sound) {
  fModel.SetSound(std::move(sound));
  Render();
}

void TLaneView::SetText(const std::string& text) {
  if (text == fText) return;
  fText = text;
  DescribeChosen(false);
  DrawMarkers();
}

void TLaneView::SetColors(const TLaneColors& colors) {
  fColors = colors;
  Render();
}

void TLaneView::SetLook(TLaneLook look) {
  fLook = look;
  Render();
}

void TLaneView::SetHead(std::optional<int32> headMs, bool follows) {
  const bool isTurned = fModel.Follow(follows ? headMs : std::nullopt);
  fHeadMs = headMs;
  isTurned ? RangeChanged() : ShowHead();
}

void TLaneView::ShowHead() {
  const bool isShown = fHeadMs && fModel.Range().Contains(*fHeadMs);
  const auto x =
      isShown ? std::optional(static_cast<float>(std::round(fModel.Range().XOf(*fHeadMs, Width())))) : std::nullopt;
  SetLine(x, fColors.head);
}

void TLaneView::RangeChanged() {
  Render();
}

void TLaneView::Render() {
  if (!Window()) return;
  const double scale = static_cast<double>(Scale());
  const auto pixels = [scale](double points) { return static_cast<int32>(std::lround(points * scale)); };
  SetPixels(sound_pixels(fModel.Sound(), fModel.Range(), fLook, fColors, pixels(Width()),
                         pixels(static_cast<double>(Bounds().Height()) + 1),
                         pixels(static_cast<double>(kLaneLabelHeight))));
  DrawMarkers();
}

void TLaneView::DrawMarkers() {
  SetOverlay(lane_overlay(fModel, fColors, {Bounds().Width() + 1, Bounds().Height() + 1}, fText));
  std::vector<float> handles;
  for (const TLaneMarker& each : fModel.Markers())
    if (each.isMovable && fModel.Range().Contains(each.timeMs))
      handles.push_back(static_cast<float>(fModel.Range().XOf(each.timeMs, Width())));
  SetHandles(std::move(handles));
  ShowHead();
}

void TLaneView::MouseDown(BPoint where, uint32) {
  const int32 timeMs = TimeAt(where.x);
  const TLaneMarker* const marker = fModel.MarkerNear(timeMs, fModel.Range().Duration(kGrabReach, Width()));
  if (!marker) return fListener->PlayFrom(timeMs);
  if (!marker->isMovable) return fListener->RowChosen(marker->row);
  fModel.Grab(*marker);
  DrawMarkers();
}

int32 TLaneView::SnapReachMs(uint32 modifiers) const {
  return (modifiers & B_SHIFT_KEY) ? 0 : fModel.Range().Duration(kSnapReach, Width());
}

/** Its first press has begun to play there. */
void TLaneView::MouseDoubled(BPoint where, uint32 modifiers) {
  const int32 timeMs = TimeAt(where.x);
  const bool isOnMarker = fModel.MarkerNear(timeMs, fModel.Range().Duration(kGrabReach, Width())) != nullptr;
  if (isOnMarker || fModel.Chosen()) return MouseDown(where, modifiers);
  PlaceTag(timeMs, SnapReachMs(modifiers));
}

void TLaneView::MouseDragged(BPoint where, uint32 modifiers) {
  if (!fModel.IsDragging()) return;
  fModel.DragTo(TimeAt(where.x), {(modifiers & B_COMMAND_KEY) != 0, SnapReachMs(modifiers)});
  DrawMarkers();
  DescribeChosen(true);
}

void TLaneView::MouseUp(BPoint, uint32) {
  if (!fModel.IsDragging()) return;
  Move(fModel.Drop());
  DrawMarkers();
  DescribeChosen(true);
}

void TLaneView::WheelTurned(BPoint where, float steps, uint32 modifiers) {
  const double turned = static_cast<double>(steps);
  if ((modifiers & B_SHIFT_KEY) == 0) return Zoom(std::pow(kZoomStep, -turned), TimeAt(where.x));
  fModel.Pan(static_cast<int32>(-turned * kPanPart * fModel.Range().Length()));
  RangeChanged();
}

void TLaneView::Zoom(double factor, int32 aboutMs) {
  fModel.Zoom(factor, aboutMs);
  RangeChanged();
}

void TLaneView::KeyDown(const char* bytes, int32 count) {
  const uint32 modifiers = modifiers_of(Window());
  const auto byte = static_cast<uint8>(count == 1 ? bytes[0] : 0);
  if (!MoveByKey(byte, modifiers) && !ViewByKey(byte, modifiers)) BPixelView::KeyDown(bytes, count);
}

/** With Ctrl, plus and minus zoom. */
bool TLaneView::MoveByKey(uint8 byte, uint32 modifiers) {
  const bool isCommand = (modifiers & B_COMMAND_KEY) != 0;
  const bool isArrow = byte == B_UP_ARROW || byte == B_DOWN_ARROW;
  if (isArrow || (!isCommand && (byte == '+' || byte == '-'))) {
    const int32 sizeMs = isArrow && (modifiers & B_SHIFT_KEY) ? kLargeStepMs : kStepMs;
    const bool isLater = byte == B_UP_ARROW || byte == '+';
    Move(fModel.Nudged(isLater ? sizeMs : -sizeMs, isArrow && isCommand));
    return true;
  }
  if (byte == 't' || byte == 'T') return PlaceTagAtHead(), true;
  if (byte != 's' && byte != 'S') return false;
  Move(fModel.Snapped());
  return true;
}

bool TLaneView::ViewByKey(uint8 byte, uint32 modifiers) {
  const TLaneMarker* const chosen = fModel.Chosen();
  const int32 aboutMs = chosen ? chosen->timeMs : fModel.Range().fromMs + fModel.Range().Length() / 2;
  switch (byte) {
  case B_LEFT_ARROW:
  case B_RIGHT_ARROW:
    Choose(byte == B_RIGHT_ARROW);
    return true;
  case B_RETURN:
    PlayFromChosen();
    return true;
  case B_ESCAPE:
    if (!fModel.IsDragging()) fListener->LaneLeft();
    fModel.CancelDrag();
    DrawMarkers();
    return true;
  case 'w':
  case 'W':
    fListener->LookToggled();
    return true;
  case '+':
  case '-':
    Zoom(byte == '+' ? 1 / kZoomStep : kZoomStep, aboutMs);
    return true;
  case '0':
    if ((modifiers & B_COMMAND_KEY) == 0) return false;
    fModel.ResetZoom();
    RangeChanged();
    return true;
  default:
    return false;
  }
}

void TLaneView::Choose(bool isLater) {
  const TLaneRange before = fModel.Range();
  if (!fModel.ChooseNext(isLater)) return;
  fModel.Range() == before ? DrawMarkers() : RangeChanged();
  DescribeChosen(true);
}

void TLaneView::PlayFromChosen() {
  if (const TLaneMarker* const chosen = fModel.Chosen()) fListener->PlayFrom(chosen->timeMs);
}

void TLaneView::PlaceTagAtHead() {
  if (!fHeadMs) return fListener->Describe(gLLT->Text("Lane_No_Song"));
  PlaceTag(*fHeadMs, 0);
}

void TLaneView::PlaceTag(int32 timeMs, int32 reachMs) {
  if (const auto placeMs = fModel.NewTagTime(timeMs, reachMs)) fListener->TagPlaced(*placeMs);
  DescribeChosen(true);
}

void TLaneView::Move(const std::optional<TLaneMove>& move) {
  if (!move) return;
  fListener->TagMoved(*move);
  DescribeChosen(true);
}

std::string TLaneView::Description() const {
  const TLaneMarker* const chosen = fModel.Chosen();
  if (!chosen) return gLLT->Text("Lane_No_Tag");
  std::string time;
  time_to_time_tag(fModel.ShownTime(*chosen) + fModel.OffsetMs(), &time, !chosen->isWholeSeconds);
  return gLLT->Text(key_of(chosen->kind)) + time + (chosen->text.empty() ? "" : "  “" + chosen->text + "”");
}

void TLaneView::DescribeChosen(bool isReported) {
  const std::string chosen = Description();
  std::string description = fText.empty() ? chosen : fText + "  " + chosen;
  if (isReported) fListener->Describe(chosen);
  if (description == fDescription) return;
  fDescription = std::move(description);
  SetAccessibleDescription(fDescription);
}
