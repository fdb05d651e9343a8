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

/** What a message carries to another process beside itself. */
struct LetterHead {
  /** 0: to the bearer of the signature that the port stands for. */
  uint64 looperToken = 0;
  uint64 handlerToken = 0;
  /** Without a port: nobody waits for an answer there. */
  RemoteAddress replyTo;
};

std::vector<char> letter_bytes(const LetterHead& head, const BMessage& message);
/** Untrusted input. `body` is what the message is read from; false, and nothing changed, when there is no head. */
bool read_letter_head(std::span<const char> bytes, LetterHead* head, std::span<const char>* body);
