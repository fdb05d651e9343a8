/** Waveform and cover: decoding, serialization, cache. */

#include "common/song_cache.h"
#include "player/peaks/loudness.h"
#include "player/peaks/read_song.h"
#include "player/pictures/picture_cache.h"
#include "tests/support/testing.h"
#include "tests/support/wav.h"

using namespace testing;

namespace {

TSongPicture picture_of(const std::string& path) {
  return read_song_confined(open_song(path)).picture;
}

} // namespace

TEST(SongPicture, LoudnessIsThatOfTheLoudestStretchOfEachPart) {
  EXPECT_THAT(scaled_loudness({0.1F, 0.2F, 0.05F, 0, 0.4F}, 2), ElementsAre(128, 255));
  EXPECT_THAT(scaled_loudness({0.5F}, 10), ElementsAre(255));
  EXPECT_THAT(scaled_loudness({0, 0}, 2), ElementsAre(0, 0)) << "silence is not raised";
  EXPECT_TRUE(scaled_loudness({}, 10).empty());
}

TEST(SongPicture, IsFoundInASongAndInNothingElse) {
  const ScratchFolder folder;
  const TSongPicture picture = picture_of(folder.Write("silent.wav", silent_wav()));
  EXPECT_EQ(picture.loudness.size(), 25U) << "half a second";
  EXPECT_THAT(picture.loudness, Each(0));
  EXPECT_TRUE(picture.cover.empty());
  std::string cut = silent_wav(4).substr(0, 8000);
  cut.insert(36, std::string("fact\4\0\0\0\x80\x3e\0\0", 12)); // two seconds
  EXPECT_EQ(picture_of(folder.Write("cut.wav", cut)).loudness.size(), 100U) << "as long as it says it is";
  for (const char* bytes : {"", "no sound in here", "RIFF....WAVEfmt "}) {
    EXPECT_TRUE(picture_of(folder.Write("bad.wav", bytes)).loudness.empty());
  }
}

TEST(SongPicture, TheCoverIsFoundBesideTheSongAndGivenOnAsAFile) {
  const ScratchFolder folder;
  const std::string song = folder.Write("a.wav", silent_wav());
  folder.Write("cover.jpg", "no picture");
  EXPECT_TRUE(read_song_confined(open_song(song)).coverJpeg.empty());
  // A thousand red points in a row, in the simplest picture format; the wrong file name does not matter.
  std::string points("BM\xee\x0b\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\xe8\x03\0\0\1\0\0\0\1\0\x18\0\0\0\0\0\xb8\x0b\0\0",
                     38);
  points.resize(54);
  for (int i = 0; i < 1000; ++i) points += std::string("\0\0\xff", 3);
  folder.Write("folder.png", points);
  const TSeenSong seen = read_song_confined(open_song(song));
  EXPECT_EQ(seen.picture.coverWidth, kLargestCover);
  EXPECT_EQ(seen.picture.coverHeight, 1);
  ASSERT_EQ(seen.picture.cover.size(), 3U * kLargestCover);
  EXPECT_EQ(seen.picture.cover.substr(0, 3), std::string("\xff\0\0", 3));
  const ScratchFolder jpegFolder;
  const std::string other = jpegFolder.Write("b.wav", silent_wav());
  jpegFolder.Write("cover.jpg", seen.coverJpeg);
  EXPECT_EQ(read_song_confined(open_song(other)).picture.coverWidth, kLargestCover) << "the file can be read again";
}

TEST(SongPicture, ComesThroughThePipeAndSpoiltBytesDoNot) {
  TSongPicture picture;
  picture.loudness = {1, 2, 255};
  picture.coverWidth = 2;
  picture.coverHeight = 1;
  picture.cover = std::string("\0\1\2\3\4\5", 6);
  const std::string bytes = picture_bytes(picture);
  const auto back = parse_picture(bytes);
  ASSERT_TRUE(back);
  EXPECT_EQ(back->loudness, picture.loudness);
  EXPECT_EQ(back->cover, picture.cover);
  for (size_t size = 0; size < bytes.size(); ++size) EXPECT_FALSE(parse_picture(bytes.substr(0, size))) << size;
  for (const size_t at : {0, 4, 8, 11, 12, 15, 16, 19}) {
    std::string spoilt = bytes;
    spoilt[at] = static_cast<char>(spoilt[at] ^ 0xff);
    EXPECT_FALSE(parse_picture(spoilt)) << at;
  }
}

TEST(SongPicture, TheCacheKeepsTheNewestWithinItsLimit) {
  const ScratchFolder folder;
  setenv("XDG_CACHE_HOME", folder.Path().c_str(), 1);
  const std::string song = folder.Write("a.wav", "1");
  const std::string first = cached_picture_path(song);
  EXPECT_EQ(cached_picture_path(song), first);
  folder.Write("a.wav", "22");
  const std::string second = cached_picture_path(song);
  EXPECT_NE(second, first) << "the song has changed";
  EXPECT_EQ(cached_picture_path(folder.File("none")), "");
  keep_cached(first, std::string(600, 'x'), 1000);
  std::filesystem::last_write_time(first, std::filesystem::file_time_type::clock::now() - std::chrono::hours(1));
  keep_cached(second, std::string(300, 'x'), 1000);
  EXPECT_TRUE(std::filesystem::exists(first));
  keep_cached(second, std::string(500, 'x'), 1000);
  EXPECT_FALSE(std::filesystem::exists(first)) << "used longest ago";
  EXPECT_EQ(std::filesystem::file_size(second), 500U);
}
