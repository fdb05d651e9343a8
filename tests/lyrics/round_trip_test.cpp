/** Files of any bytes: what reading, editing one line and saving does to the other lines is either nothing, or known
    before the save. */

#include "lyrics/document.h"
#include "lyrics/exact_lyrics.h"
#include "tests/support/long_tests.h"
#include "tests/support/messages.h"

namespace {

const int kRounds = long_tests() ? 20000 : 600;

/** Bytes as they occur in lyrics, in good and in broken files. */
std::string random_file(std::mt19937* random) {
  static const std::vector<std::string> kPieces = {
      "a",        "[00:01]", "\n",       "\n",       "\r\n",           "\r",     "\xE6\xAD\x8C", "\x89\xCC",
      "\x93\xFA", "\xB1",    "\x81",     "\xFF",     "\x1B$B2N\x1B(B", "\x1B$B", "2N",           "\x1B(B",
      "\x1B(J",   "\x1B(I1", "\x87\x90", "\xED\x40", "\xFA\x5C",       "\x1A",   "\x81\x60"};
  const bool isPlain = (*random)() % 2 == 0; // of one kind, so that many files are as they should be
  const size_t kind = (*random)() % kPieces.size();
  std::string file;
  for (size_t left = (*random)() % 20; left > 0; --left) {
    const size_t any = (*random)() % kPieces.size();
    file += kPieces[isPlain && any > 3 ? kind : any];
  }
  if ((*random)() % 10 == 0) file += std::string("\0rest", 5);
  return file;
}

/** The lines as bytes, without their ends. */
std::vector<std::string> raw_lines(std::string bytes, long crType) {
  bytes.resize(std::min(bytes.find('\0'), bytes.size()));
  std::vector<std::string> lines;
  std::string line;
  for (const char byte : bytes) {
    const bool isEnd = byte == '\n' || (byte == '\r' && crType == 2);
    if (isEnd)
      lines.push_back(std::exchange(line, {}));
    else if (byte != '\r')
      line += byte;
  }
  if (!line.empty()) lines.push_back(line);
  return lines;
}

} // namespace

class RoundTrip : public testing::TestWithParam<long> {};

TEST_P(RoundTrip, EveryOtherLineKeepsItsBytesOrTheLossIsKnownBeforehand) {
  const ScratchFolder folder;
  std::mt19937 random(11); // NOLINT: the same files in every run
  int whole = 0;
  for (int round = 0; round < kRounds; ++round) {
    const std::string bytes = random_file(&random);
    const entry_ref file = ref_of(folder.Write("a.lrc", bytes));
    std::list<std::string> read;
    long crType = 0;
    long encoding = 0;
    TReadReport report;
    ASSERT_TRUE(load_lyrics_as(GetParam(), file, &read, &crType, &encoding, &report));
    if (read.empty() || report.losses.Any()) continue;
    std::vector<std::string> lines(read.begin(), read.end());
    const TLyricsForm form{encoding_of(encoding), line_end_of(crType)};
    if (!characters_outside(lines, form.encoding).empty()) continue; // named before the save as well
    ++whole;
    const size_t edited = random() % lines.size();
    lines[edited] = "edited";
    std::vector<std::string> expected = raw_lines(bytes, crType);
    expected.resize(std::max(expected.size(), edited + 1));
    expected[edited] = "edited";
    ASSERT_EQ(raw_lines(encoded_lines(lines, form), crType), expected)
        << "round " << round << ": " << testing::PrintToString(bytes);
  }
  EXPECT_GT(whole, kRounds / 10) << "too few files are as they should be";
}

TEST(ReadLosses, OddAndBrokenBytesAreNoticedAlsoInFrontOfATail) {
  const ScratchFolder folder;
  for (const bool isBroken : {false, true}) {
    const std::string start = isBroken ? "\x93\xFA\x81" : "\x87\x90";
    const entry_ref file = ref_of(folder.Write("a.lrc", start + std::string("\n\0tail", 6)));
    const std::optional<TOpenedLyrics> opened = open_lyrics(file, file);
    ASSERT_TRUE(opened.has_value());
    EXPECT_EQ(opened->losses.tailBytes, 4);
    EXPECT_EQ(opened->losses.hasBrokenBytes, isBroken);
    EXPECT_EQ(opened->losses.hasOddBytes, !isBroken);
  }
}

INSTANTIATE_TEST_SUITE_P(Encodings, RoundTrip, testing::Values(0L, 1L, 2L, kDetectEncoding),
                         [](const auto& row) { return "Encoding" + std::to_string(row.param); });
