/** The bytes of tags, as they are changed inside the sandbox. */

#include "songtags/helper/byte_order.h"
#include "songtags/helper/id3_edit.h"
#include "songtags/helper/mp4_edit.h"
#include "songtags/helper/read_lyrics.h"
#include "songtags/helper/vorbis_comment_edit.h"

#include <gtest/gtest.h>
#include <tbytevectorstream.h>

namespace {

const std::string kText = "[00:01.00]a\n[01:05.28]b"; // 65280 ms is 00 00 FF 00

std::string id3(char major, char flags, const std::string& body) {
  return "ID3" + std::string{major, '\0', flags} + synchsafe_bytes(static_cast<uint32_t>(body.size())) + body;
}

std::string frame(char major, const std::string& id, const std::string& fields, char flag = '\0') {
  const auto size = static_cast<uint32_t>(fields.size());
  if (major == 2) return id + big_endian_bytes(size, 3) + fields;
  return id + (major == 4 ? synchsafe_bytes(size) : big_endian_bytes(size, 4)) + std::string{'\0', flag} + fields;
}

std::vector<TEmbeddedLyrics> lyrics_in(const std::string& tag) {
  const std::string song = tag + "\xFF\xFB\x90\x64" + std::string(2000, '\0');
  TagLib::ByteVectorStream stream({song.data(), static_cast<unsigned>(song.size())});
  return read_lyrics(&stream).found;
}

std::string atom(const std::string& name, const std::string& body) {
  return big_endian_bytes(8 + body.size(), 4) + name + body;
}

/** A track with chunks at 50 and 5000. */
std::string moov_with(const std::string& more) {
  const std::string stco =
      std::string(4, '\0') + big_endian_bytes(2, 4) + big_endian_bytes(50, 4) + big_endian_bytes(5000, 4);
  return atom("moov",
              atom("trak", atom("mdia", atom("minf", atom("stbl", atom("stco", stco) + atom("stsz", "sizes"))))) +
                  more);
}

} // namespace

TEST(Id3Edit, OtherFramesStayInEveryVersionOfTheTag) {
  const std::string others[] = {"TT2", "ZZZ", "TIT2", "ZZZZ"};
  const auto lyrics = lyrics_to_write(TSongFormat::kId3, kText);
  for (const char major : {2, 3, 4}) {
    const size_t first = major == 2 ? 0 : 2;
    const std::string before = frame(major, others[first], std::string("\0Titel", 6));
    const std::string after = frame(major, others[first + 1], "any\xFF\xE0 bytes");
    const std::string uslt = frame(major, major == 2 ? "ULT" : "USLT", std::string("\0deuName\0alt", 12));
    const std::string second = frame(major, major == 2 ? "ULT" : "USLT", std::string("\0eng\0old", 8));
    for (const std::string& body :
         {before + after, before + uslt + second + after, before + uslt + after + std::string(9000, '\0')}) {
      const auto made = edited_id3(id3(major, '\0', body), lyrics);
      ASSERT_TRUE(made) << int{major};
      EXPECT_EQ(lyrics_in(*made), lyrics) << int{major};
      EXPECT_NE(made->find(before), std::string::npos);
      EXPECT_NE(made->find(after), std::string::npos);
      EXPECT_EQ(made->find("alt"), std::string::npos);
      EXPECT_EQ(made->find(second) != std::string::npos, body.find(second) != std::string::npos) << "another language";
      EXPECT_EQ(made->find("deu") != std::string::npos, body.find("deu") != std::string::npos) << "the language stays";
      if (major == 4) {
        EXPECT_EQ(made->find("Name") != std::string::npos, body.find("Name") != std::string::npos);
        EXPECT_NE(made->find("\nb"), std::string::npos)
            << "each synchronized line but the first begins with a line feed";
      }
      EXPECT_EQ(edited_id3(*made, lyrics), made) << "again changes nothing";
    }
  }
  EXPECT_EQ(lyrics_in(*edited_id3("", lyrics)), lyrics) << "a song without a tag";
  const auto untimed = lyrics_to_write(TSongFormat::kId3, "a\nb");
  EXPECT_EQ(lyrics_in(*edited_id3(*edited_id3("", lyrics), untimed)), untimed) << "old times do not stay";
}

TEST(ReadLyrics, SyllablesAreJoinedToTheLinesThatBeginWithALineFeed) {
  const auto at = [](const std::string& text, uint64_t timeMs) { return text + '\0' + big_endian_bytes(timeMs, 4); };
  const std::string fields = std::string("\3eng\2\1\0", 7) + at("One ", 1000) + at("two", 1500) + at("\nthr\nee", 2000);
  const std::vector<TEmbeddedLyrics> expected{{TLyricsPlace::kSylt, "[00:01.00]One two\n[00:02.00]thr ee"}};
  EXPECT_EQ(lyrics_in(id3(4, '\0', frame(4, "SYLT", fields))), expected);
}

