#include "player/sound/part_player.h"

#include "player/sound/mpv_library.h"

#include <algorithm>
#include <cmath>

namespace {

/** With "always", the library pauses at the end of the part also if another song is queued. Without it, the end of the
    part counts as that of the song: to be set before the end of a part, and reset only after a seek away from it. */
constexpr const char* kPausesAtEnd = "keep-open";

std::string in_seconds(int32 ms) {
  return std::to_string(ms / 1000.0);
}

} // namespace

void TPartPlayer::SetRepeat(int32 fromMs, int32 toMs) {
  fRepeatFromMs = fromMs;
  fRepeatToMs = toMs;
  if (!fPart) SetLoop(fromMs, toMs);
}

void TPartPlayer::Play(const TSongPart& part) {
  if (!part.toMs) return SeekTo(part.fromMs);
  const bool endsItself = !part.isLooped;
  fPart = part;
  fReturnedToMs.reset();
  if (endsItself) SetText(kPausesAtEnd, "always");
  SetEnd(endsItself ? part.toMs : std::nullopt);
  SetLoop(endsItself ? -1 : part.fromMs, endsItself ? -1 : *part.toMs);
  Seek(part.fromMs);
  if (!endsItself) SetText(kPausesAtEnd, "no");
}

void TPartPlayer::SeekTo(int32 positionMs) {
  const bool wasPart = fPart || fReturnedToMs;
  Leave();
  Seek(positionMs);
  if (wasPart) SetText(kPausesAtEnd, "no");
}

void TPartPlayer::Return() {
  const int32 fromMs = FromMs();
  Leave();
  Seek(fromMs);
  fReturnedToMs = fromMs;
}

void TPartPlayer::Cancel() {
  if (!fPart && !fReturnedToMs) return;
  const int32 stoppedAtMs = fReturnedToMs ? *fReturnedToMs : *fPart->toMs;
  Leave();
  // The library is done with what it has decoded to the end while that is still to be heard.
  if (Is("eof-reached")) Seek(HeardMs().value_or(stoppedAtMs));
  SetText(kPausesAtEnd, "no");
}

void TPartPlayer::Leave() {
  fReturnedToMs.reset();
  if (!fPart) return;
  fPart.reset();
  SetEnd({});
  SetLoop(fRepeatFromMs, fRepeatToMs);
}

bool TPartPlayer::HasEnded() const {
  return fPart && !fPart->isLooped && Is("eof-reached") && Is("pause");
}

/** Asynchronous, but in order with the other calls. */
void TPartPlayer::Seek(int32 positionMs) {
  const std::string seconds = in_seconds(positionMs);
  const char* words[] = {"seek", seconds.c_str(), "absolute+exact", nullptr};
  mpv_library()->command_async(fMpv, 0, words);
}

void TPartPlayer::SetEnd(std::optional<int32> positionMs) {
  SetText("end", positionMs ? in_seconds(*positionMs) : "none");
}

void TPartPlayer::SetLoop(int32 fromMs, int32 toMs) {
  const bool loops = fromMs >= 0 && toMs >= 0;
  SetText("ab-loop-a", loops ? in_seconds(fromMs) : "no");
  SetText("ab-loop-b", loops ? in_seconds(toMs) : "no");
}

void TPartPlayer::SetText(const char* property, const std::string& value) {
  mpv_library()->set_property_string(fMpv, property, value.c_str());
}

bool TPartPlayer::Is(const char* property) const {
  int value = 0;
  return mpv_library()->get_property(fMpv, property, MPV_FORMAT_FLAG, &value) >= 0 && value != 0;
}

std::optional<int32> TPartPlayer::HeardMs() const {
  double seconds = 0;
  if (mpv_library()->get_property(fMpv, "audio-pts", MPV_FORMAT_DOUBLE, &seconds) < 0) return {};
  return static_cast<int32>(std::lround(std::clamp(seconds, 0.0, 2e6) * 1000));
}
