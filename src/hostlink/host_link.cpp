#include "hostlink/host_link.h"

#include "hostlink/data_lock.h"
#include "hostlink/front_end_receiver.h"
#include "platform/app/message.h"
#include "platform/kernel/threads.h"
#include "platform/support/cut_text.h"
#include "plugin/message_codes.h"

#include <climits>
#include <cstring>

namespace {

constexpr int32 kWorkerPriority = 10;
/** Waiting for the player's queue or answer is unlimited, but cancellable at this interval. */
constexpr bigtime_t kSliceUs = 50000;
constexpr int32 kMaxAnswers = 1000000;

char* heap_copy(const std::string& text) {
  char* const copy = new char[text.size() + 1];
  std::memcpy(copy, text.c_str(), text.size() + 1);
  return copy;
}

status_t send_command(const BMessage& message) {
  return BMessenger(kHostSignature).SendMessage(&message, BMessenger(), 0) == B_OK ? B_OK : -1;
}

status_t send_command(uint32 what, const char* field, int32 value) {
  BMessage message(what);
  message.AddInt32(field, value);
  return send_command(message);
}

BMessage message_of_part(int32 fromMs, std::optional<int32> toMs) {
  BMessage message(kMsgHostPlayPart);
  message.AddInt32("FromMs", fromMs);
  if (toMs) message.AddInt32("ToMs", *toMs);
  return message;
}

} // namespace

Sonivo_FrontEnd::Sonivo_FrontEnd(bool pollInformation, int64 intervalUs)
    : fReceiver(new SNFE_Receiver), fDataLock(create_sem(1, "FrontEnd_data")), fIntervalUs(intervalUs),
      fWake(create_sem(0, "FrontEnd_wake")), fPollInformation(pollInformation) {
  fReceiver->Run();
}

Sonivo_FrontEnd::~Sonivo_FrontEnd() {
  StopWaiting();
  fQuitRequested = 1;
  delete_sem(fDataLock);
  delete_sem(fWake);
  WaitUntilFinished();
  if (fReceiver->BLooper::Lock()) fReceiver->Quit();
  Abort();
}

bool Sonivo_FrontEnd::IsReady() const {
  return fDataLock >= 0 && fReceiver->IsReady();
}

void Sonivo_FrontEnd::Start() {
  fPriority = kWorkerPriority;
  fQuitRequested = 0;
  fFinished = 0;
  fReceiver->SetLaunchHost(true);
  fThread = spawn_thread(&SNThread::MainStarter, "Sonivo FrontEnd", kWorkerPriority, static_cast<SNThread*>(this));
  if (fThread < 0 || resume_thread(fThread) != B_OK) fFinished = 1;
}

void Sonivo_FrontEnd::Main() {
  const thread_id receiver = fReceiver->Thread();
  fReceiver->StartSonivo();
  if (receiver > 0) set_thread_priority(receiver, fPriority);
  while (fQuitRequested == 0) {
    if (fRequestWaits || fPollInformation) {
      const BMessage request(kMsgHostInformation);
      fReceiver->SendMsg(&request);
      fRequestWaits = false;
    }
    // Until a request, the destructor or the next poll.
    acquire_sem_etc(fWake, fPollInformation ? fIntervalUs : B_INFINITE_TIMEOUT);
  }
  ThreadCleanUp();
}

void Sonivo_FrontEnd::StopWaiting() {
  fStopWaiting = true;
  fReceiver->StopWaiting();
}

void Sonivo_FrontEnd::SendInfoRequest(std::optional<bigtime_t> whenUs) {
  BMessage request(kMsgHostInformation);
  if (whenUs) request.AddInt64("When", *whenUs);
  if (fRequestWaits || fReceiver->TrySendMsg(&request)) return;
  fRequestWaits = true;
  release_sem(fWake);
}

void Sonivo_FrontEnd::Refresh(std::optional<bigtime_t> whenUs) {
  if (fReceiver->HasArrived()) {
    THostInformation arrived;
    fReceiver->TakeInformation(&arrived);
    const TDataLock lock(fDataLock);
    fInformation = arrived;
  }
  if (!fPollInformation) SendInfoRequest(whenUs);
}

THostInformation Sonivo_FrontEnd::Information() const {
  const TDataLock lock(fDataLock);
  return fInformation;
}

int32 Sonivo_FrontEnd::NumberAt(size_t offset) const {
  const THostInformation information = Information();
  int32 number = 0;
  std::memcpy(&number, information.bytes + offset, sizeof number);
  return number;
}

int32 Sonivo_FrontEnd::PositionMs() const {
  return NumberAt(THostInformation::kPositionAt);
}

int32 Sonivo_FrontEnd::DurationMs() const {
  return NumberAt(THostInformation::kDurationAt);
}

std::optional<int32> Sonivo_FrontEnd::SungPositionMs() {
  const int32 positionMs = PositionMs();
  const bool isPlaying = Information().isPlaying.value_or(positionMs != fLastPositionMs);
  fLastPositionMs = positionMs;
  return isPlaying ? std::optional(positionMs) : std::nullopt;
}

bool Sonivo_FrontEnd::IsPaused() const {
  return Information().isPlaying == false && !Title().empty();
}

std::string Sonivo_FrontEnd::Title() const {
  const THostInformation information = Information();
  const char* const title = information.bytes + THostInformation::kTitleAt;
  return std::string(title, strnlen(title, THostInformation::kSize - THostInformation::kTitleAt));
}

