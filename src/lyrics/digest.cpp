#include "lyrics/digest.h"

#include <bit>
#include <cstring>

namespace {

constexpr uint64 kStart = 14695981039346656037U;
constexpr uint64 kPrime = 1099511628211U;
constexpr int kRotation = 29; // carries the high bits, which a multiplication never moves down
constexpr size_t kWord = sizeof(uint64);

/** Up to 8 bytes as a little-endian number. */
uint64 word_at(const char* bytes, size_t count) {
  uint64 word = 0;
  std::memcpy(&word, bytes, count);
  if constexpr (std::endian::native == std::endian::big) word = __builtin_bswap64(word);
  return word;
}

uint64 mixed(uint64 digest, uint64 word) {
  return std::rotl((digest ^ word) * kPrime, kRotation);
}

} // namespace

TDigest::TDigest(uint64 size) : fValue((kStart ^ size) * kPrime) {}

void TDigest::AddWord(uint64 word) {
  fValue = mixed(fValue, word);
}

void TDigest::Add(std::string_view piece) {
  if (fRestSize > 0) {
    const size_t count = piece.copy(fRest + fRestSize, kWord - fRestSize);
    fRestSize += count;
    piece.remove_prefix(count);
    if (fRestSize < kWord) return;
    AddWord(word_at(fRest, kWord));
    fRestSize = 0;
  }
  for (; piece.size() >= kWord; piece.remove_prefix(kWord)) AddWord(word_at(piece.data(), kWord));
  fRestSize = piece.copy(fRest, piece.size());
}

uint64 TDigest::Value() const {
  return fRestSize == 0 ? fValue : mixed(fValue, word_at(fRest, fRestSize));
}

uint64 digest_of(std::string_view bytes) {
  TDigest digest(bytes.size());
  digest.Add(bytes);
  return digest.Value();
}
