#include "player/model/song_address.h"
#include "player/model/song_text.h"
#include "player/model/sound_formats.h"
#include "player/sound/heard_position.h"
#include "player/sound/mpv_library.h"
#include "player/sound/output_device.h"
#include "player/sound/part_player.h"
#include "player/sound/song_source.h"
#include "player/sound/sound_chain.h"
#include "player/sound/sound_devices.h"
#include "player/texts/player_texts.h"

#include "platform/kernel/threads.h"
#include "platform/support/cut_text.h"
#include "platform/support/log.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <string_view>
#include <thread>
#include <utility>

namespace {

/** A follower that the library has begun is heard within that time. */
constexpr bigtime_t kLongestJoinUs = 1000000;

constexpr std::string_view kNoDevice = "null";

/** No configuration, scripts, key bindings or command socket of the library. */
constexpr const char* kClosedOptions[][2] = {
    {"config", "no"},
    {"resume-playback", "no"},
    {"load-scripts", "no"},
    {"load-auto-profiles", "no"},
    {"load-osd-console", "no"},
    {"load-stats-overlay", "no"},
    {"osc", "no"},
    {"ytdl", "no"},
    {"terminal", "no"},
    {"input-default-bindings", "no"},
    {"input-builtin-bindings", "no"},
    {"input-cursor", "no"},
    {"input-media-keys", "no"},
    {"input-terminal", "no"},
    {"input-vo-keyboard", "no"},
    {"input-ipc-server", ""},
};

/** A song is one file, or one stream from the host in its URL: it must not make the library open anything else. */
constexpr const char* kOneFileOptions[][2] = {
    {"access-references", "no"},
    {"autoload-files", "no"},
    {"load-unsafe-playlists", "no"},
    {"ordered-chapters", "no"},
    {"cookies", "no"},
    // The only demuxer without playlists, archives and edit decision lists; it reads from the open stream.
    {"demuxer", "lavf"},
    {"demuxer-lavf-o", "format_whitelist=[" SOUND_FORMATS "],protocol_whitelist=[none]"},
    // Not used for local files.
    {"stream-lavf-o", "protocol_whitelist=[http,https,httpproxy,tls,tcp]"},
};

constexpr const char* kPlayOptions[][2] = {
    {"vid", "no"},
    {"sid", "no"},
    {"audio-display", "no"},
    {"idle", "yes"},
    {"hr-seek", "yes"},
    // In order of preference; without a sound device the song plays in real time to the null output.
    {"ao", "pulse,pipewire,alsa,null"}, // the last is kNoDevice
    {"gapless-audio", "weak"},
    {"prefetch-playlist", "yes"}, // opens the song that follows before the current one ends
    {"audio-fallback-to-null", "yes"},
};

/** Longer than a busy machine or a disk that spins up keeps the library from answering. */
constexpr bigtime_t kHangsAfterUs = 3000000;
/** A sound server that hangs blocks the library's end indefinitely. */
constexpr std::chrono::seconds kLongestEnd{2};
/** Without a sound device: polling interval for one, and how many times a new one is tried, since it may still be
    starting. */
constexpr bigtime_t kDeviceLookUs = 1000000;
constexpr int kTriesPerDevice = 3;
/** Polling interval while the end of a song is still to be heard and its follower has begun in the library. */
constexpr double kJoinLookSeconds = 0.005;
constexpr uint64 kOutputProperty = 1;
constexpr uint64 kPauseProperty = 2;
constexpr uint64 kDevicesProperty = 3;

/** TSongSource over libmpv. Its own thread loads the library, waits for events and makes all changes. A sound server
    that hangs blocks the library, so no other thread calls it without a time limit; the source's thread keeps the
    source alive until the library returns. */
class TMpvSource : public TSongSource, public std::enable_shared_from_this<TMpvSource> {
public:
  explicit TMpvSource(TSongEvents* events) : fEvents(events) {}

