#pragma once

#include "platform/app/message.h"
#include "platform/app/remote_letter.h"

#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>
#include <variant>
#include <vector>

/** Implementation of messages, private to the messaging. */

/** Bytes of a type that the message does not interpret. */
struct RawValue {
  std::vector<char> bytes;
  bool isFixedSize = true;
};

using FieldValue = std::variant<bool, int32, int64, float, double, std::string, BPoint, BRect, entry_ref, BMessage,
                                BMessenger, const void*, RawValue>;

/** The value of a field of type 'CSTR': a string, when the bytes are one with its NUL, else raw bytes. */
FieldValue text_value(std::string_view bytes);

/** Whether values of the type can be given as bytes and are interpreted: numbers, points, rectangles, references and
    strings. */
bool is_interpreted(type_code type);
/** Stores a value of an interpreted type; false when the bytes are not a value of it. */
bool interpret(type_code type, std::string_view bytes, FieldValue* value);

struct MessageField {
  std::string name;
  type_code type;
  std::vector<FieldValue> values;
};

struct MessageSpecifier {
  std::string property;
  uint32 form;
  int32 index;
};

struct BMessage::Body {
  std::vector<MessageField> fields;
  /** Innermost first; `unresolved` counts those from the front that are still to be resolved. */
  std::vector<MessageSpecifier> specifiers;
  size_t unresolved = 0;

  MessageField* Find(const char* name);
  const MessageField* Find(const char* name) const;
};

/** Receives the answer to a question. Thread-safe. */
class ReplyReceiver {
public:
  virtual ~ReplyReceiver() = default;
  /** False when the question was answered before, or the asker is gone. */
  virtual bool Put(const BMessage& answer) = 0;
  /** Releases an asker that has no answer yet: there will be none. Called by destructors. */
  virtual void Drop() noexcept = 0;
};

/** Delivers the answer to the asker. */
class AnswerSource {
public:
  virtual ~AnswerSource() = default;
  /** Waits for the answer; nullopt after `timeout` microseconds. */
  virtual std::optional<BMessage> Take(bigtime_t timeout) = 0;
};

/** The answer to a question within this process. Thread-safe. */
class ReplySlot : public ReplyReceiver, public AnswerSource {
public:
  bool Put(const BMessage& answer) override;
  void Drop() noexcept override;
  std::optional<BMessage> Take(bigtime_t timeout) override;

private:
  std::mutex fMutex; // guards fDone, fDropped, fAnswer
  std::condition_variable fArrived;
  bool fDone = false;    // answered or dropped
  bool fDropped = false; // the answer is B_NO_REPLY_CODE
  std::optional<BMessage> fAnswer;
};

/** The data of one delivery. Destroying the last copy of an unanswered question releases the asker. */
struct BMessage::Envelope {
  uint64 handlerToken = 0;
  BMessenger replyTo;
  /** Replaces `replyTo` when the sender is another process; resolved when an answer is sent. No port: none requested.
   */
  RemoteAddress remoteReplyTo;
  std::shared_ptr<ReplyReceiver> asker;
  /** Lives as long as the delivery: the sender sees whether it has been handled. */
  std::shared_ptr<void> mark;
  bool remote = false;
  bool dropped = false;
  /** The queue holds one coalesced message of its code and handler at most. */
  bool coalesced = false;

  ~Envelope();
};
