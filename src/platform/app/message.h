#pragma once

#include "platform/app/messenger.h"
#include "platform/storage/entry_ref.h"
#include "platform/support/geometry.h"
#include "platform/support/types.h"

#include <memory>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

class BPositionIO;

/** Codes that the framework itself sends or understands. */
enum : uint32 {
  B_REFS_RECEIVED = '_RRC',  // "refs" (ref, one or more)
  B_SAVE_REQUESTED = 'SAVE', // "directory" (ref: its full path is the folder), "name" (string)
  B_CANCEL = '_CNC',         // a file panel closed: "source" (pointer to the panel)
  B_QUIT_REQUESTED = '_QRQ',
  B_ABOUT_REQUESTED = '_ABR',
  B_SIMPLE_DATA = 'DATA',    // a drop
  B_NODE_MONITOR = 'NDMN',   // see node_monitor.h
  B_WINDOW_MOVED = '_WMV',   // "where" (point: left top on the screen)
  B_WINDOW_RESIZED = '_WRS', // "width", "height" (float)
  B_KEY_DOWN = '_KYD',       // see platform/interface/view.h
  B_COUNT_PROPERTIES = 'PCNT',
  B_GET_PROPERTY = 'PGET',
  B_EXECUTE_PROPERTY = 'PEXE',
  B_REPLY = 'RPLY',
  B_NO_REPLY_CODE = '_NRP',          // the answer to a question that was dropped
  B_MESSAGE_NOT_UNDERSTOOD = '_MNU', // "error" (int32), "message" (string)
};

/** How a scripting message addresses a property. */
enum : uint32 { B_DIRECT_SPECIFIER = 1, B_INDEX_SPECIFIER = 2 };

/** A code and named, typed fields, each field a list of values of one type. A value type: copies are independent, but
    all copies of a received message share the right to answer it. Find functions change their output only with B_OK,
    else they return B_NAME_NOT_FOUND, B_BAD_TYPE or B_BAD_INDEX. Adding to a field of another type gives B_BAD_TYPE,
    adding data that is no value of its type B_BAD_VALUE; neither happens to a message that the caller has just made.
    Not thread-safe. */
class BMessage {
public:
  uint32 what = 0;

  BMessage() noexcept;
  explicit BMessage(uint32 code) noexcept;
  BMessage(const BMessage& other);
  BMessage& operator=(const BMessage& other);
  BMessage(BMessage&& other) noexcept;
  BMessage& operator=(BMessage&& other) noexcept;
  ~BMessage();

  status_t AddBool(const char* name, bool value);
  status_t AddInt32(const char* name, int32 value);
  status_t AddInt64(const char* name, int64 value);
  status_t AddFloat(const char* name, float value);
  status_t AddString(const char* name, std::string_view value);
  status_t AddPoint(const char* name, BPoint value);
  status_t AddRect(const char* name, BRect value);
  status_t AddRef(const char* name, const entry_ref* value);
  status_t AddMessage(const char* name, const BMessage* value);
  status_t AddMessenger(const char* name, const BMessenger& value);
  /** Pointers are valid in this process only; sender and receiver agree whether one may be dereferenced. */
  status_t AddPointer(const char* name, const void* value);
  status_t AddData(const char* name, type_code type, const void* bytes, size_t size, bool isFixedSize = true);

  [[nodiscard]] status_t FindBool(const char* name, bool* value) const { return FindBool(name, 0, value); }
  [[nodiscard]] status_t FindBool(const char* name, int32 index, bool* value) const;
  [[nodiscard]] status_t FindInt32(const char* name, int32* value) const { return FindInt32(name, 0, value); }
  [[nodiscard]] status_t FindInt32(const char* name, int32 index, int32* value) const;
  [[nodiscard]] status_t FindInt64(const char* name, int64* value) const { return FindInt64(name, 0, value); }
  [[nodiscard]] status_t FindInt64(const char* name, int32 index, int64* value) const;
  [[nodiscard]] status_t FindFloat(const char* name, float* value) const { return FindFloat(name, 0, value); }
  [[nodiscard]] status_t FindFloat(const char* name, int32 index, float* value) const;
  [[nodiscard]] status_t FindDouble(const char* name, double* value) const { return FindDouble(name, 0, value); }
  [[nodiscard]] status_t FindDouble(const char* name, int32 index, double* value) const;
  [[nodiscard]] status_t FindString(const char* name, std::string* value) const { return FindString(name, 0, value); }
  [[nodiscard]] status_t FindString(const char* name, int32 index, std::string* value) const;
  [[nodiscard]] status_t FindRect(const char* name, BRect* value) const { return FindRect(name, 0, value); }
  [[nodiscard]] status_t FindRect(const char* name, int32 index, BRect* value) const;
  [[nodiscard]] status_t FindRef(const char* name, entry_ref* value) const { return FindRef(name, 0, value); }
  [[nodiscard]] status_t FindRef(const char* name, int32 index, entry_ref* value) const;
  [[nodiscard]] status_t FindMessage(const char* name, BMessage* value) const { return FindMessage(name, 0, value); }
  [[nodiscard]] status_t FindMessage(const char* name, int32 index, BMessage* value) const;
  [[nodiscard]] status_t FindMessenger(const char* name, BMessenger* value) const;
  [[nodiscard]] status_t FindPointer(const char* name, void** value) const;
  /** The bytes belong to the message and are valid until it changes. For strings the size counts the final NUL. */
  [[nodiscard]] status_t FindData(const char* name, type_code type, const void** bytes, ssize_t* size) const {
    return FindData(name, type, 0, bytes, size);
  }
  [[nodiscard]] status_t FindData(const char* name, type_code type, int32 index, const void** bytes,
                                  ssize_t* size) const;

