#include "player/peaks/read_sound.h"

#include "confined/confined_work.h"
#include "player/peaks/frame_reader.h"
#include "player/peaks/mono_converter.h"
#include "player/peaks/onset_detector.h"

#include <algorithm>
#include <climits>
#include <cmath>

static_assert(kAnalysisBands == kSoundBands && kSilenceDb == -kSoundLevelsDb);

namespace {

/** Generous in real time, as the program may get little of the processor. */
constexpr TWorkLimits kLimits{.cpuSeconds = 600, .wallSeconds = 3600, .resultBytes = kMostSoundBytes};
constexpr size_t kMostColumns = size_t{24} * 3600 * 1000 / kSoundColumnMs; // a day
/** Decoders need some frames before their output is right. */
constexpr double kPrerollSeconds = 0.5;

uint8 byte_of(float number) {
  return static_cast<uint8>(std::lround(std::clamp(number, 0.0F, 255.0F)));
}

void append(const TSoundColumn& column, TSoundPart* part) {
  for (const float level : column.levelsDb)
    part->levels.push_back(byte_of((level - kSilenceDb) * (255.0F / kSoundLevelsDb)));
  part->peaks.push_back(byte_of(column.peak * 255));
}

void analyse_rest(TFrameReader* reader, const AVFrame* first, TSoundColumns* columns,
                  const std::function<bool()>& isDone) {
  TMonoConverter converter(kAnalysisRate);
  for (const AVFrame* frame = first; frame != nullptr && !isDone(); frame = reader->Next())
    columns->Add(converter.Convert(frame));
  if (isDone()) return;
  columns->Add(converter.Flush());
  columns->Finish();
}

/** A frame and its position, which counts from the song's first frame whatever the timestamp of that. */
struct TPlacedFrame {
  const AVFrame* frame = nullptr; // null after the end of the song
  double seconds = 0;
};

/** Goes to shortly before `fromMs`, if the file can be searched. */
TPlacedFrame frame_before(TFrameReader* reader, const AVFrame* first, int32 fromMs) {
  const auto start = reader->TimeOf(first);
  const double wanted = fromMs / 1000.0 - kPrerollSeconds;
  if (!start || wanted <= kPrerollSeconds || !reader->SeekBefore(*start + wanted)) return {first, 0};
  const AVFrame* const frame = reader->Next();
  const auto time = frame ? reader->TimeOf(frame) : std::nullopt;
  return time ? TPlacedFrame{frame, *time - *start} : TPlacedFrame{};
}

std::optional<TReadSound> read_part(TFrameReader* reader, int32 fromMs, int32 toMs) {
  const AVFrame* const first = reader->Next();
  if (first == nullptr) return std::nullopt;
  const auto [frame, seconds] = frame_before(reader, first, fromMs);
  TReadSound sound;
  if (frame == nullptr || seconds < 0 || seconds > fromMs / 1000.0) return sound;
  const int32 startMs = fromMs / kSoundColumnMs * kSoundColumnMs;
  sound.part.fromMs = startMs;
  const auto isDone = [&] { return sound.part.EndMs() >= toMs; };
  int64 timeMs = 0;
  TSoundColumns columns(std::llround(seconds * kAnalysisRate), [&](const TSoundColumn& column) {
    if (timeMs >= startMs && !isDone()) append(column, &sound.part);
    timeMs += kSoundColumnMs;
  });
  timeMs = columns.FirstColumn() * kSoundColumnMs;
  if (timeMs <= startMs) analyse_rest(reader, frame, &columns, isDone);
  return sound;
}

std::optional<TReadSound> read_whole(TFrameReader* reader) {
  const AVFrame* const first = reader->Next();
  if (first == nullptr) return std::nullopt;
  TReadSound sound;
  sound.isWhole = true;
  TOnsetDetector detector;
  size_t count = 0;
  TSoundColumns columns(0, [&](const TSoundColumn& column) {
    detector.Add(column);
    if (++count <= kMostSoundColumns) append(column, &sound.part);
  });
  analyse_rest(reader, first, &columns, [&count] { return count >= kMostColumns; });
  sound.durationMs = static_cast<int32>(count) * kSoundColumnMs;
  if (count > kMostSoundColumns) sound.part = {};
  sound.onsets = detector.Finish();
  return sound;
}

} // namespace

std::optional<TReadSound> read_sound(const TSongFile& file, int32 fromMs, int32 toMs) {
  const TInput input = open_input(file.sound.Get(), file.name);
  if (!input) return std::nullopt;
  TFrameReader reader(input.get());
  return toMs == INT_MAX ? read_whole(&reader) : read_part(&reader, fromMs, toMs);
}

std::optional<std::string> read_sound_confined(const TSongFile& file, int32 fromMs, int32 toMs) {
  auto bytes = confined_work({file.sound.Get()}, kLimits, [&] {
    const auto sound = read_sound(file, fromMs, toMs);
    return sound ? sound_bytes(*sound) : std::string();
  });
  return bytes && parse_sound(*bytes) ? std::move(bytes) : std::nullopt;
}
