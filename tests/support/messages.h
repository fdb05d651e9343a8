#pragma once

#include "platform/app/message.h"
#include "platform/app/messenger.h"
#include "platform/storage/entry_ref.h"
#include "tests/support/testing.h"

#include <type_traits>

inline void add_fields(BMessage*) {}
template <typename Value, typename... Rest>
void add_fields(BMessage* message, const char* name, const Value& value, const Rest&... rest) {
  if constexpr (std::is_same_v<Value, bool>)
    message->AddBool(name, value);
  else if constexpr (std::is_same_v<Value, int64>)
    message->AddInt64(name, value);
  else if constexpr (std::is_integral_v<Value>)
    message->AddInt32(name, static_cast<int32>(value));
  else if constexpr (std::is_convertible_v<Value, std::string_view>)
    message->AddString(name, value);
  else if constexpr (std::is_same_v<Value, BRect>)
    message->AddRect(name, value);
  else if constexpr (std::is_same_v<Value, entry_ref>)
    message->AddRef(name, &value);
  else if constexpr (std::is_same_v<Value, BMessage>)
    message->AddMessage(name, &value);
  else
    message->AddPointer(name, value);
  add_fields(message, rest...);
}

/** A message with fields: message_of('what', "Time", 5000, "path", "/a.mp3"). */
template <typename... Fields>
BMessage message_of(uint32 what, const Fields&... fields) {
  BMessage message(what);
  add_fields(&message, fields...);
  return message;
}

/** The value of a field; empty when there is none of that type. */
template <typename Value>
std::optional<Value> field(const BMessage& message, const char* name, int32 index = 0) {
  Value value{};
  const auto find = [&] {
    if constexpr (std::is_same_v<Value, bool>) return message.FindBool(name, index, &value);
    if constexpr (std::is_same_v<Value, int32>) return message.FindInt32(name, index, &value);
    if constexpr (std::is_same_v<Value, int64>) return message.FindInt64(name, index, &value);
    if constexpr (std::is_same_v<Value, std::string>) return message.FindString(name, index, &value);
    if constexpr (std::is_same_v<Value, BRect>) return message.FindRect(name, index, &value);
    if constexpr (std::is_same_v<Value, entry_ref>) return message.FindRef(name, index, &value);
    if constexpr (std::is_same_v<Value, void*>) return message.FindPointer(name, &value);
  };
  return find() == B_OK ? std::optional(value) : std::nullopt;
}

/** The answer to a question. */
inline BMessage ask(const BMessenger& whom, const BMessage& question) {
  BMessage answer;
  EXPECT_EQ(whom.SendMessage(&question, &answer), B_OK);
  return answer;
}

/** Returns when all earlier messages are handled. */
inline void wait_for(const BMessenger& looper) {
  ask(looper, BMessage('wait'));
}

inline entry_ref ref_of(const std::string& path) {
  entry_ref ref;
  EXPECT_EQ(get_ref_for_path(path.c_str(), &ref), B_OK);
  return ref;
}
