#include "common/ini_file.h"

#include "tests/support/memory_file.h"
#include "tests/support/testing.h"

using testing::ElementsAre;

namespace {

constexpr int kLength = 64;

struct Ini {
  explicit Ini(const std::string& text, int lineLength = kLength)
      : fStream(text), fFile(std::make_unique<TIniFile>(&fStream, lineLength)) {}
  TIniFile* operator->() { return fFile.get(); }
  std::string Value(const char* key) {
    char text[kLength + 1] = "absent";
    fFile->ReadValue(key, text);
    return text;
  }
  std::vector<std::string> Sections() { return Texts(&TIniFile::EnumSections); }
  std::vector<std::string> Keys() { return Texts(&TIniFile::EnumKeys); }
  std::string Written() const { return fStream.Contents(); }

private:
  std::vector<std::string> Texts(int32 (TIniFile::*enumerate)(BList*)) {
    BList list;
    (fFile.get()->*enumerate)(&list);
    std::vector<std::string> texts;
    for (int32 i = 0; i < list.CountItems(); ++i) texts.emplace_back(static_cast<const char*>(list.ItemAt(i)));
    return texts;
  }
  MemoryFile fStream;
  std::unique_ptr<TIniFile> fFile;
};

} // namespace

TEST(IniFile, ReadsPairsHeadersAndComments) {
  Ini ini("key = a=b\r\nno equals\n  ;  note  \n=v\n[ Colors ]x\nKey=1\nkey=2\n[Colors\nlast = end");
  EXPECT_THAT(ini.Sections(), ElementsAre("_TIniF_GlobalSec", "Colors", ""));
  EXPECT_THAT(ini.Keys(), ElementsAre("key", "", ""));
  EXPECT_EQ(ini.Value("KEY"), "a=b");
  EXPECT_EQ(ini.Value(""), "no equals");
  char comment[kLength + 1];
  EXPECT_TRUE(ini->ReadComment(comment));
  EXPECT_STREQ(comment, "note");
  EXPECT_FALSE(ini->ReadComment(comment));
  ini->ChangeSection("COLORS");
  EXPECT_EQ(ini.Value("kEy"), "1") << "the first match counts";
  ini->ChangeSection("");
  EXPECT_EQ(ini.Value("last"), "end");
}

TEST(IniFile, CutsLongLinesIntoLinesOfTheirOwn) {
  Ini ini("abc=defgh\n", 5);
  EXPECT_THAT(ini.Keys(), ElementsAre("abc", ""));
  EXPECT_EQ(ini.Value("abc"), "d");
  EXPECT_EQ(ini.Value(""), "efgh");
}

TEST(IniFile, WritesInItsOwnSpacing) {
  Ini ini("a=1\n[S]\nb=2\n;c\n");
  EXPECT_FALSE(ini->Flush(false)) << "nothing changed";
  EXPECT_TRUE(ini->Flush(true));
  EXPECT_EQ(ini.Written(), "a = 1\n\n[ S ]\n; c\nb = 2\n\n");
}

TEST(IniFile, KeepsTheOldTailWhenItWritesLess) {
  Ini ini("a=1\nbbbbbbbbbbbbbbbbbbbb=2\n");
  ini->DeleteKey("bbbbbbbbbbbbbbbbbbbb");
  EXPECT_TRUE(ini->Flush(false));
  EXPECT_TRUE(ini.Written().starts_with("a = 1\n\n"));
  EXPECT_TRUE(ini.Written().ends_with("bbbb=2\n"));
}

TEST(IniFile, CarriesTypedValuesBothWays) {
  Ini ini("");
  const auto survives = [&](const char* key, auto value) {
    ini->WriteValue(key, value);
    auto read = decltype(value){};
    return ini->ReadValue(key, &read) && read == value;
  };
  EXPECT_TRUE(survives("FLAG", true));
  EXPECT_TRUE(survives("long", -12L));
  EXPECT_TRUE(survives("wide", 9223372036854775807LL));
  EXPECT_TRUE(survives("float", 0.1F));
  EXPECT_TRUE(survives("color", rgb_color{1, 2, 3, 4}));
  EXPECT_EQ(ini.Value("flag"), "1");
  EXPECT_EQ(ini.Value("float"), "0.1");
  EXPECT_EQ(ini.Value("color"), "1 2 3 4");
  long number = -12;
  EXPECT_FALSE(ini->ReadValue("absent", &number));
  EXPECT_EQ(number, -12) << "untouched";
}

