#include "document/lane_wiring.h"

#include "document/edit_session.h"
#include "document/song_sound_source.h"
#include "editviews/tag_input_view.h"
#include "hostlink/host_link.h"
#include "language/llt.h"
#include "lyrics/document.h"
#include "platform/app/message.h"
#include "platform/interface/view.h"
#include "platform/interface/window.h"
#include "platform/kernel/threads.h"
#include "plugin/message_codes.h"
#include "plugin/pref.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace {

constexpr float kHeight = 120;
/** In a low window the lane leaves the lyrics more than half of the room. */
constexpr float kLargestPart = 0.45F;
constexpr float kHeightStep = 4;
/** The head of play moves that often at most, however often the player is polled. */
constexpr int64 kHeadIntervalUs = 60000;
constexpr int32 kRowsHashed = 48;

void add_to(size_t* hash, size_t value) {
  constexpr size_t kPrime = 1099511628211U;
  *hash = (*hash ^ value) * kPrime;
}

/** Of the lines that the lane may show. */
size_t hash_of(const TLaneLyrics& lyrics) {
  size_t hash = static_cast<size_t>(lyrics.offsetMs);
  add_to(&hash, lyrics.lines.size());
  for (const int32 row : {lyrics.row, lyrics.around}) {
    add_to(&hash, static_cast<size_t>(row));
    const int32 end = std::min(row + kRowsHashed, static_cast<int32>(lyrics.lines.size()));
    for (int32 each = std::max(row - kRowsHashed, 0); each < end; ++each)
      add_to(&hash, std::hash<std::string>()(lyrics.lines[static_cast<size_t>(each)]));
  }
  return hash;
}

const char* key_of(TSoundState state) {
  switch (state) {
  case TSoundState::kNoSong:
    return "Lane_No_Song";
  case TSoundState::kNoFile:
    return "Lane_No_File";
  case TSoundState::kReading:
    return "Lane_Reading";
  case TSoundState::kFailed:
    return "Lane_Failed";
  case TSoundState::kKnown:
    break;
  }
  return nullptr;
}

TLaneColors colors_of_settings() {
  const auto look = gPref->Values();
  return TLaneColors::On(look->background, look->lyrics);
}

} // namespace

bool TLaneWiring::Handle(const BMessage& message) {
  if (message.what != kMsgShowLane && message.what != kMsgLaneLook) return false;
  message.what == kMsgShowLane ? Toggle() : LookToggled();
  return true;
}

void TLaneWiring::Toggle() {
  TViewChoices& choices = fParts.session->Choices();
  choices.showsLane = !choices.showsLane;
  choices.Store();
  report_view_choices(choices, fOwner->Window());
  Poll({});
}

void TLaneWiring::LookToggled() {
  TViewChoices& choices = fParts.session->Choices();
  choices.showsWave = !choices.showsWave;
  choices.Store();
  report_view_choices(choices, fOwner->Window());
  if (fView) fView->SetLook(choices.showsWave ? TLaneLook::kWave : TLaneLook::kSpectrogram);
}

/** In the free text, no line is selected. */
void TLaneWiring::Poll(std::optional<int32> sungMs) {
  const bool isWanted = fParts.session->Choices().showsLane && fParts.session->Mode() != TEditMode::kFreeEdit;
  if (isWanted != IsShown()) isWanted ? Show() : Hide();
  if (!IsShown()) return;
  Place();
  ShowLyrics();
  ShowSound();
  ShowHead(sungMs);
}

void TLaneWiring::Show() {
  if (!fView) {
    fView = new TLaneView(BRect{0, 0, 0, 0}, B_FOLLOW_LEFT_RIGHT | B_FOLLOW_BOTTOM, this);
    fView->SetColors(colors_of_settings());
    fView->SetLook(fParts.session->Choices().showsWave ? TLaneLook::kWave : TLaneLook::kSpectrogram);
    fView->Hide();
    fOwner->AddChild(fView);
  }
  fHeight = kHeight;
  fParts.session->SetRoomBelow(fHeight);
  Place();
  fParts.session->TagInput().ScrollToSelection();
  fView->Show();
}

