#pragma once

#include "platform/app/message.h"

#include <span>
#include <string>
#include <vector>

/** A looper, or one of its handlers, in another process. */
struct RemoteAddress {
  std::string port; // of the process
  uint64 looperToken = 0;
  uint64 handlerToken = 0;
};

/** The envelope of a message to another process. */
struct LetterHead {
  /** 0: to the owner of the port's signature. */
  uint64 looperToken = 0;
  uint64 handlerToken = 0;
  /** No port: no answer requested. */
  RemoteAddress replyTo;
};

std::vector<char> letter_bytes(const LetterHead& head, const BMessage& message);
/** Untrusted input. `body` is the serialized message; false, and nothing changed, when the head is not valid. */
[[nodiscard]] bool read_letter_head(std::span<const char> bytes, LetterHead* head, std::span<const char>* body);