bool Sonivo_FrontEnd::Ask(const BMessage& question, BMessage* answer) {
  const BMessenger host(kHostSignature);
  BPendingReply pending;
  status_t sent = B_TIMED_OUT;
  while (sent == B_TIMED_OUT && !fStopWaiting) sent = host.SendMessage(&question, &pending, kSliceUs);
  if (sent != B_OK) return false;
  status_t status = B_TIMED_OUT;
  while (status == B_TIMED_OUT && !fStopWaiting) status = pending.Wait(answer, kSliceUs);
  if (status != B_OK || answer->what == B_NO_REPLY_CODE) return false;
  ++fAnswers;
  return true;
}

int32 Sonivo_FrontEnd::CountEntries() {
  BMessage question(B_COUNT_PROPERTIES);
  question.AddSpecifier("Entry");
  question.AddSpecifier("Playlist");
  BMessage answer;
  int32 count = -1;
  return Ask(question, &answer) && answer.FindInt32("result", &count) == B_OK ? count : -1;
}

bool Sonivo_FrontEnd::GetEntry(SonivoSongEntry* entry, int32 index) {
  BMessage question(B_GET_PROPERTY);
  question.AddSpecifier("Entry", index);
  question.AddSpecifier("Playlist");
  BMessage answer;
  std::string filename;
  std::string title;
  SonivoSongEntry read;
  if (!Ask(question, &answer) || answer.FindString("filename", &filename) != B_OK ||
      answer.FindString("title", &title) != B_OK || answer.FindInt32("time", &read.time) != B_OK ||
      answer.FindBool("played", &read.played) != B_OK || answer.FindInt32("nr", &read.nr) != B_OK) {
    return false;
  }
  free_song_entry(entry);
  read.filename = heap_copy(std::string(cut_text(filename, PATH_MAX))); // longer paths cannot be opened
  read.title = heap_copy(std::string(cut_text(title)));
  *entry = read;
  return true;
}

void Sonivo_FrontEnd::PlayThis(int32 index, bool fade) {
  BMessage command(B_EXECUTE_PROPERTY);
  command.AddBool("Fade", fade);
  command.AddSpecifier("Entry", index);
  command.AddSpecifier("Playlist");
  const BMessenger host(kHostSignature);
  while (host.SendMessage(&command, BMessenger(), kSliceUs) == B_TIMED_OUT && !fStopWaiting) {
  }
}

status_t Sonivo_FrontEnd::SeekTo(int32 positionMs) const {
  return send_command(kMsgHostSeek, "Time", positionMs);
}

status_t Sonivo_FrontEnd::SeekBy(int32 differenceMs) const {
  return send_command(kMsgHostSeekBy, "Time", differenceMs);
}

status_t Sonivo_FrontEnd::PlayFrom(int32 positionMs) const {
  return IsPaused() ? PlayPart(positionMs, {}) : SeekTo(positionMs);
}

status_t Sonivo_FrontEnd::PlayPart(int32 fromMs, std::optional<int32> toMs) const {
  return send_command(message_of_part(fromMs, toMs));
}

status_t Sonivo_FrontEnd::LoopPart(int32 fromMs, int32 toMs) const {
  BMessage message = message_of_part(fromMs, toMs);
  message.AddBool("Loop", true);
  return send_command(message);
}

status_t Sonivo_FrontEnd::EndPart() const {
  return send_command(BMessage(kMsgHostPlayPart));
}

status_t Sonivo_FrontEnd::CountIn(const std::vector<int32>& timesMs) const {
  BMessage message(kMsgHostCountIn);
  for (const int32 timeMs : timesMs) message.AddInt32("TimeMs", timeMs);
  return send_command(message);
}

status_t Sonivo_FrontEnd::PlayPause() const {
  return send_command(BMessage(kMsgHostPlayPause));
}

status_t Sonivo_FrontEnd::ChangeSpeed(int32 percent) const {
  return send_command(kMsgHostSpeedBy, "Percent", percent);
}

status_t Sonivo_FrontEnd::PlayFiles(const std::vector<std::string>& paths) const {
  BMessage message(kMsgHostOpen);
  for (const std::string& path : paths) message.AddString("path", path);
  return send_command(message);
}

status_t Sonivo_FrontEnd::ShowMarks(const std::string& title, const std::vector<int32>& timesMs, bool asClicks) const {
  BMessage message(kMsgHostMarks);
  message.AddString("Title", title);
  for (const int32 timeMs : timesMs) message.AddInt32("TimeMs", timeMs);
  if (asClicks) message.AddBool("Clicks", true);
  return send_command(message);
}

bool get_current_song_entry(Sonivo_FrontEnd* frontEnd, SonivoSongEntry* entry) {
  if (frontEnd->CountEntries() == 0) return false;
  const std::string playing = frontEnd->Title();
  SonivoSongEntry read;
  int32 index = 0;
  while (index < kMaxAnswers && frontEnd->GetEntry(&read, index) && playing != (read.title ? read.title : "")) ++index;
  if (index == kMaxAnswers || frontEnd->CountEntries() == index) {
    free_song_entry(&read);
    return false;
  }
  *entry = read;
  return true;
}

void free_song_entry(SonivoSongEntry* entry) {
  delete[] entry->filename;
  delete[] entry->title;
  *entry = SonivoSongEntry();
}