  /** Waits for the thread, at most kLongestEnd. */
  void End() {
    {
      const std::lock_guard lock(fMutex);
      fEnding = true;
    }
    Wake();
    {
      std::unique_lock lock(fMutex);
      if (!fChanged.wait_for(lock, kLongestEnd, [this] { return !fIsRunning; }))
        log_error("audio", "the sound server is not responding; not waiting for it");
    }
    const std::lock_guard lock(fEventsMutex);
    fEvents = nullptr;
  }

  int64 Load(const std::string& path, bool paused) override {
    const int64 load = ++fLastLoad;
    fHeard.Begin(paused);
    Do([=, this] { Begin(load, path, paused); });
    return load;
  }
  void Stop() override {
    Do([this] { StopNow(); });
  }
  int64 Follow(const std::string& path) override {
    const int64 load = path.empty() ? 0 : ++fLastLoad;
    Do([=, this] { Queue(load, path); });
    return load;
  }
  void SetSound(const TSoundChoices& choices) override {
    Do([=, this] {
      fChain.Apply(choices);
      fDevice.Choose(choices.device);
      if (fLoad != 0) WatchDevices();
    });
  }
  void FindDevices() override {
    Do([this] { Report([devices = fDevice.Devices()](TSongEvents& events) { events.DevicesFound(devices); }); });
  }
  void SetPaused(bool paused) override {
    fHeard.SetPaused(paused);
    fHeard.Jumped();
    Do([=, this] {
      fParts.Cancel();
      fHeard.SetPaused(paused);
      SetFlag("pause", paused);
    });
  }
  void SeekTo(int32 positionMs) override {
    fHeard.Expect(positionMs);
    Do([=, this] {
      if (fIsJustJoined) return fHeard.ExpectNothing(); // the position was one of the song before
      fParts.SeekTo(positionMs);
    });
  }
  void SetSpeed(double speed) override {
    fHeard.SetSpeed(speed);
    Do([=, this] { fHeard.SetBias(fChain.SetSpeed(speed)); });
  }
  void SetVolume(double percent) override {
    Do([=, this] { SetNumber("volume", percent); });
  }
  void SetRepeat(int32 fromMs, int32 toMs) override {
    if (fromMs < toMs) fHeard.SetHasRange();
    Do([=, this] { fParts.SetRepeat(fromMs, toMs); });
  }
  int64 PlayPart(const TSongPart& part) override {
    const int64 number = ++fLastPart;
    fHeard.SetPaused(false);
    fHeard.SetHasRange();
    fHeard.Expect(part.fromMs);
    Do([=, this] { BeginPart(number, part); });
    return number;
  }
  void SetClicks(const std::vector<int32>& timesMs) override {
    Do([=, this] { fChain.SetClicks(timesMs); });
  }

  bool IsHanging() const override { return fHeard.IsOverdueFor(kHangsAfterUs); }

  int32 PositionMs() override {
    mpv_handle* const mpv = fMpv;
    if (mpv == nullptr) return fHeard.Ms({});
    return fHeard.Ms(
        [mpv](uint64 id) { return mpv_library()->get_property_async(mpv, id, "audio-pts", MPV_FORMAT_DOUBLE) >= 0; });
  }

private:
  using Change = std::function<void()>;

  /** Queues a change for the source's thread, starting it with the first. */
  void Do(Change change) {
    {
      const std::lock_guard lock(fMutex);
      fChanges.push_back(std::move(change));
      if (!std::exchange(fIsRunning, true)) std::thread([self = shared_from_this()] { self->Run(); }).detach();
    }
    Wake();
  }

  void Wake() {
    fChanged.notify_all();
    if (mpv_handle* const mpv = fMpv) mpv_library()->wakeup(mpv);
  }

  bool IsEnding() {
    const std::lock_guard lock(fMutex);
    return fEnding;
  }

  void Run() {
    if (Open())
      PlayToTheEnd();
    else
      FailEveryLoad();
    const std::lock_guard lock(fMutex);
    fIsRunning = false;
    fChanged.notify_all();
  }

