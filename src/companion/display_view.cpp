#include "companion/display_view.h"

#include "companion/wrap_text.h"
#include "family/appearance.h"
#include "language/llt.h"
#include "lyrics/sung_lines.h"
#include "platform/app/message.h"
#include "platform/app/message_runner.h"
#include "platform/kernel/threads.h"
#include "plugin/message_codes.h"
#include "plugin/pref.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr bigtime_t kFrameUs = 16000;
constexpr bigtime_t kMoveUs = 250000;
/** A display is looked at from farther away than an editor. */
constexpr float kSmallPerEditor = 1.5F;
constexpr float kLargePerSmall = 1.5F;
/** A level of the setting "FntL". */
constexpr float kSizePerLevel = 1.2F;
constexpr int32 kLastLevel = 8;
constexpr float kMargin = 16;
/** Between two lines, in rows. */
constexpr float kGap = 0.3F;
constexpr int32 kPageLines = 8;
/** How much of their colour is left to the lines that come, and to those that are over. */
constexpr float kComing = 0.72F;
constexpr float kOver = 0.4F;

rgb_color mixed(rgb_color ink, rgb_color ground, float share) {
  const auto mix = [share](uint8 a, uint8 b) {
    return static_cast<uint8>(std::lround(static_cast<float>(a) * share + static_cast<float>(b) * (1 - share)));
  };
  return {mix(ink.red, ground.red), mix(ink.green, ground.green), mix(ink.blue, ground.blue), 255};
}

BFont sized(BFont font, float size) {
  font.SetSize(size);
  return font;
}

/** Lines that are not sung, such as headers, stay as they are. */
std::string without_tags(const std::string& line) {
  const TTaggedLine parts = take_apart(line);
  return parts.timesMs.empty() ? line : parts.Text();
}

} // namespace

TDisplayView::TDisplayView(BRect frame)
    : BView(frame, "Display", B_FOLLOW_ALL_SIDES, B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE) {}

TDisplayView::~TDisplayView() = default;

void TDisplayView::SetAppearance() {
  const auto look = gPref->Values();
  const auto level = static_cast<float>(std::clamp(look->fontLevel, -kLastLevel, kLastLevel));
  const BFont font = lyrics_font(BFont(), *look);
  const float small = std::max(font.Size(), 1.0F) * kSmallPerEditor * std::pow(kSizePerLevel, level);
  fSmall.font = sized(font, small);
  fLarge.font = sized(font, small * kLargePerSmall);
  for (TFace* face : {&fSmall, &fLarge}) face->font.GetHeight(&face->height);
  SetViewColor(look->background);
  ShowAgain();
}

void TDisplayView::SetLines(const std::vector<std::string>& lines, const std::string& instead) {
  fInstead = instead;
  fLines.clear();
  fLineTimes.Clear();
  for (const std::string& line : lines) {
    fLines.push_back(without_tags(line));
    fLineTimes.Append(line);
  }
  fIsTimed = fLineTimes.HasTimes();
  fMover.reset();
  fShift = 0;
  fCurrent = fIsTimed ? fLineTimes.RowAt(fPositionMs) : 0;
  ShowAgain();
}

void TDisplayView::SetPosition(int32 positionMs) {
  fPositionMs = positionMs;
  if (!fIsTimed) return;
  const int32 line = fLineTimes.RowAt(positionMs);
  if (line != fCurrent) MoveTo(line);
}

void TDisplayView::FrameResized(float width, float height) {
  BView::FrameResized(width, height);
  ShowAgain();
}

void TDisplayView::ShowAgain() {
  LayOut();
  SetAccessibleName(gLLT->Text("Label_Display"));
  SetAccessibleDescription(CurrentLine());
  Invalidate();
}

std::string TDisplayView::CurrentLine() const {
  if (fLines.empty()) return fInstead;
  return fIsTimed && fCurrent >= 0 ? fLines[static_cast<size_t>(fCurrent)] : std::string();
}

std::vector<TDisplayView::TRow> TDisplayView::RowsOf(int32 line) const {
  const BFont& font = FaceOf(line).font;
  const std::string& text = fLines.empty() ? fInstead : fLines[static_cast<size_t>(line)];
  const auto measure = [&font](std::string_view part) { return font.StringWidth(part); };
  std::vector<TRow> rows;
  for (std::string& row : wrap_text(text, std::max(1.0F, Bounds().Width() - 2 * kMargin), measure)) {
    const float width = measure(row);
    rows.push_back({line, static_cast<float>(rows.size()) * FaceOf(line).RowHeight(), std::move(row), width});
  }
  return rows;
}

