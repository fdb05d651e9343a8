#include "common/ini_file.h"

#include "platform/storage/directory.h"
#include "platform/storage/entry.h"
#include "tests/support/memory_file.h"
#include "tests/support/messages.h"

namespace {

constexpr int kLength = 64;

struct Ini : TIniFile {
  using TIniFile::TIniFile;
  std::string Value(const char* key) {
    char text[kLength + 1] = "absent";
    ReadValue(key, text);
    return text;
  }
  std::string Comment() {
    char text[kLength + 1] = "none";
    return ReadComment(text) ? text : "end";
  }
  std::string Sections() { return Joined(&TIniFile::EnumSections); }
  std::string Keys() { return Joined(&TIniFile::EnumKeys); }

private:
  std::string Joined(int32 (TIniFile::*enumerate)(BList*)) {
    BList list;
    std::string texts;
    for (int32 i = 0, count = (this->*enumerate)(&list); i < count; ++i)
      texts.append(static_cast<const char*>(list.ItemAt(i))) += "|";
    return texts;
  }
};

} // namespace

TEST(IniFile, ReadsPairsHeadersAndComments) {
  MemoryFile file(
      "key = a=b\r\nno equals\n \n  ;  note  \n;two\n=v\n[ Colors ]x\nKey=1\nkey=2\nz=\r\r\n[Colors\nlast = end");
  Ini ini(&file, kLength);
  EXPECT_EQ(ini.Sections(), "_TIniF_GlobalSec|Colors||");
  EXPECT_EQ(ini.Keys(), "key|||");
  EXPECT_EQ(ini.Value("KEY"), "a=b");
  EXPECT_EQ(ini.Value(""), "no equals");
  for (const char* comment : {"note", "two", "end"}) EXPECT_EQ(ini.Comment(), comment);
  ini.ChangeSection("COLORS");
  EXPECT_EQ(ini.Value("kEy"), "1") << "the first match counts";
  EXPECT_EQ(ini.Comment(), "end");
  ini.ChangeSection("");
  EXPECT_EQ(ini.Value("last"), "end");
  EXPECT_TRUE(ini.SectionExists("colors") && ini.KeyExists("LAST"));
  EXPECT_FALSE(ini.SectionExists("color") || ini.KeyExists("key"));
}

TEST(IniFile, CutsWhatIsTooLong) {
  MemoryFile lines("abc=defgh\n");
  Ini read(&lines, 5);
  EXPECT_EQ(read.Keys(), "abc||") << "a long line is read as two";
  EXPECT_EQ(read.Value("abc") + "," + read.Value(""), "d,efgh");
  MemoryFile nothing("");
  Ini ini(&nothing, 8);
  for (int i = 0; i < 2; ++i) { // the second time it is found again
    ini.ChangeSection("a long name indeed");
    ini.WriteValue("a long key indeed", std::string(100, 'v').c_str());
  }
  EXPECT_EQ(ini.Value("A long key indeed"), std::string(8, 'v'));
  EXPECT_EQ(ini.Keys(), "a long k|");
  EXPECT_EQ(ini.Sections(), "_TIniF_G|a long n|");
}

TEST(IniFile, ChangesAreWrittenInItsOwnSpacingBeforeTheOldTail) {
  const std::string before = "a=1\nbbbbbbbbbbbbbbbbb=2\n[S]\nc=3\n;note\n";
  const std::pair<std::function<void(Ini*)>, std::string> changes[] = {
      {[](Ini*) {}, ""},
      {[](Ini* ini) { EXPECT_TRUE(ini->Flush(true)); }, "a = 1\nbbbbbbbbbbbbbbbbb = 2\n\n[ S ]\n; note\nc = 3\n\n"},
      {[](Ini* ini) { EXPECT_TRUE(ini->DeleteKey("Bbbbbbbbbbbbbbbbb")); }, "a = 1\n\n[ S ]\n; note\nc = 3\n\n"},
      {[](Ini* ini) { ini->WriteValue("A", "new"); }, "a = new\nbbbbbbbbbbbbbbbbb = 2\n\n[ S ]\n; note\nc = 3\n\n"},
      {[](Ini* ini) { ini->WriteComment("more"); }, "; more\na = 1\nbbbbbbbbbbbbbbbbb = 2\n\n[ S ]\n; note\nc = 3\n\n"},
      {[](Ini* ini) { EXPECT_TRUE(ini->DeleteSection("s")); }, "a = 1\nbbbbbbbbbbbbbbbbb = 2\n\n"},
      {[](Ini* ini) {
         EXPECT_TRUE(ini->DeleteSection("_TIniF_GlobalSec")); // leaves an empty one at the head
         EXPECT_FALSE(ini->KeyExists("a"));
       },
       "\n[ S ]\n; note\nc = 3\n\n"},
  };
  for (const auto& [change, written] : changes) {
    MemoryFile file(before);
    {
      Ini ini(&file, kLength);
      change(&ini);
    } // saves what changed
    EXPECT_EQ(file.Contents(), written + before.substr(std::min(before.size(), written.size())));
  }
}

