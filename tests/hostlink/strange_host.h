#pragma once

#include "hostlink/host_protocol.h"
#include "platform/app/application.h"
#include "platform/app/message.h"
#include "plugin/message_codes.h"

#include <atomic>
#include <cstring>
#include <mutex>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

/** A fake player whose answers can be correct, late, short, or missing. */
struct StrangeHost : BApplication {
  StrangeHost() : BApplication(kHostSignature) {}

  template <typename Value>
  Value Copy(const Value& guarded) {
    const std::lock_guard lock(fMutex);
    return guarded;
  }
  template <typename Value>
  void Set(Value* guarded, const Value& value) {
    const std::lock_guard lock(fMutex);
    *guarded = value;
  }
  /** Sets the bytes of "Info", with position and title in their places. */
  void SetRecord(int32 positionMs, const std::string& title, size_t size = THostInformation::kSize,
                 int32 durationMs = 0) {
    std::string record(size, '\0');
    if (size >= 8) std::memcpy(record.data() + 4, &positionMs, 4);
    if (size > 12) std::memcpy(record.data() + 8, &durationMs, 4);
    if (size > 12) record.replace(12, std::min(title.size(), size - 12), title, 0, size - 12);
    const std::lock_guard lock(fMutex);
    fRecord = record;
    fHeard = 0;
  }
  /** How many answers with this record the asker's mailbox has handled. */
  int CountHeard() { return Copy(fHeard); }

  struct Entry {
    std::string path;
    std::string title;
    bool whole = true;
  };
  using Command = std::pair<uint32, int32>; // the code, and its number or -1
  std::vector<Command> Commands() { return Copy(fCommands); }
  /** The field "Playing"; empty as with players that do not have it. */
  void SetPlaying(std::optional<bool> isPlaying) { Set(&fIsPlaying, isPlaying); }
  /** Knows the song's earlier position, always this one, as only some players do. */
  void SetEarlierMs(int32 positionMs) { Set(&fEarlierMs, std::optional(positionMs)); }
  /** How many requests were for an earlier position. */
  int CountEarlier() const { return fEarlierRequests; }
  /** The last one asked for, as "from..to loop"; -1 for what is absent. */
  std::string Part() { return Copy(fPart); }
  /** Title and times of the last marks. */
  std::pair<std::string, std::vector<int32>> Marks() { return Copy(fMarks); }
  std::vector<Entry> fEntries;
  std::atomic<int> fCount{-2}; // -2: the number of entries; -1: no answer's field
  std::atomic<bool> fAnswers{true};
  std::atomic<bool> fIsOutside{false}; // answers a handshake as to another process
  std::atomic<bigtime_t> fLateUs{0};   // delay of the answers about entries
  /** That a front end wanted to be played. */
  std::string PlayedFile() { return Copy(fPlayedFile); }
  std::atomic<int> fHandshakes{0};
  std::atomic<int> fPlayed{-1};
  std::atomic<bool> fFaded{false};

