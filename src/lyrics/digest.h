#pragma once

#include "platform/support/types.h"

#include <cstddef>
#include <string_view>

/** A 64-bit digest (FNV-1a over words of 8 bytes) of bytes that arrive in pieces. The same on every machine and in
   every version, so that it can be stored. Detects changes; not cryptographic. */
class TDigest {
public:
  /** `size` is the total of all pieces. */
  explicit TDigest(uint64 size);
  /** The value does not depend on where the pieces are cut. */
  void Add(std::string_view piece);
  template <typename Number>
  void AddNumber(Number number) {
    char bytes[sizeof number];
    for (size_t i = 0; i < sizeof number; ++i) bytes[i] = static_cast<char>(static_cast<uint64>(number) >> (8 * i));
    Add({bytes, sizeof bytes});
  }
  /** After the last piece. */
  uint64 Value() const;

private:
  void AddWord(uint64 word);

  uint64 fValue;
  char fRest[sizeof(uint64)] = {}; // an unfinished word
  size_t fRestSize = 0;
};

uint64 digest_of(std::string_view bytes);
