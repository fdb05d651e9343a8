#include "songsound/sound_bytes.h"

#include <zlib.h>

#include <climits>

namespace {

constexpr std::string_view kMark = "SNSD";
constexpr uint32 kVersion = 1;
constexpr size_t kHead = 28;
constexpr size_t kOnsetBytes = 5;

constexpr std::string_view kPackedMark = "SNSZ";
constexpr size_t kPackedHead = 8;

void put(std::string* bytes, size_t number) {
  for (int shift = 0; shift < 32; shift += 8) bytes->push_back(static_cast<char>(number >> shift & 0xff));
}

uint32 number_at(std::string_view bytes, size_t at) {
  uint32 number = 0;
  for (size_t i = 0; i < 4; ++i) number |= static_cast<uint32>(static_cast<unsigned char>(bytes[at + i])) << (8 * i);
  return number;
}

struct THead {
  size_t fromMs, columns, isWhole, durationMs, onsets;

  bool IsValid() const {
    const bool isBounded = columns <= kMostSoundColumns && onsets <= kMostOnsets && durationMs <= INT_MAX;
    const bool isInTime = fromMs <= INT_MAX - kLongestPartMs && fromMs % kSoundColumnMs == 0;
    return isBounded && isInTime && (isWhole == 1 || (isWhole == 0 && durationMs == 0 && onsets == 0));
  }
  size_t TotalBytes() const { return kHead + columns * (kSoundBands + 1) + onsets * kOnsetBytes; }
};

std::optional<THead> head_of(std::string_view bytes) {
  if (bytes.size() < kHead || !bytes.starts_with(kMark) || number_at(bytes, 4) != kVersion) return {};
  const THead head{number_at(bytes, 8), number_at(bytes, 12), number_at(bytes, 16), number_at(bytes, 20),
                   number_at(bytes, 24)};
  return head.IsValid() && head.TotalBytes() == bytes.size() ? std::optional(head) : std::nullopt;
}

std::vector<uint8> taken(std::string_view* bytes, size_t count) {
  const std::string_view piece = bytes->substr(0, count);
  bytes->remove_prefix(count);
  return {piece.begin(), piece.end()};
}

/** False if they do not ascend within the song. */
bool read_onsets(std::string_view bytes, TReadSound* sound) {
  uint32 least = 0;
  for (; !bytes.empty(); bytes.remove_prefix(kOnsetBytes)) {
    const uint32 timeMs = number_at(bytes, 0);
    if (timeMs < least || timeMs > static_cast<uint32>(sound->durationMs)) return false;
    least = timeMs + 1;
    sound->onsets.push_back({static_cast<int32>(timeMs), static_cast<uint8>(bytes[4])});
  }
  return true;
}

/** Each level as the difference from the one of the previous column, which compresses better. */
std::string differences(std::string_view bytes) {
  std::string result(bytes);
  for (size_t i = bytes.size(); i-- > kSoundBands;) result[i] = static_cast<char>(bytes[i] - bytes[i - kSoundBands]);
  return result;
}

void add_up(std::string* bytes) {
  for (size_t i = kSoundBands; i < bytes->size(); ++i)
    (*bytes)[i] = static_cast<char>((*bytes)[i] + (*bytes)[i - kSoundBands]);
}

} // namespace

std::string sound_bytes(const TReadSound& sound) {
  std::string bytes(kMark);
  put(&bytes, kVersion);
  put(&bytes, static_cast<size_t>(sound.part.fromMs));
  put(&bytes, sound.part.peaks.size());
  put(&bytes, sound.isWhole ? 1 : 0);
  put(&bytes, static_cast<size_t>(sound.durationMs));
  put(&bytes, sound.onsets.size());
  bytes.append(sound.part.levels.begin(), sound.part.levels.end());
  bytes.append(sound.part.peaks.begin(), sound.part.peaks.end());
  for (const TOnset& onset : sound.onsets) {
    put(&bytes, static_cast<size_t>(onset.timeMs));
    bytes.push_back(static_cast<char>(onset.strength));
  }
  return bytes;
}

std::optional<TReadSound> parse_sound(std::string_view bytes) {
  const auto head = head_of(bytes);
  if (!head) return {};
  TReadSound sound;
  sound.part.fromMs = static_cast<int32>(head->fromMs);
  sound.isWhole = head->isWhole == 1;
  sound.durationMs = static_cast<int32>(head->durationMs);
  bytes.remove_prefix(kHead);
  sound.part.levels = taken(&bytes, head->columns * kSoundBands);
  sound.part.peaks = taken(&bytes, head->columns);
  return read_onsets(bytes, &sound) ? std::optional(std::move(sound)) : std::nullopt;
}

std::string packed_sound(const TReadSound& sound) {
  const std::string bytes = differences(sound_bytes(sound));
  std::string packed(kPackedMark);
  put(&packed, bytes.size());
  uLongf size = compressBound(bytes.size());
  packed.resize(kPackedHead + size);
  auto* const target = reinterpret_cast<Bytef*>(packed.data() + kPackedHead);
  const auto* const source = reinterpret_cast<const Bytef*>(bytes.data());
  if (compress2(target, &size, source, bytes.size(), Z_BEST_SPEED) != Z_OK) return {};
  packed.resize(kPackedHead + size);
  return packed;
}

std::optional<TReadSound> unpack_sound(std::string_view packed) {
  if (packed.size() < kPackedHead || !packed.starts_with(kPackedMark)) return {};
  uLongf size = number_at(packed, 4);
  if (size > kMostSoundBytes) return {};
  std::string bytes(size, '\0');
  const auto* const source = reinterpret_cast<const Bytef*>(packed.data() + kPackedHead);
  auto* const target = reinterpret_cast<Bytef*>(bytes.data());
  if (uncompress(target, &size, source, packed.size() - kPackedHead) != Z_OK || size != bytes.size()) return {};
  add_up(&bytes);
  return parse_sound(bytes);
}