  void PlayToTheEnd() {
    while (!IsEnding()) {
      MakeChanges();
      const bool mayReturn = fIsSilent && !fHeard.IsPaused();
      const double longestWait = fHeard.IsJoinPending() ? kJoinLookSeconds : mayReturn ? kDeviceLookUs / 1e6 : -1;
      Handle(mpv_library()->wait_event(fMpv, longestWait));
      if (fHeard.IsJoinPending()) LookAtJoin();
      if (mayReturn && system_time() >= fNextLookUs) LookForReturnedDevice();
      if (!fHeard.IsJoinPending() && std::exchange(fIsDeviceListed, false))
        ReopenOutput([this] { return fDevice.Retry(); });
    }
    mpv_library()->terminate_destroy(fMpv.exchange(nullptr));
  }

  bool Open() {
    const TMpvLibrary* const library = mpv_library();
    mpv_handle* const mpv = library ? library->create() : nullptr;
    if (mpv == nullptr) return false;
    SetOptions(mpv, kClosedOptions);
    SetOptions(mpv, kPlayOptions);
    const bool isConfined = SetOptions(mpv, kOneFileOptions);
    if (!isConfined) log_error("audio", "the audio library cannot be confined to the song file, so it is not used");
    if (!isConfined || library->initialize(mpv) < 0) {
      library->terminate_destroy(mpv);
      return false;
    }
    library->observe_property(mpv, kOutputProperty, "current-ao", MPV_FORMAT_STRING);
    library->observe_property(mpv, kPauseProperty, "pause", MPV_FORMAT_FLAG);
    fTriedDevices = sound_devices();
    fChain.Begin(mpv);
    fDevice.Begin(mpv);
    fParts.Begin(mpv);
    fMpv = mpv;
    return true;
  }

  /** False if the library does not know one of them, as one built without scripts. */
  template <size_t Count>
  static bool SetOptions(mpv_handle* mpv, const char* const (&options)[Count][2]) {
    bool all = true;
    for (const auto& [name, value] : options) all &= mpv_library()->set_option_string(mpv, name, value) >= 0;
    return all;
  }

  void FailEveryLoad() {
    std::unique_lock lock(fMutex);
    int64 reported = 0;
    while (!fEnding) {
      if (const int64 load = fLastLoad; load != reported) {
        reported = load;
        lock.unlock();
        Report([load](TSongEvents& events) { events.SongFailed(load, player_text("Player_Err_No_Sound_Library")); });
        lock.lock();
      }
      fChanges.clear();
      fChanged.wait(lock, [&] { return fEnding || fLastLoad != reported; });
    }
  }

  void MakeChanges() {
    for (;;) {
      Change change;
      {
        const std::lock_guard lock(fMutex);
        if (fChanges.empty()) return;
        change = std::move(fChanges.front());
        fChanges.pop_front();
      }
      fIsJustJoined = FinishJoin();
      change();
      fHeard.Moves();
    }
  }

  template <typename Call>
  void Report(Call call) {
    const std::lock_guard lock(fEventsMutex);
    if (fEvents) call(*fEvents);
  }

  void Handle(const mpv_event* event) {
    switch (event->event_id) {
    case MPV_EVENT_START_FILE:
      Started(static_cast<const mpv_event_start_file*>(event->data)->playlist_entry_id);
      break;
    case MPV_EVENT_IDLE:
      if (fEndedLoad != 0) // its follower was taken out of the queue at the last moment
        Report([load = std::exchange(fEndedLoad, 0)](TSongEvents& events) { events.SongEnded(load); });
      break;
    case MPV_EVENT_PLAYBACK_RESTART:
      fHeard.Arrived();
      if (!fIsSilent && fDevice.TakeReturn())
        Report([this](TSongEvents& events) { events.DeviceReturned(fDevice.Text()); });
      break;
    case MPV_EVENT_FILE_LOADED:
      Loaded();
      break;
    case MPV_EVENT_END_FILE:
      Ended(*static_cast<const mpv_event_end_file*>(event->data));
      break;
    case MPV_EVENT_GET_PROPERTY_REPLY:
      PositionAnswered(*event);
      break;
    case MPV_EVENT_PROPERTY_CHANGE:
      PropertyChanged(event->reply_userdata, *static_cast<const mpv_event_property*>(event->data));
      break;
    default:
      break;
    }
  }