float TDisplayView::HeightOf(const std::vector<TRow>& rows, int32 line) const {
  return static_cast<float>(rows.size()) * FaceOf(line).RowHeight();
}

/** From the line that is sung up and down, a window's height more than can be seen: while the lines move. */
void TDisplayView::LayOut() {
  fRows.clear();
  const float gap = fSmall.RowHeight() * kGap;
  const auto count = std::max(int32{1}, static_cast<int32>(fLines.size()));
  const int32 anchor = std::clamp(fCurrent, int32{0}, count - 1);
  const auto add = [this](std::vector<TRow> rows, float top) {
    for (TRow& row : rows) {
      row.top += top;
      fRows.push_back(std::move(row));
    }
  };
  std::vector<TRow> rows = RowsOf(anchor);
  const bool isPlain = !fIsTimed && !fLines.empty();
  float bottom = isPlain ? kMargin - Bounds().Height() / 2 : -HeightOf(rows, anchor) / 2;
  float top = bottom;
  for (int32 line = anchor;;) {
    const float height = HeightOf(rows, line);
    add(std::move(rows), bottom);
    bottom += height + gap;
    if (++line >= count || bottom > Bounds().Height()) break;
    rows = RowsOf(line);
  }
  for (int32 line = anchor - 1; !isPlain && line >= 0 && top > -Bounds().Height(); --line) {
    rows = RowsOf(line);
    top -= gap + HeightOf(rows, line);
    add(std::move(rows), top);
  }
}

float TDisplayView::MiddleOf(int32 line) const {
  float top = 0;
  float bottom = 0;
  bool isThere = false;
  for (const TRow& row : fRows) {
    if (row.line != line) continue;
    top = isThere ? std::min(top, row.top) : row.top;
    bottom = std::max(isThere ? bottom : row.top, row.top + FaceOf(line).RowHeight());
    isThere = true;
  }
  return isThere ? (top + bottom) / 2 + fShift : 0;
}

void TDisplayView::MoveTo(int32 line) {
  const float from = MiddleOf(std::max(line, int32{0}));
  fCurrent = line;
  fShiftBegan = fShift = from;
  fMoveBeganUs = system_time();
  const BMessage move(kMsgDisplayScroll);
  fMover.reset();
  if (fShift != 0) fMover = std::make_unique<BMessageRunner>(BMessenger(this), &move, kFrameUs);
  ShowAgain();
}

/** Fast at first and slow at the end. */
void TDisplayView::MoveOn() {
  const float done = std::min(1.0F, static_cast<float>(system_time() - fMoveBeganUs) / static_cast<float>(kMoveUs));
  const float left = 1 - done;
  fShift = fShiftBegan * left * left * left;
  if (done >= 1) fMover.reset();
  Invalidate();
}

void TDisplayView::MessageReceived(BMessage* message) {
  if (message->what != kMsgDisplayScroll) return BView::MessageReceived(message);
  if (fMover) MoveOn();
}

void TDisplayView::KeyDown(const char* bytes, int32 count) {
  switch (count > 0 ? bytes[0] : '\0') {
  case B_UP_ARROW:
    return ScrollBy(-1);
  case B_DOWN_ARROW:
    return ScrollBy(1);
  case B_PAGE_UP:
    return ScrollBy(-kPageLines);
  case B_PAGE_DOWN:
    return ScrollBy(kPageLines);
  default:
    BView::KeyDown(bytes, count);
  }
}

void TDisplayView::ScrollBy(int32 lines) {
  if (fIsTimed || fLines.empty()) return;
  fCurrent = std::clamp(fCurrent + lines, int32{0}, static_cast<int32>(fLines.size()) - 1);
  ShowAgain();
}

rgb_color TDisplayView::ColorOf(int32 line) const {
  const auto look = gPref->Values();
  if (fLines.empty()) return mixed(look->lyrics, look->background, kComing);
  if (!fIsTimed) return look->lyrics;
  if (line == fCurrent) return look->activeLyrics;
  return mixed(look->lyrics, look->background, line > fCurrent ? kComing : kOver);
}

void TDisplayView::Draw(BRect) {
  SetHighColor(gPref->Values()->background);
  FillRect(Bounds());
  const float middle = Bounds().Height() / 2;
  const TFace* used = nullptr;
  for (const TRow& row : fRows) {
    const TFace& face = FaceOf(row.line);
    const float top = middle + row.top + fShift;
    if (top > Bounds().Height() || top + face.RowHeight() < 0) continue;
    if (std::exchange(used, &face) != &face) SetFont(&face.font);
    SetHighColor(ColorOf(row.line));
    DrawString(row.text, BPoint{(Bounds().Width() - row.width) / 2, top + face.height.ascent});
  }
}
