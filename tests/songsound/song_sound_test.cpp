/** The value that the lane reads, and the forms in which it comes through the pipe and the cache. */

#include "songsound/sound_bytes.h"

#include <gtest/gtest.h>

namespace {

TSoundPart part_of(int32 fromMs, size_t columns, uint8 level) {
  return {fromMs, std::vector<uint8>(columns * kSoundBands, level), std::vector<uint8>(columns, level)};
}

TReadSound whole_sound() {
  TReadSound sound{part_of(0, 40, 7), true, 200, {{3, 255}, {150, 1}, {200, 9}}};
  for (size_t i = 0; i < sound.part.levels.size(); ++i) sound.part.levels[i] = static_cast<uint8>(i * i / 7);
  return sound;
}

} // namespace

TEST(SongSound, PartsAreFoundByTimeAndTheNewestHides) {
  TSongSound sound;
  EXPECT_EQ(sound.Levels(0), nullptr);
  sound.Add(part_of(1000, 100, 1)); // to 1500
  sound.Add(part_of(1500, 100, 2));
  sound.Add({5000, {1, 2, 3}, {1}}); // fewer levels than bands
  EXPECT_TRUE(sound.HasPart(1003, 1999));
  EXPECT_FALSE(sound.HasPart(999, 1100));
  EXPECT_FALSE(sound.HasPart(1900, 2001));
  EXPECT_EQ(sound.Peak(1499), 1);
  EXPECT_EQ(sound.Peak(1500), 2);
  EXPECT_EQ(sound.Peak(5000), std::nullopt);
  const TSongSound before = sound;
  sound.Add(part_of(0, 600, 3)); // all of the song
  sound.SetDuration(3000);
  sound.SetOnsets({{20, 200}});
  EXPECT_TRUE(sound.HasPart(0, 3000));
  EXPECT_TRUE(sound.HasPart(2900, 4000)) << "there is no more of the song";
  EXPECT_EQ(sound.Levels(1499)[kSoundBands - 1], 3);
  EXPECT_EQ(before.Levels(1499)[0], 1);
  EXPECT_FALSE(before.IsComplete());
  EXPECT_TRUE(sound.IsComplete());
}

TEST(SongSound, ManyPartsOfALongSongDoNotGrowWithoutALimit) {
  TSongSound sound;
  for (int32 i = 0; i < 100; ++i) sound.Add(part_of(i * 1000, 10, 1));
  EXPECT_FALSE(sound.HasPart(0, 50));
  EXPECT_TRUE(sound.HasPart(99000, 99050));
}

TEST(SoundBytes, ComeThroughThePipeAndTheCacheAndSpoiltBytesDoNot) {
  const TReadSound whole = whole_sound();
  const TReadSound part{part_of(500, 3, 9), false, 0, {}};
  for (const TReadSound& sound : {whole, part}) {
    EXPECT_EQ(parse_sound(sound_bytes(sound)), sound);
    EXPECT_EQ(unpack_sound(packed_sound(sound)), sound);
  }
  const std::string bytes = sound_bytes(whole);
  for (size_t size = 0; size < bytes.size(); ++size) EXPECT_FALSE(parse_sound(bytes.substr(0, size))) << size;
  EXPECT_FALSE(parse_sound(bytes + '\0'));
  for (const size_t at : {0, 4, 8, 11, 12, 15, 16, 23, 24, 27}) {
    std::string spoilt = bytes;
    spoilt[at] = static_cast<char>(spoilt[at] ^ 0x81);
    EXPECT_FALSE(parse_sound(spoilt)) << at;
  }
  std::string unordered = bytes;
  unordered[bytes.size() - 10] = 2; // the second onset comes before the first
  EXPECT_FALSE(parse_sound(unordered));
  std::string packed = packed_sound(whole);
  packed[7] = 0x7f; // 2 GB
  EXPECT_FALSE(unpack_sound(packed));
  EXPECT_FALSE(unpack_sound(packed.substr(0, 100)));
}