  void PropertyChanged(uint64 which, const mpv_event_property& property) {
    if (which == kOutputProperty) return OutputChanged(property);
    if (which == kDevicesProperty) return DevicesChanged(property);
    if (fParts.HasEnded()) EndPart();
  }

  void PositionAnswered(const mpv_event& event) {
    std::optional<double> seconds;
    if (event.error >= 0) seconds = *static_cast<double*>(static_cast<const mpv_event_property*>(event.data)->data);
    fHeard.Answer(event.reply_userdata, seconds);
  }

  /** Without a value the output is closed for now; another value follows. */
  void OutputChanged(const mpv_event_property& output) {
    if (output.format != MPV_FORMAT_STRING) return;
    const bool isSilent = std::string_view(*static_cast<char**>(output.data)) == kNoDevice;
    if (isSilent && fDevice.UseDefault()) ReportLoss();
    fHeard.Moves();
    if (std::exchange(fIsSilent, isSilent) == isSilent) return;
    log_error("audio", isSilent ? "no sound device: playing silently" : "a sound device is back");
    Report([isSilent](TSongEvents& events) { events.OutputChanged(isSilent); });
    if (!isSilent) fIsDeviceListed |= std::exchange(fHasNewServer, false);
  }

  void ReportLoss() {
    Report([this](TSongEvents& events) { events.DeviceLost(fDevice.Text()); });
  }

  /** Only with a chosen device, and not before the song, whose start the first list would delay. */
  void WatchDevices() {
    if (!fDevice.IsChosen() || std::exchange(fWatchesDevices, true)) return;
    mpv_library()->observe_property(fMpv, kDevicesProperty, "audio-device-list", MPV_FORMAT_NODE);
  }

  void DevicesChanged(const mpv_event_property& list) {
    if (list.format != MPV_FORMAT_NODE) return;
    const TOutputDevice::TNews news = fDevice.ListChanged(*static_cast<const mpv_node*>(list.data));
    if (news == TOutputDevice::TNews::kLost) ReportLoss();
    fIsDeviceListed = news == TOutputDevice::TNews::kListed;
  }

  /** Opening the output again drops what the library has decoded: without a seek the song would skip that. `reopen`
      returns false if it has done nothing. */
  void ReopenOutput(const std::function<bool()>& reopen) {
    double seconds = 0;
    const bool isHeard = mpv_library()->get_property(fMpv, "audio-pts", MPV_FORMAT_DOUBLE, &seconds) >= 0;
    if (!reopen() || !isHeard || fHeard.IsJoinPending()) return;
    fParts.Resume(fHeard.Interrupted(seconds));
  }

  /** Has the library try its outputs again, from the first one on. */
  void LookForDevice() {
    fTriedDevices = sound_devices();
    Command({"ao-reload"});
  }

  /** Retrying interrupts playback, and a server that hangs blocks the library: only done after a change. */
  void LookForReturnedDevice() {
    fNextLookUs = system_time() + kDeviceLookUs;
    if (sound_devices() != fTriedDevices) {
      fTriesLeft = kTriesPerDevice;
      fHasNewServer = true;
    }
    if (fTriesLeft == 0) return;
    --fTriesLeft;
    ReopenOutput([this] { return LookForDevice(), true; });
  }

  /** Validates the address once more: the library would open anything. */
  void Begin(int64 load, const std::string& path, bool paused) {
    const TSongAddress song = song_address(path, "/");
    const std::string error = song.refusal.empty() ? file_error(song.text, {}) : song.refusal;
    if (!error.empty()) {
      StopNow();
      return Report([&](TSongEvents& events) { events.SongFailed(load, error); });
    }
    fParts.Cancel();
    SetFlag("pause", paused);
    fDevice.Retry();
    if (fIsSilent) LookForDevice();
    fQueuedEntry = -1;
    fEndedLoad = 0;
    fLoadOfEntry[LoadFile(song.text, "replace")] = load;
  }