void TLaneWiring::Hide() {
  if (fView->IsFocus()) fParts.session->MakeFocus();
  fView->Hide();
  fHeight = 0;
  fParts.session->SetRoomBelow(0);
  fParts.sound->Rest();
}

void TLaneWiring::Place() {
  const float all = fParts.session->LyricsHeight() + fHeight;
  const float height =
      std::max(std::min(kHeight, std::floor(all * kLargestPart / kHeightStep) * kHeightStep), kHeightStep);
  if (height != fHeight) fParts.session->SetRoomBelow(height);
  fHeight = height;
  const BRect room = fParts.session->RoomBelow();
  if (fView->Frame() == room) return;
  fView->MoveTo(room.LeftTop());
  fView->ResizeTo(room.Width(), room.Height());
}

TLaneLyrics TLaneWiring::Lyrics() const {
  TTagInputView& view = fParts.session->TagInput();
  return {fParts.document->Lines(), view.CurLine(), view.SungRow(), view.Times().OffsetMs()};
}

void TLaneWiring::ShowLyrics() {
  const TLaneLyrics lyrics = Lyrics();
  const size_t hash = hash_of(lyrics);
  if (hash == fLyricsShown) return;
  fLyricsShown = hash;
  fView->SetLyrics(lyrics);
}

void TLaneWiring::ShowSound() {
  fParts.sound->Poll(fView->Model().Range());
  const char* const key = key_of(fParts.sound->State());
  fView->SetText(key ? gLLT->Text(key) : "");
  const auto sound = fParts.sound->Sound();
  if (sound == fSoundShown) return;
  fSoundShown = sound;
  fView->SetSound(sound);
}

void TLaneWiring::ShowHead(std::optional<int32> sungMs) {
  const int64 nowUs = system_time();
  if (nowUs - fHeadShownUs < kHeadIntervalUs) return;
  fHeadShownUs = nowUs;
  const bool hasSong = fParts.frontEnd->DurationMs() > 0;
  const auto headMs = hasSong ? std::optional(fParts.frontEnd->PositionMs()) : std::nullopt;
  fView->SetHead(headMs, sungMs && fParts.session->Choices().follows);
}

void TLaneWiring::TagMoved(const TLaneMove& move) {
  const TLaneLyrics lyrics = Lyrics();
  const TLinesChange change = lines_moved(lyrics.lines, move, lyrics.offsetMs);
  if (change.removed > 0) fParts.session->TagInput().RetimeLines(change);
  ShowLyrics();
}

void TLaneWiring::TagPlaced(int32 timeMs) {
  const TLaneLyrics lyrics = Lyrics();
  const TTagForm form =
      fParts.session->Mode() == TEditMode::kTagInputStandard ? TTagForm::kStandard : TTagForm::kExtended;
  const TLinesChange change = line_tagged(lyrics.lines, lyrics.row, timeMs + lyrics.offsetMs, form);
  if (change.removed > 0) fParts.session->TagInput().RetimeLines(change);
  ShowLyrics();
}

void TLaneWiring::PlayFrom(int32 timeMs) {
  fParts.frontEnd->PlayFrom(std::max(timeMs, int32{0}));
}

void TLaneWiring::RowChosen(int32 row) {
  fParts.session->TagInput().SetCurLine(row);
  ShowLyrics();
}

void TLaneWiring::LaneLeft() {
  fParts.session->MakeFocus();
}

void TLaneWiring::Describe(const std::string& text) {
  fParts.session->Report(text);
}

void TLaneWiring::LanguageChanged() {
  if (fView) fView->LanguageChanged();
}

void TLaneWiring::AppearanceChanged() {
  if (fView) fView->SetColors(colors_of_settings());
}
