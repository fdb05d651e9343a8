#include "common/ini_file.h"
#include "language/load_language.h"
#include "platform/storage/resources.h"
#include "tests/support/plugin_globals.h"
#include "tests/support/testing.h"

using namespace testing;

namespace {

const std::string kInformations = "[Informations]\nHeader = LLT File Format 100\n";
const std::string kHead = kInformations + "Language = Test\nWriter = W\n[Data]\n";

int32 load(TLLT* table, const std::string& text) {
  BMemoryIO stream(text.data(), text.size());
  TIniFile file(&stream, 2048);
  return table->Load(&file);
}

std::string decoded(const std::string& value) {
  TLLT table;
  load(&table, kHead + ("K = " + value + "\n"));
  return table.Text("K");
}

} // namespace

TEST(LanguageTable, DecodesTheFourSequencesAndLeavesEscapedOnes) {
  const std::pair<const char*, const char*> texts[] = {
      {"#sHello#s", " Hello "}, {"100##n", "100#n"}, {"a#nb", "a\nb"}, {"#tx", "\tx"},
      {"###n", "#\n"},          {"####n", "##n"},    {"##s##", "#s#"}, {"#x", "#x"},
  };
  for (const auto& [value, text] : texts) EXPECT_EQ(decoded(value), text) << value;
}

TEST(LanguageTable, TakesInOtherTextsInTheOrderOfTheKeys) {
  TLLT table;
  ASSERT_EQ(load(&table, kHead + "App=Editor\nTitle=About @App@\nA=@B@\nB=@Z@\nZ=z\nU=@Nope@\nT=@App@ @App@\n"), 0);
  // A is visited before B.
  const std::map<std::string, std::string> texts = {
      {"Title", "About Editor"}, {"A", "@Z@"}, {"B", "z"}, {"U", "@Nope@"}, {"T", "Editor @App@"}};
  for (const auto& [key, text] : texts) EXPECT_EQ(table.Text(key.c_str()), text) << key;
}

TEST(LanguageTable, RefusesAnyOtherHeader) {
  for (const char* header : {"LLT File Format 101", "llt file format 100", "", "LLT File Format 100x"}) {
    TLLT table;
    EXPECT_EQ(load(&table, "[Informations]\nHeader = " + std::string(header) + "\n[Data]\nA=b\n"), -1) << header;
    EXPECT_STREQ(table.Text("A"), "! ERROR !");
  }
}

TEST(LanguageTable, LoadsNothingFromWhatIsNoTextFile) {
  const ScratchFolder folder;
  const std::string huge = folder.Write("huge.llt", kHead + "A=b\n");
  std::filesystem::resize_file(huge, uintmax_t{4} << 30); // sparse
  TLLT table;
  for (const std::string& path : {std::string("/nowhere.llt"), folder.Path(), std::string("/dev/zero"), huge})
    EXPECT_EQ(table.Load(path.c_str()), -1) << path;
  EXPECT_TRUE(table.TextMap()->empty());
}

TEST(LanguageTable, MergesLoadsAndGivesDoubledKeysTheFirstText) {
  TLLT table;
  load(&table, kHead + "A=1\nKey=one\nKey=two\nKEY=three\n");
  load(&table, kHead + "B=2\n");
  // Lookups mind the case.
  for (const auto& [key, text] :
       {std::pair("A", "1"), {"B", "2"}, {"Key", "one"}, {"KEY", "one"}, {"key", "! ERROR !"}})
    EXPECT_STREQ(table.Text(key), text) << key;
}

TEST(LanguageTable, TextsOutliveTheReloadThatReplacedThem) {
  TLLT table;
  load(&table, kHead + "A=before\n");
  const char* const text = table.Text("A");
  std::thread reader([&] {
    for (int i = 0; i < 500; ++i) EXPECT_NE(table.Text("A"), nullptr);
  });
  for (int i = 0; i < 4; ++i) { // two tables a turn
    table = TLLT();
    load(&table, kHead + "A=after\n");
  }
  reader.join();
  EXPECT_STREQ(table.Text("A"), "after");
  EXPECT_STREQ(text, "before") << "of the table that was replaced eight tables ago";
}

TEST(BuiltInTexts, AreThoseOfTheEnglishFile) {
  TLLT builtIn;
  TLLT english;
  const BResources resources = builtin_resources();
  ASSERT_EQ(builtIn.Load(&resources, kBuiltinTextsId), 0);
  ASSERT_EQ(builtIn.Load(&resources, 1), -1);
  ASSERT_EQ(english.Load(TEXTS_FOLDER "/English.llt"), 0);
  EXPECT_EQ(*builtIn.TextMap(), *english.TextMap());
}

namespace {

struct LanguageChoice : testing::Test, PluginGlobals {
  LanguageChoice() {
    std::filesystem::create_directory(fFolder.File("Language"));
    fShown.clear();
    set_language_alert([](const char* text, const char*, const char*) { fShown = text; });
  }
  ~LanguageChoice() override { set_language_alert(nullptr); }
  void Choose(const std::string& stored) {
    SetPref([&](TPrefValues* values) { values->languageFile = stored; });
    EXPECT_TRUE(load_language(fFolder.File("gen_VesmoE.so").c_str()));
  }
  static inline std::string fShown;
};

} // namespace

TEST_F(LanguageChoice, TakesTheFileOfThatNameBesideThePlugin) {
  const std::string path = fFolder.Write("Language/German.llt", kHead + "A=Hallo\n");
  Choose("/some/where/else/German.llt");
  EXPECT_STREQ(gLLT->Text("A"), "Hallo");
  EXPECT_EQ(gPref->Values()->languageFile, path);
  EXPECT_FALSE(gAppPrivacy->ShouldBeLanguageChanged());
  std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now() - std::chrono::hours(1));
  EXPECT_TRUE(gAppPrivacy->ShouldBeLanguageChanged());
}

TEST_F(LanguageChoice, AFileThatBothPluginsMissIsReportedOnce) {
  Choose("Missing.llt");
  EXPECT_EQ(std::exchange(fShown, {}), "Can't load language file:\n" + fFolder.File("Language/Missing.llt"));
  EXPECT_STREQ(gLLT->Text("Button_Yes"), "! ERROR !") << "no fall-back";
  Choose("Missing.llt"); // as the second plug-in does
  EXPECT_EQ(fShown, "");
  const std::string path = fFolder.Write("Language/Missing.llt", kHead + "A=Hallo\n");
  Choose("Missing.llt");
  std::filesystem::remove(path);
  Choose("Missing.llt");
  EXPECT_NE(fShown, "") << "it is missing again";
}

TEST_F(LanguageChoice, ListsTheLanguagesOfAFolder) {
  fFolder.Write("Language/a.llt", kInformations + "Language = Eins\n");
  fFolder.Write("Language/b.llt", kInformations);
  fFolder.Write("Language/c.llt", "[Informations]\nHeader = other\nLanguage = Drei\n");
  fFolder.Write("Language/d.txt", kInformations + "Language = Vier\n");
  std::map<std::string, std::string> files;
  get_lang_files(fFolder.File("Language").c_str(), &files);
  // The second file names no language and takes the name of the one before it.
  EXPECT_THAT(files, ElementsAre(Pair("Eins", fFolder.File("Language/b.llt"))));
}