TEST(Id3Edit, UnsynchronisedTagsAndExtendedHeadersAreUnderstood) {
  const auto lyrics = lyrics_to_write(TSongFormat::kId3, kText);
  const std::string v3 = std::string("TIT2\0\0\0\x04\0\0\0a\xFF\0b", 15); // the size counts without the added zero
  const auto plain = edited_id3(id3(3, '\x80', v3), lyrics);
  ASSERT_TRUE(plain);
  EXPECT_NE(plain->find(std::string("\0a\xFF"
                                    "b",
                                    4)),
            std::string::npos);
  EXPECT_EQ(lyrics_in(*plain), lyrics);
  const auto whole = edited_id3(id3(4, '\x80', frame(4, "TIT2", std::string("\0a\xFF\0b", 5), 2)), lyrics);
  ASSERT_TRUE(whole);
  EXPECT_NE(whole->find(std::string("\0a\xFF\0b", 5)), std::string::npos);
  EXPECT_EQ(lyrics_in(*whole), lyrics);
  const std::string title = frame(3, "TIT2", std::string("\0a", 2));
  EXPECT_EQ(edited_id3(id3(3, '\x40', big_endian_bytes(6, 4) + std::string(6, '\0') + title), lyrics),
            edited_id3(id3(3, '\0', title), lyrics));
}

TEST(Id3Edit, ADamagedTagIsRefused) {
  const auto lyrics = lyrics_to_write(TSongFormat::kId3, kText);
  const std::string title = frame(3, "TIT2", std::string("\0a", 2));
  const std::string bad[] = {id3(5, '\0', title),
                             id3(3, '\0', title.substr(0, 11)),
                             id3(3, '\0', title + "lower4cased"),
                             id3(3, '\0', title).substr(0, 20),
                             id3(2, '\x40', frame(2, "TT2", std::string("\0a", 2))),
                             id3(3, '\x40', "\xFF\xFF\xFF\xFF"),
                             id3(3, '\0', title + std::string(10, '\0') + "x")};
  for (const std::string& tag : bad) EXPECT_FALSE(edited_id3(tag, lyrics)) << &tag - bad;
}

TEST(VorbisCommentEdit, OnlyLyricsFieldsChangeAndBytesBehindTheFieldsStay) {
  const auto text = [](const std::string& one) { return little_endian_bytes(one.size(), 4) + one; };
  const auto comment = [&](const std::vector<std::string>& fields, const std::string& end) {
    std::string bytes = text("vendor") + little_endian_bytes(fields.size(), 4);
    for (const std::string& field : fields) bytes += text(field);
    return bytes + end;
  };
  const auto lyrics = lyrics_to_write(TSongFormat::kVorbisComment, kText);
  const std::string old =
      comment({"Title=x", "lyrics=old", "broken \xFF", "UnsyncedLyrics=old", "LYRICS2=y"}, "\x01rest");
  const std::string made =
      comment({"Title=x", "broken \xFF", "LYRICS2=y", "LYRICS=" + kText, "UNSYNCEDLYRICS=a\nb"}, "\x01rest");
  EXPECT_EQ(edited_vorbis_comment(old, lyrics), made);
  for (size_t size = 0; size + 5 < old.size(); ++size)
    EXPECT_FALSE(edited_vorbis_comment(old.substr(0, size), lyrics)) << size;
  EXPECT_FALSE(edited_vorbis_comment(text("") + "\xFF\xFF\xFF\xFF", lyrics));
}

TEST(Mp4Edit, OtherAtomsStayAndOnlyChunksAfterTheAtomMove) {
  const std::string title = atom("\xA9nam", atom("data", std::string(7, '\0') + "\1title"));
  const std::string list = atom("ilst", title + atom("\xA9lyr", "old") + atom("gnre", "bytes"));
  const std::string handler = atom("hdlr", std::string(25, 'h'));
  const std::string free =
      atom("udta", atom("meta", std::string(4, '\0') + handler + list + atom("free", "room")) + std::string(4, '\0'));
  for (const std::string& more : {std::string(), free, atom("udta", atom("meta", handler + list)), atom("udta", "")}) {
    const std::string old = moov_with(more);
    for (const uint64_t offset : {100, 6000}) {
      const auto made = edited_moov(old, offset, kText);
      ASSERT_TRUE(made);
      EXPECT_EQ(big_endian(made->substr(0, 4)), made->size());
      const uint64_t moved = offset == 100 ? 5000 + made->size() - old.size() : 5000;
      EXPECT_NE(made->find(big_endian_bytes(50, 4) + big_endian_bytes(moved, 4) + atom("stsz", "sizes")),
                std::string::npos);
      EXPECT_NE(made->find(atom("\xA9lyr", atom("data", big_endian_bytes(1, 4) + std::string(4, '\0') + kText))),
                std::string::npos);
      EXPECT_EQ(made->find("old"), std::string::npos);
      EXPECT_EQ(made->find("mdirappl") != std::string::npos, more.find(handler) == std::string::npos);
      for (const std::string& kept : {title, atom("gnre", "bytes"), handler})
        EXPECT_EQ(made->find(kept) != std::string::npos, more.find(kept) != std::string::npos);
      EXPECT_EQ(edited_moov(*made, offset, kText)->size(), made->size()) << "again changes nothing";
    }
  }
  const std::string old = moov_with("");
  EXPECT_FALSE(edited_moov(old.substr(0, old.size() - 1), 100, kText));
  for (const char* name : {"mvex", "saio"})
    EXPECT_FALSE(edited_moov(moov_with(atom(name, "")), 100, kText)) << "a stream of fragments";
  EXPECT_FALSE(edited_moov(atom("moov", atom("stbl", atom("stco", ""))), 100, kText));
  EXPECT_FALSE(edited_moov(moov_with(atom("udta", "\xFF\xFF\xFF\xFFmeta")), 100, kText));
}
