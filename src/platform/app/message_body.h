#pragma once

#include "platform/app/message.h"
#include "platform/app/remote_letter.h"

#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>
#include <variant>
#include <vector>

/** The innards of a message, shared by the files that implement it; not for anyone else. */

/** Bytes of a type that the message does not interpret. */
struct RawValue {
  std::vector<char> bytes;
  bool isFixedSize = true;
};

using FieldValue = std::variant<bool, int32, int64, float, double, std::string, BPoint, BRect, entry_ref, BMessage,
                                BMessenger, const void*, RawValue>;

/** What a field of type 'CSTR' holds: a text, when the bytes are one and its NUL, else the bytes as they are. */
FieldValue text_value(std::string_view bytes);

/** The types whose values the message interprets and that are given as bytes: numbers, points, rectangles, references,
    and texts. */
bool is_interpreted(type_code type);
/** Stores a value of such a type; false when the bytes are no value of it. */
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

/** Someone who waits for the answer to a question. Any thread. */
class ReplyReceiver {
public:
  virtual ~ReplyReceiver() = default;
  /** Only the first answer counts; false when there was one, or the asker is gone. */
  virtual bool Put(const BMessage& answer) = 0;
  /** Nobody will answer: releases the asker, unless it has its answer. Called by destructors. */
  virtual void Drop() noexcept = 0;
};

/** Where an answer will come. */
class AnswerSource {
public:
  virtual ~AnswerSource() = default;
  /** Waits for the answer; nothing after `timeout` microseconds. */
  virtual std::optional<BMessage> Take(bigtime_t timeout) = 0;
};

/** Where one waiting asker of this process gets its answer. */
class ReplySlot : public ReplyReceiver, public AnswerSource {
public:
  bool Put(const BMessage& answer) override;
  void Drop() noexcept override;
  std::optional<BMessage> Take(bigtime_t timeout) override;

private:
  std::mutex fMutex;
  std::condition_variable fArrived;
  bool fDone = false;    // answered or dropped
  bool fDropped = false; // whoever takes the answer gets B_NO_REPLY_CODE
  std::optional<BMessage> fAnswer;
};

/** What travels with one delivery. The last copy of a question that goes away unanswered releases the asker. */
struct BMessage::Envelope {
  uint64 handlerToken = 0;
  BMessenger replyTo;
  /** Instead, where the sender is another process; found only when an answer is sent. Without a port: nobody there. */
  RemoteAddress remoteReplyTo;
  std::shared_ptr<ReplyReceiver> asker;
  /** Alive while this delivery is: tells its sender that it has not been handled yet. */
  std::shared_ptr<void> mark;
  bool remote = false;
  bool dropped = false;
  BPoint dropPoint;

  ~Envelope();
};