TEST(IniFile, AfterTheCurrentSectionIsDeletedTheHeadIsCurrent) {
  MemoryFile file("a=1\n[S]\nb=2\n[T]\n");
  Ini ini(&file, kLength);
  ini.ChangeSection("T");
  EXPECT_TRUE(ini.DeleteSection("S"));
  EXPECT_EQ(ini.Keys(), "") << "another section was current";
  EXPECT_TRUE(ini.DeleteSection("T"));
  EXPECT_EQ(ini.Keys(), "a|");
  EXPECT_FALSE(ini.DeleteSection("T") || ini.DeleteKey("b"));
  EXPECT_TRUE(ini.Flush(false));
  EXPECT_FALSE(ini.Flush(false)) << "nothing changed since";
}

TEST(IniFile, CarriesTypedValuesBothWays) {
  MemoryFile file("n = twelve\nempty =\nyes = true\n");
  Ini ini(&file, kLength);
  const auto survives = [&](const char* key, auto value, const std::string& text) {
    ini.WriteValue(key, value);
    auto read = decltype(value){};
    return ini.ReadValue(key, &read) && read == value && ini.Value(key) == text;
  };
  EXPECT_TRUE(survives("FLAG", true, "1") && survives("flag", false, "0"));
  EXPECT_TRUE(survives("long", -12L, "-12"));
  EXPECT_TRUE(survives("wide", 9223372036854775807LL, "9223372036854775807"));
  EXPECT_TRUE(survives("float", 0.1F, "0.1"));
  EXPECT_TRUE(survives("color", rgb_color{1, 2, 3, 4}, "1 2 3 4"));
  const auto read = [&](const char* key, auto value) {
    const bool isThere = ini.ReadValue(key, &value);
    return std::pair(isThere, value);
  };
  const auto is_zero_for_no_number_and_kept_for_no_key = [&](auto value) {
    for (const char* key : {"n", "empty"}) EXPECT_EQ(read(key, value), std::pair(true, decltype(value){})) << key;
    EXPECT_EQ(read("absent", value), std::pair(false, value));
  };
  is_zero_for_no_number_and_kept_for_no_key(5L);
  is_zero_for_no_number_and_kept_for_no_key(5LL);
  is_zero_for_no_number_and_kept_for_no_key(.5F);
  is_zero_for_no_number_and_kept_for_no_key(true);
}

TEST(IniFile, IsOpenedByAnyNameAndSavedBeforeAnotherIsOpened) {
  const ScratchFolder folder;
  const std::string path = folder.Write("x.ini", "");
  const entry_ref ref = ref_of(path);
  const BEntry entry(path.c_str());
  const BDirectory directory(folder.Path().c_str());
  Ini ini(path.c_str(), B_READ_WRITE, kLength);
  const auto opens = [&](auto... name) {
    ini.WriteValue("a", (ini.Value("a") + "+").c_str());
    EXPECT_EQ(ini.SetTo(name..., B_READ_WRITE, kLength), B_OK);
  };
  opens(path.c_str());
  opens(&ref);
  opens(&entry);
  opens(&directory, "x.ini");
  EXPECT_EQ(folder.Read("x.ini"), "a = absent++++\n\n");
  MemoryFile inMemory("a=2");
  EXPECT_EQ(ini.SetTo(&inMemory, kLength), B_OK);
  EXPECT_EQ(ini.Value("a"), "2");
  EXPECT_NE(ini.SetTo("/nowhere/at/all.ini", B_READ_ONLY, kLength), B_OK);
  ini.WriteValue("a", "b");
  ini.WriteComment("none");
  EXPECT_TRUE(ini.Value("a") == "absent" && ini.Comment() == "end" && ini.Keys().empty()) << "it has no file";
  EXPECT_FALSE(ini.DeleteKey("a") || ini.Flush(true));
}

TEST(IniStrings, CountFromOneAndMayWorkInPlace) {
  char text[64] = " \t a b \r\n";
  EXPECT_EQ(trim(text, text), 3);
  EXPECT_STREQ(text, "a b");
  for (const auto& [source, start, count, middle] : {std::tuple{"abcdef", 2, 3, "bcd"},
                                                     {"abc", 2, 0, "bc"},
                                                     {"abc", 9, 1, ""},
                                                     {"abc", 1, -1, ""},
                                                     {"abc", -5, 2, "ab"},
                                                     {"abc", 3, 1, "c"},
                                                     {"abc", 4, 1, ""}}) {
    EXPECT_EQ(mid(text, source, start, count), static_cast<int>(std::strlen(middle)));
    EXPECT_STREQ(text, middle);
  }
  for (const auto& [source, part, start, found] : {std::tuple{"abcabc", "ca", 1, 3},
                                                   {"abcabc", "a", 2, 4},
                                                   {"abc", "", 1, 0},
                                                   {"abc", "a", 9, 0},
                                                   {"abc", "a", 0, 1}})
    EXPECT_EQ(instr(source, part, start), found) << part;
  EXPECT_EQ(repstr(text, "a-b-c", "-", "+++", 3), 4);
  EXPECT_STREQ(text, "a-b+++c");
  EXPECT_EQ(repstr(text, "abc", "x", "y", 1), 0);
  EXPECT_STREQ(text, "abc");
}