TEST(IniFile, ReadsWhatIsNoNumberAsZeroAndNoFlagAsFalse) {
  Ini ini("n = twelve\nempty =\nf = 2\nt = true\n");
  bool flag = true;
  for (const char* key : {"n", "empty"}) {
    long number = 5;
    float real = 5;
    EXPECT_TRUE(ini->ReadValue(key, &number) && ini->ReadValue(key, &real));
    EXPECT_TRUE(number == 0 && real == 0) << key;
  }
  EXPECT_TRUE(ini->ReadValue("f", &flag));
  EXPECT_FALSE(flag);
}

TEST(IniFile, DeletingTheGlobalSectionLeavesAnEmptyOneAtTheHead) {
  Ini ini("a=1\n[S]\nb=2\n");
  EXPECT_TRUE(ini->DeleteSection("_TIniF_GlobalSec"));
  EXPECT_THAT(ini.Sections(), ElementsAre("_TIniF_GlobalSec", "S"));
  EXPECT_FALSE(ini->KeyExists("a"));
  ini->ChangeSection("s");
  EXPECT_TRUE(ini->DeleteSection("S"));
  EXPECT_FALSE(ini->KeyExists("b")) << "the current section is the head again";
  EXPECT_FALSE(ini->DeleteSection("S"));
}

TEST(IniFile, CutsTextsThatAreTooLong) {
  Ini ini("", 8);
  for (int i = 0; i < 2; ++i) { // the second time it is found again
    ini->ChangeSection("a long name indeed");
    ini->WriteValue("a long key indeed", std::string(100, 'v').c_str());
  }
  EXPECT_EQ(ini.Value("A long key indeed"), std::string(8, 'v'));
  EXPECT_THAT(ini.Keys(), ElementsAre("a long k"));
  EXPECT_THAT(ini.Sections(), ElementsAre(testing::_, "a long n"));
}

TEST(IniFile, WithoutAFileEveryCallFails) {
  TIniFile ini("/nowhere/at/all.ini", B_READ_ONLY, kLength);
  char text[kLength + 1];
  EXPECT_FALSE(ini.ReadValue("a", text));
  EXPECT_FALSE(ini.ReadComment(text));
  EXPECT_FALSE(ini.DeleteKey("a"));
  EXPECT_FALSE(ini.Flush(true));
  ini.WriteValue("a", "b");
}

TEST(IniFile, SavesWhatChangedWhenItGoes) {
  const ScratchFolder folder;
  const std::string path = folder.File("x.ini");
  { TIniFile(path.c_str(), B_READ_WRITE | B_CREATE_FILE, kLength).WriteValue("a", "b"); }
  EXPECT_EQ(folder.Read("x.ini"), "a = b\n\n");
}

TEST(IniStrings, CountFromOneAndMayWorkInPlace) {
  char text[64] = " \t a b \r\n";
  EXPECT_EQ(trim(text, text), 3);
  EXPECT_STREQ(text, "a b");
  EXPECT_EQ(mid(text, "abcdef", 2, 3), 3);
  EXPECT_STREQ(text, "bcd");
  EXPECT_EQ(mid(text, "abc", 2, 0), 2);
  EXPECT_EQ(mid(text, "abc", 9, 1), 0);
  EXPECT_EQ(mid(text, "abc", 1, -1), 0);
  EXPECT_EQ(mid(text, "abc", -5, 2), 2);
  EXPECT_EQ(instr("abcabc", "ca", 1), 3);
  EXPECT_EQ(instr("abcabc", "a", 2), 4);
  EXPECT_EQ(instr("abc", "", 1), 0);
  EXPECT_EQ(instr("abc", "a", 9), 0);
  EXPECT_EQ(repstr(text, "a-b-c", "-", "+++", 3), 4);
  EXPECT_STREQ(text, "a-b+++c");
  EXPECT_EQ(repstr(text, "abc", "x", "y", 1), 0);
}