  void MessageReceived(BMessage* message) override {
    if (!fAnswers) {
      fUnanswered.push_back(*message); // kept, so that the asker is not released either
      return;
    }
    switch (message->what) {
    case kMsgHostHandshake:
      return Handshake(*message);
    case kMsgHostInformation:
      return Inform(*message);
    case B_COUNT_PROPERTIES:
      return Count(*message);
    case B_GET_PROPERTY:
      return Get(message);
    case B_EXECUTE_PROPERTY:
      return Execute(message);
    case kMsgHostSeek:
    case kMsgHostSeekBy:
    case kMsgHostPlayPause:
    case kMsgHostCountIn:
    case kMsgHostSpeedBy:
      return Keep(*message);
    case kMsgHostPlayPart:
      return KeepPart(*message);
    case kMsgHostMarks:
      return KeepMarks(*message);
    case kMsgHostOpen:
      return Set(&fPlayedFile, message->GetString("path"));
    default:
      BApplication::MessageReceived(message);
    }
  }

private:
  void Handshake(const BMessage& message) {
    ++fHandshakes;
    BMessage answer(kMsgHostHandshake);
    if (fIsOutside)
      answer.AddString("Signature", Signature());
    else
      answer.AddMessenger("Msgr", BMessenger(this));
    message.SendReply(&answer);
  }
  void Inform(const BMessage& message) {
    std::string record = Copy(fRecord);
    const auto earlierMs = Copy(fEarlierMs);
    const auto isPlaying = Copy(fIsPlaying);
    int64 whenUs = 0;
    const bool asksForEarlier = message.FindInt64("When", &whenUs) == B_OK;
    if (asksForEarlier) ++fEarlierRequests;
    BMessage answer(kMsgHostInformation);
    if (asksForEarlier && earlierMs) {
      std::memcpy(record.data() + THostInformation::kPositionAt, &*earlierMs, sizeof *earlierMs);
      answer.AddInt64("When", whenUs);
    }
    if (!record.empty()) answer.AddData("Info", B_STRING_TYPE, record.data(), record.size());
    if (isPlaying) answer.AddBool("Playing", *isPlaying);
    message.SendReply(&answer);
    if (asksForEarlier) return;
    WaitUntilTaken(message.ReturnAddress());
    const std::lock_guard lock(fMutex);
    if (fRecord == record) ++fHeard;
  }
  /** The mailbox answers only after it has handled all earlier messages. */
  static void WaitUntilTaken(const BMessenger& mailbox) {
    const BMessage nothing('none');
    BMessage answer;
    mailbox.SendMessage(&nothing, &answer);
  }
  void Keep(const BMessage& command) {
    int32 number = -1;
    for (const char* const name : {"Time", "Percent", "TimeMs"}) number = command.GetInt32(name, number);
    const std::lock_guard lock(fMutex);
    fCommands.emplace_back(command.what, number);
  }
  void KeepPart(const BMessage& message) {
    Set(&fPart, std::to_string(message.GetInt32("FromMs", -1)) + ".." + std::to_string(message.GetInt32("ToMs", -1)) +
                    (message.GetBool("Loop") ? " loop" : ""));
  }
  void KeepMarks(const BMessage& message) {
    const std::lock_guard lock(fMutex);
    fMarks = {message.GetString("Title"), {}};
    int32 timeMs = 0;
    for (int32 i = 0; message.FindInt32("TimeMs", i, &timeMs) == B_OK; ++i) fMarks.second.push_back(timeMs);
  }
  void Count(const BMessage& message) {
    BMessage answer(B_REPLY);
    const int count = fCount;
    if (count != -1) answer.AddInt32("result", count == -2 ? static_cast<int32>(fEntries.size()) : count);
    message.SendReply(&answer);
  }
  int32 IndexOf(BMessage* message) {
    std::string property;
    uint32 form = 0;
    int32 index = -1;
    message->GetCurrentSpecifier(&property, &form, nullptr);
    if (property != "Playlist") return -1;
    message->PopSpecifier();
    message->GetCurrentSpecifier(&property, &form, &index);
    return property == "Entry" && form == B_INDEX_SPECIFIER ? index : -1;
  }
  void Get(BMessage* message) {
    const int32 index = IndexOf(message);
    snooze(fLateUs);
    BMessage answer(B_REPLY);
    if (index >= 0 && index < static_cast<int32>(fEntries.size())) {
      const Entry& entry = fEntries[static_cast<size_t>(index)];
      answer.AddString("filename", entry.path);
      answer.AddString("title", entry.title);
      answer.AddInt32("time", 1000);
      answer.AddBool("played", true);
      if (entry.whole) answer.AddInt32("nr", index);
    }
    message->SendReply(&answer);
  }
  void Execute(BMessage* message) {
    fFaded = message->GetBool("Fade");
    fPlayed = IndexOf(message);
  }

  std::atomic<int> fEarlierRequests{0};
  std::mutex fMutex; // guards all below
  std::string fRecord;
  int fHeard = 0;
  std::optional<bool> fIsPlaying;
  std::optional<int32> fEarlierMs;
  std::string fPart;
  std::vector<Command> fCommands;
  std::pair<std::string, std::vector<int32>> fMarks;
  std::vector<BMessage> fUnanswered;
  std::string fPlayedFile;
};