  void BeginPart(int64 number, const TSongPart& part) {
    if (fIsJustJoined) return fHeard.ExpectNothing(); // a part of the song before
    fPart = number;
    fHeard.SetPaused(false);
    fParts.Play(part);
    SetFlag("pause", false);
  }

  /** The library has paused the song at the end of the part. */
  void EndPart() {
    const int32 fromMs = fParts.FromMs();
    fHeard.SetPaused(true);
    fHeard.Expect(fromMs);
    fParts.Return();
    fHeard.Moves();
    Report([this](TSongEvents& events) { events.PartEnded(fPart); });
  }

  void Queue(int64 load, const std::string& path) {
    if (std::exchange(fQueuedEntry, -1) >= 0) Call({"playlist-clear"}); // keeps the current one
    const TSongAddress song = song_address(path, "/");
    if (load == 0 || !song.refusal.empty() || !file_error(song.text, {}).empty()) return;
    fQueuedEntry = LoadFile(song.text, "append");
    fLoadOfEntry[fQueuedEntry] = load;
  }

  void Started(int64 entryId) {
    FinishJoin();
    fEntryId = entryId;
    fLoad = fLoadOfEntry[entryId];
    fJoinedLoad = std::exchange(fEndedLoad, 0);
    if (fQueuedEntry == entryId) fQueuedEntry = -1;
    if (fJoinedLoad == 0) return;
    fJoinUntil = system_time() + kLongestJoinUs;
    fHeard.BeginJoin();
    fChain.SetClicks({}); // they belong to the song that ends
  }

  void Loaded() {
    WatchDevices();
    TSongTags tags = ReadTags();
    if (fHeard.IsJoinPending())
      fFollowerTags = std::move(tags);
    else
      Report([&](TSongEvents& events) { events.SongLoaded(fLoad, tags); });
  }

  /** Whether the sound of the follower has begun. A pause ends the join early, as does a follower without sound. */
  void LookAtJoin() {
    double seconds = 0;
    const bool isKnown = mpv_library()->get_property(fMpv, "audio-pts", MPV_FORMAT_DOUBLE, &seconds) >= 0;
    const bool isHeard = isKnown && fHeard.FollowerIsHeard(seconds);
    if (isHeard || fHeard.IsPaused() || system_time() >= fJoinUntil) FinishJoin();
  }

  /** False if none is pending. */
  bool FinishJoin() {
    if (fJoinedLoad == 0) return false;
    const int32 endedMs = fHeard.FinishJoin();
    const int64 ended = std::exchange(fJoinedLoad, 0);
    Report([&](TSongEvents& events) { events.SongJoined(ended, fLoad, endedMs); });
    if (const auto tags = std::exchange(fFollowerTags, {}))
      Report([&](TSongEvents& events) { events.SongLoaded(fLoad, *tags); });
    return true;
  }

  /** Synchronous: an asynchronous command could be executed after a following load. */
  void StopNow() {
    fQueuedEntry = -1;
    fEndedLoad = 0;
    fParts.Cancel();
    Call({"stop"});
  }

  void Call(std::initializer_list<const char*> words) {
    std::vector<const char*> arguments(words);
    arguments.push_back(nullptr);
    mpv_library()->command_ret(fMpv, arguments.data(), nullptr);
  }

  /** Returns the library's id for this load, as used by its events. */
  int64 LoadFile(const std::string& path, const char* how) {
    const char* arguments[] = {"loadfile", path.c_str(), how, nullptr};
    mpv_node result{};
    int64 entryId = -1;
    if (mpv_library()->command_ret(fMpv, arguments, &result) < 0) return entryId;
    for (int i = 0; result.format == MPV_FORMAT_NODE_MAP && i < result.u.list->num; ++i) {
      if (std::string_view(result.u.list->keys[i]) == "playlist_entry_id") entryId = result.u.list->values[i].u.int64;
    }
    mpv_library()->free_node_contents(&result);
    return entryId;
  }

