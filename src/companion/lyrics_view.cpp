#include "companion/lyrics_view.h"

#include "companion/lyrics_window_state.h"
#include "companion/wrap_text.h"
#include "family/appearance.h"
#include "language/llt.h"
#include "lyrics/sung_lines.h"
#include "lyrics/timed_line.h"
#include "lyrics/word_lines.h"
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
constexpr bigtime_t kAnimationUs = 250000;
/** The lyrics window is read from farther away than the editor. */
constexpr float kSmallPerEditor = 1.5F;
constexpr float kLargePerSmall = 1.5F;
/** Per level of the setting "FntL". */
constexpr float kSizePerLevel = 1.2F;
constexpr int32 kLastLevel = 8;
/** Of the window's own zoom, in the same steps. */
constexpr int32 kMostZoom = 12;
constexpr float kMargin = 16;
/** Gap between two lines, in rows. */
constexpr float kGap = 0.3F;
constexpr int32 kPageLines = 8;
/** Opacity of the lines to come and of the lines already sung. */
constexpr float kNextOpacity = 0.72F;
constexpr float kSungOpacity = 0.4F;

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

/** Lines without time tags, such as headers, are unchanged. */
std::string without_tags(const std::string& line) {
  const TTaggedLine parts = take_apart(line);
  return parts.timesMs.empty() ? line : parts.Text();
}

} // namespace

TLyricsView::TLyricsView(BRect frame)
    : BView(frame, "Lyrics", B_FOLLOW_ALL_SIDES, B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE) {}

TLyricsView::~TLyricsView() = default;

void TLyricsView::SetAppearance() {
  const auto look = gPref->Values();
  const int32 zoom = gLyricsWindowState ? std::clamp(gLyricsWindowState->fZoom, -kMostZoom, kMostZoom) : 0;
  const auto level = static_cast<float>(std::clamp(look->fontLevel, -kLastLevel, kLastLevel) + zoom);
  const BFont font = lyrics_font(BFont(), *look);
  const float small = std::max(font.Size(), 1.0F) * kSmallPerEditor * std::pow(kSizePerLevel, level);
  fSmall.font = sized(font, small);
  fLarge.font = sized(font, small * kLargePerSmall);
  for (TFace* face : {&fSmall, &fLarge}) face->font.GetHeight(&face->height);
  SetViewColor(look->background);
  Update();
}

void TLyricsView::SetLines(const std::vector<std::string>& lines, const std::string& placeholder) {
  fPlaceholder = placeholder;
  fLines.clear();
  fLineTimes.Clear();
  fWordLines.clear();
  for (const std::string& line : lines) {
    const auto row = static_cast<int32>(fLines.size());
    if (has_word_times(line) && !leading_times(line).empty()) fWordLines.emplace(row, line);
    fLines.push_back(without_tags(line));
    fLineTimes.Append(line);
  }
  fIsTimed = fLineTimes.HasTimes();
  fAnimation.reset();
  fShift = 0;
  fCurrent = fIsTimed ? fLineTimes.RowAt(fPositionMs) : 0;
  Update();
}

void TLyricsView::SetPosition(int32 positionMs) {
  fPositionMs = positionMs;
  if (!fIsTimed) return;
  const int32 line = fLineTimes.RowAt(positionMs);
  if (line != fCurrent) return AnimateTo(line);
  if (SungBytes() != fSungBytes) Invalidate();
}

void TLyricsView::FrameResized(float width, float height) {
  BView::FrameResized(width, height);
  Update();
}

void TLyricsView::Update() {
  LayOut();
  SetAccessibleName(gLLT->Text("Label_Display"));
  SetAccessibleDescription(CurrentLine());
  Invalidate();
}

std::string TLyricsView::CurrentLine() const {
  if (fLines.empty()) return fPlaceholder;
  return fIsTimed && fCurrent >= 0 ? fLines[static_cast<size_t>(fCurrent)] : std::string();
}

std::vector<TLyricsView::TRow> TLyricsView::RowsOf(int32 line) const {
  const BFont& font = FaceOf(line).font;
  const std::string& text = fLines.empty() ? fPlaceholder : fLines[static_cast<size_t>(line)];
  const auto measure = [&font](std::string_view part) { return font.StringWidth(part); };
  std::vector<TRow> rows;
  size_t at = 0;
  for (std::string& row : wrap_text(text, std::max(1.0F, Bounds().Width() - 2 * kMargin), measure)) {
    const float width = measure(row);
    at = std::min(text.find(row, at), text.size()); // blanks between rows are left out
    const size_t end = at + row.size();
    rows.push_back({line, static_cast<float>(rows.size()) * FaceOf(line).RowHeight(), std::move(row), width, at});
    at = end;
  }
  return rows;
}