  /** The value, or `absent` where Find... fails. */
  bool GetBool(const char* name, bool absent = false) const;
  int32 GetInt32(const char* name, int32 absent = 0, int32 index = 0) const;
  int64 GetInt64(const char* name, int64 absent = 0) const;
  float GetFloat(const char* name, float absent = 0) const;
  std::string GetString(const char* name, std::string absent = {}, int32 index = 0) const;

  bool HasField(const char* name) const;
  std::vector<std::string> FieldNames() const;
  status_t RemoveName(const char* name);
  bool IsEmpty() const;

  /** Specifiers are added innermost first; the last one added is resolved first. */
  status_t AddSpecifier(const char* property);
  status_t AddSpecifier(const char* property, int32 index);
  bool HasSpecifiers() const;
  /** The specifier to resolve now. `form` is B_DIRECT_SPECIFIER or B_INDEX_SPECIFIER; `index` is set for the latter.
      B_BAD_INDEX when all are resolved or there are none. */
  status_t GetCurrentSpecifier(std::string* property, uint32* form, int32* index) const;
  status_t PopSpecifier();

  /** The target of an answer; valid only for a message that was received. */
  BMessenger ReturnAddress() const;
  bool IsSourceWaiting() const;
  bool IsSourceRemote() const;
  /** True for a message made by a drag and drop onto a window. */
  bool WasDropped() const;
  void SetDropped(bool fromOtherApplication);
  /** Answers the sender; only the first answer counts. Does not block: an answer to a looper of another process is sent
      in the background, B_OK then only means that it was queued. B_NO_REPLY when no answer was requested, B_BAD_PORT_ID
      when the sender is gone. Fire-and-forget: most callers ignore the status. */
  status_t SendReply(uint32 code) const;
  status_t SendReply(const BMessage* reply) const;

  /** Serializes for files and other processes (docs/file-formats.md), without pointers and messengers. */
  [[nodiscard]] status_t Flatten(BPositionIO* stream) const;
  [[nodiscard]] std::vector<char> Flatten() const;
  /** Untrusted input: every count and length is checked against the bytes left. On failure the message is empty. */
  [[nodiscard]] status_t Unflatten(BPositionIO* stream);
  [[nodiscard]] status_t Unflatten(const void* bytes, size_t size);

private:
  friend class BMessenger;
  friend class BLooper;
  friend class RemoteMail;
  struct Body;
  struct Envelope;
  struct BodyReader;
  /** Owns the fields. Allocated lazily, with the first of them, so that an empty message needs no memory and moving one
      cannot fail; reading without a body sees an empty one. */
  class LazyBody {
  public:
    LazyBody() noexcept;
    LazyBody(const LazyBody& other);
    LazyBody(LazyBody&& other) noexcept;
    LazyBody& operator=(const LazyBody& other);
    LazyBody& operator=(LazyBody&& other) noexcept;
    ~LazyBody();
    Body* operator->();
    const Body* operator->() const;

  private:
    std::unique_ptr<Body> fBody;
  };
  /** Begins a new delivery; the marks of a drop and of another process are kept. */
  void Address(uint64 handlerToken, const BMessenger& replyTo, std::shared_ptr<class ReplyReceiver> asker,
               std::shared_ptr<void> mark = nullptr);
  LazyBody fBody;
  /** Sender and target; shared by the copies of one delivery. */
  std::shared_ptr<Envelope> fEnvelope;
};