  void Ended(const mpv_event_end_file& end) {
    if (end.playlist_entry_id != fEntryId) return;
    FinishJoin();
    fLoadOfEntry.erase(fEntryId);
    const bool isAtEnd = end.reason == MPV_END_FILE_REASON_EOF;
    if (isAtEnd && fQueuedEntry >= 0) {
      fEndedLoad = fLoad;
    } else if (isAtEnd) {
      Report([this](TSongEvents& events) { events.SongEnded(fLoad); });
    }
    if (end.reason == MPV_END_FILE_REASON_ERROR) {
      Report([&](TSongEvents& events) { events.SongFailed(fLoad, mpv_library()->error_string(end.error)); });
    }
  }

  TSongTags ReadTags() {
    TSongTags tags{Text("metadata/by-key/title"), Text("metadata/by-key/artist"), 0, Text("metadata/by-key/album"),
                   track_number(Text("metadata/by-key/track"))};
    double seconds = 0;
    if (mpv_library()->get_property(fMpv, "duration", MPV_FORMAT_DOUBLE, &seconds) >= 0) {
      tags.durationMs = static_cast<int32>(std::clamp(seconds * 1000, 0.0, 2147483647.0));
    }
    return tags;
  }

  std::string Text(const char* name) {
    char* const value = mpv_library()->get_property_string(fMpv, name);
    std::string text(cut_text(value ? value : ""));
    mpv_library()->free(value);
    return text;
  }

  void Command(std::initializer_list<const char*> words) {
    std::vector<const char*> arguments(words);
    arguments.push_back(nullptr);
    mpv_library()->command_async(fMpv, 0, arguments.data());
  }
  void SetFlag(const char* name, bool value) {
    int flag = value;
    mpv_library()->set_property_async(fMpv, 0, name, MPV_FORMAT_FLAG, &flag);
  }
  void SetNumber(const char* name, double value) {
    mpv_library()->set_property_async(fMpv, 0, name, MPV_FORMAT_DOUBLE, &value);
  }

  std::mutex fEventsMutex; // guards fEvents, also during its calls
  TSongEvents* fEvents;    // null after the end
  std::mutex fMutex;       // guards fChanges, fEnding, fIsRunning
  std::deque<Change> fChanges;
  bool fEnding = false;
  bool fIsRunning = false;
  std::condition_variable fChanged;

  std::atomic<mpv_handle*> fMpv{nullptr};
  std::atomic<int64> fLastLoad{0};
  std::atomic<int64> fLastPart{0};
  THeardPosition fHeard;
  // Used by the source's thread only.
  std::map<int64, int64> fLoadOfEntry;
  int64 fLoad = 0;
  int64 fEntryId = -1;
  bool fIsSilent = false;
  bigtime_t fNextLookUs = 0;
  std::string fTriedDevices; // fingerprint at the last try
  int fTriesLeft = 0;
  TSoundChain fChain;
  TOutputDevice fDevice;
  bool fWatchesDevices = false;
  bool fIsDeviceListed = false; // the lost device, which has not been tried yet
  bool fHasNewServer = false;   // since the last look, which may have the lost device
  TPartPlayer fParts;
  int64 fPart = 0; // the last one begun
  int64 fQueuedEntry = -1;
  int64 fEndedLoad = 0;  // its queued follower is about to start; 0 for none
  int64 fJoinedLoad = 0; // its end is still to be heard while the follower begins; 0 for none
  bigtime_t fJoinUntil = 0;
  std::optional<TSongTags> fFollowerTags; // reported after the join
  bool fIsJustJoined = false;             // by the current change, which was made for the song before
};

} // namespace

std::shared_ptr<TSongSource> make_mpv_source(TSongEvents* events) {
  auto source = std::make_shared<TMpvSource>(events);
  TSongSource* const given = source.get();
  return {given, [source = std::move(source)](TSongSource*) { source->End(); }};
}
