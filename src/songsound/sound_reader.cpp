#include "songsound/sound_reader.h"

#include "common/abandonable_thread.h"
#include "common/helper_program.h"
#include "common/song_cache.h"
#include "plugin/message_codes.h"
#include "songsound/sound_bytes.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <stop_token>
#include <utility>

namespace {

/** A killed helper ends at once, unless the kernel is waiting for its disk. */
constexpr std::chrono::seconds kPatience{1};
/** More than the helper's own limits. */
constexpr THelperLimits kLimits{kMostSoundBytes, std::chrono::seconds(3700)};
constexpr uintmax_t kCacheBytes = 128 << 20;
constexpr int32 kLongestWantedMs = 10 * 60 * 1000;

struct TRange {
  int32 fromMs = 0;
  int32 toMs = 0;

  bool IsEmpty() const { return fromMs >= toMs; }
  bool Contains(const TRange& other) const { return fromMs <= other.fromMs && toMs >= other.toMs; }
};

/** Shared with the threads, which may outlive the reader. */
class TSharedSound {
public:
  explicit TSharedSound(const BMessenger& target) : fTarget(target) {}

  std::shared_ptr<const TSongSound> Get() const {
    const std::lock_guard lock(fMutex);
    return fSound;
  }

  void Add(TReadSound read) {
    {
      const std::lock_guard lock(fMutex);
      auto sound = fSound ? std::make_shared<TSongSound>(*fSound) : std::make_shared<TSongSound>();
      sound->Add(std::move(read.part));
      if (read.isWhole) sound->SetDuration(read.durationMs);
      if (read.isWhole) sound->SetOnsets(std::move(read.onsets));
      fSound = std::move(sound);
    }
    fTarget.SendCoalesced(kMsgSongSound);
  }

  void Fail() {
    fHasFailed = true;
    fTarget.SendCoalesced(kMsgSongSound);
  }
  bool HasFailed() const { return fHasFailed; }

private:
  const BMessenger fTarget;
  std::atomic<bool> fHasFailed{false};
  mutable std::mutex fMutex; // guards fSound
  std::shared_ptr<const TSongSound> fSound;
};

std::optional<TReadSound> run_peaks(std::vector<std::string> arguments, const std::stop_token& stop) {
  arguments.insert(arguments.begin(), {"sonivo-peaks", "--sound"});
  const auto result = run_helper(std::move(arguments), kLimits, stop);
  return result && result->exitStatus == 0 ? parse_sound(result->output) : std::nullopt;
}

bool read_part(const std::string& song, const TRange& wanted, TSharedSound* shared, const std::stop_token& stop) {
  auto part = run_peaks({song, std::to_string(wanted.fromMs), std::to_string(wanted.toMs)}, stop);
  if (part && !part->isWhole) shared->Add(std::move(*part));
  return part.has_value();
}

bool read_whole(const std::string& song, const TRange& wanted, TSharedSound* shared, const std::stop_token& stop) {
  const std::string cacheFile = cached_song_file(song, "Sound", "snsd");
  if (const auto packed = read_cached(cacheFile, kMostSoundBytes)) {
    if (auto kept = unpack_sound(*packed); kept && kept->isWhole) {
      shared->Add(std::move(*kept));
      return true;
    }
  }
  if (!wanted.IsEmpty() && !read_part(song, wanted, shared, stop)) return false;
  auto whole = run_peaks({song}, stop);
  if (!whole || !whole->isWhole) return false;
  shared->Add(*whole);
  if (!cacheFile.empty()) keep_cached(cacheFile, packed_sound(*whole), kCacheBytes);
  return true;
}

} // namespace

struct TSoundReader::TJob {
  TJob(std::string path, const BMessenger& target)
      : song(std::move(path)), shared(std::make_shared<TSharedSound>(target)) {}
  ~TJob() {
    wholeStop.request_stop();
    partStop.request_stop();
  }

  void ReadWhole() {
    whole.Start("song sound", [path = song, range = wanted, into = shared,
                               stop = wholeStop.get_token()](TAbandonableThread::TProgress*) {
      if (!read_whole(path, range, into.get(), stop) && !stop.stop_requested()) into->Fail();
    });
  }

  void ReadPart() {
    partStop.request_stop();
    partStop = std::stop_source();
    part.Start("sound part", [path = song, range = wanted, into = shared, stop = partStop.get_token()](
                                 TAbandonableThread::TProgress*) { read_part(path, range, into.get(), stop); });
  }

  const std::string song;
  const std::shared_ptr<TSharedSound> shared;
  TRange wanted; // of the last request
  std::stop_source wholeStop;
  std::stop_source partStop;
  TAbandonableThread whole{kPatience};
  TAbandonableThread part{kPatience};
};

TSoundReader::TSoundReader(const BMessenger& target) : fTarget(target) {}

TSoundReader::~TSoundReader() = default;

void TSoundReader::Read(const std::string& songPath, int32 wantedFromMs, int32 wantedToMs) {
  const TRange wanted{std::max(wantedFromMs, 0), std::min(wantedToMs, std::max(wantedFromMs, 0) + kLongestWantedMs)};
  if (!fJob || fJob->song != songPath) {
    fJob = nullptr;
    fJob = std::make_unique<TJob>(songPath, fTarget);
    fJob->wanted = wanted;
    return fJob->ReadWhole();
  }
  if (wanted.IsEmpty() || fJob->wanted.Contains(wanted) || fJob->shared->HasFailed()) return;
  const auto sound = fJob->shared->Get();
  if (sound && sound->HasPart(wanted.fromMs, wanted.toMs)) return;
  fJob->wanted = wanted;
  fJob->ReadPart();
}

void TSoundReader::Cancel() {
  fJob = nullptr;
}

std::shared_ptr<const TSongSound> TSoundReader::Sound() const {
  return fJob ? fJob->shared->Get() : nullptr;
}

bool TSoundReader::HasFailed() const {
  return fJob && fJob->shared->HasFailed();
}