float TLyricsView::HeightOf(const std::vector<TRow>& rows, int32 line) const {
  return static_cast<float>(rows.size()) * FaceOf(line).RowHeight();
}

/** Lays lines out from the current one up and down, a window height beyond the visible part for the animation. */
void TLyricsView::LayOut() {
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

float TLyricsView::MiddleOf(int32 line) const {
  float top = 0;
  float bottom = 0;
  bool isLaidOut = false;
  for (const TRow& row : fRows) {
    if (row.line != line) continue;
    top = isLaidOut ? std::min(top, row.top) : row.top;
    bottom = std::max(isLaidOut ? bottom : row.top, row.top + FaceOf(line).RowHeight());
    isLaidOut = true;
  }
  return isLaidOut ? (top + bottom) / 2 + fShift : 0;
}

void TLyricsView::AnimateTo(int32 line) {
  const float from = MiddleOf(std::max(line, int32{0}));
  fCurrent = line;
  fShiftAtStart = fShift = from;
  fAnimationStartUs = system_time();
  const BMessage step(kMsgLyricsAnimation);
  fAnimation.reset();
  if (fShift != 0) fAnimation = std::make_unique<BMessageRunner>(BMessenger(this), &step, kFrameUs);
  Update();
}

/** Cubic ease-out. */
void TLyricsView::AnimationStep() {
  const float done =
      std::min(1.0F, static_cast<float>(system_time() - fAnimationStartUs) / static_cast<float>(kAnimationUs));
  const float left = 1 - done;
  fShift = fShiftAtStart * left * left * left;
  if (done >= 1) fAnimation.reset();
  Invalidate();
}

void TLyricsView::MessageReceived(BMessage* message) {
  if (message->what != kMsgLyricsAnimation) return BView::MessageReceived(message);
  if (fAnimation) AnimationStep();
}

void TLyricsView::KeyDown(const char* bytes, int32 count) {
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

void TLyricsView::ScrollBy(int32 lines) {
  if (fIsTimed || fLines.empty()) return;
  fCurrent = std::clamp(fCurrent + lines, int32{0}, static_cast<int32>(fLines.size()) - 1);
  Update();
}

rgb_color TLyricsView::ColorOf(int32 line) const {
  const auto look = gPref->Values();
  if (fLines.empty()) return mixed(look->lyrics, look->background, kNextOpacity);
  if (!fIsTimed) return look->lyrics;
  if (line == fCurrent) return look->activeLyrics;
  return mixed(look->lyrics, look->background, line > fCurrent ? kNextOpacity : kSungOpacity);
}

size_t TLyricsView::SungBytes() const {
  const auto line = fWordLines.find(fCurrent);
  if (line == fWordLines.end()) return SIZE_MAX;
  const long writtenMs = fPositionMs + fLineTimes.OffsetMs();
  return TTimedLine(line->second).BytesSungAt(writtenMs, sung_start(line->second, writtenMs));
}

/** The words to come are dimmed, in the line that is being sung. */
void TLyricsView::DrawRow(const TRow& row, const TFace& face, float baseLine, size_t sungBytes) {
  const float left = (Bounds().Width() - row.width) / 2;
  const rgb_color color = ColorOf(row.line);
  const size_t sung = row.line == fCurrent && sungBytes > row.at ? std::min(sungBytes - row.at, row.text.size()) : 0;
  SetHighColor(color);
  if (row.line != fCurrent || sung == row.text.size()) return DrawString(row.text, BPoint{left, baseLine});
  const std::string first = row.text.substr(0, sung);
  DrawString(first, BPoint{left, baseLine});
  SetHighColor(mixed(color, gPref->Values()->background, kSungOpacity));
  DrawString(row.text.substr(sung), BPoint{left + face.font.StringWidth(first), baseLine});
}

void TLyricsView::Draw(BRect) {
  SetHighColor(gPref->Values()->background);
  FillRect(Bounds());
  const float middle = Bounds().Height() / 2;
  const TFace* used = nullptr;
  fSungBytes = SungBytes();
  for (const TRow& row : fRows) {
    const TFace& face = FaceOf(row.line);
    const float top = middle + row.top + fShift;
    if (top > Bounds().Height() || top + face.RowHeight() < 0) continue;
    if (std::exchange(used, &face) != &face) SetFont(&face.font);
    DrawRow(row, face, top + face.height.ascent, fIsTimed ? fSungBytes : SIZE_MAX);
  }
}
