#include "player/texts/player_texts.h"

#include "platform/app/message.h"
#include "player/texts/chosen_language.h"
#include "plugin/kept_record.h"
#include "tests/support/testing.h"

namespace {

std::string language_file(const char* locale, const char* more = "") {
  return std::string("[Informations]\nHeader = LLT File Format 100\nLanguage = Some\n[Data]\nLocale = ") + locale +
         "\n" + more;
}

struct TStoredLanguage : koreva::TArchivable {
  std::string file;
  bool Archive(BMessage* archive) override { return archive->AddString("LLTF", file) == B_OK; }
};

struct PlayerTexts : testing::Test {
  PlayerTexts() { setenv("XDG_CONFIG_HOME", fFolder.File("settings").c_str(), 1); }
  ~PlayerTexts() override {
    setenv("XDG_CONFIG_HOME", fSettings.c_str(), 1);
    load_player_texts("");
    for (const char* name : {"LC_ALL", "LANG"}) unsetenv(name);
    setenv("LC_ALL", "C.UTF-8", 1);
  }
  ScratchFolder fFolder;
  const std::string fSettings = std::getenv("XDG_CONFIG_HOME") ? std::getenv("XDG_CONFIG_HOME") : "";
};

} // namespace

TEST_F(PlayerTexts, LanguagesChangeAsAWholeAndAreEnglishWhereTheyLackAText) {
  const std::string german = fFolder.Write("German.llt", language_file("de", "Player_No_Song = Kein Titel\n"));
  EXPECT_STREQ(player_text("Player_No_Song"), "No song");
  EXPECT_TRUE(load_player_texts(german));
  EXPECT_STREQ(player_text("Player_No_Song"), "Kein Titel");
  EXPECT_STREQ(player_text("Player_Speed"), "Speed");
  EXPECT_FALSE(load_player_texts(german)) << "nothing has changed";
  EXPECT_TRUE(load_player_texts(fFolder.File("gone.llt")));
  EXPECT_STREQ(player_text("Player_No_Song"), "No song");
}

TEST_F(PlayerTexts, PartsAreInsertedOnceInAnyOrder) {
  const std::string file = fFolder.Write("Odd.llt", language_file("de", "Player_Time_Of = %2 100% %1 %9\n"));
  load_player_texts(file);
  EXPECT_EQ(player_text("Player_Time_Of", {"%2", "b"}), "b 100% %2 %9");
}

TEST_F(PlayerTexts, TheDesktopsLanguageIsTakenUntilOneIsChosen) {
  const std::string german = fFolder.Write("German.llt", language_file("de"));
  const auto chosen = [&](const char* locale) {
    setenv("LC_ALL", locale, 1);
    return chosen_language_file(fFolder.Path());
  };
  EXPECT_EQ(chosen("de_AT.UTF-8"), german);
  EXPECT_EQ(chosen("de@euro"), german);
  for (const char* const other : {"C.UTF-8", "POSIX", "en_GB", "it_IT", ""}) EXPECT_EQ(chosen(other), "") << other;
  TStoredLanguage stored;
  stored.file = "/elsewhere/Japanese.llt";
  ASSERT_TRUE(save_record(&stored, "Shared", "VesmoShared_Prefs.arc"));
  EXPECT_EQ(chosen("de_DE"), fFolder.File("Japanese.llt"));
  stored.file.clear();
  ASSERT_TRUE(save_record(&stored, "Shared", "VesmoShared_Prefs.arc"));
  EXPECT_EQ(chosen("de_DE"), "") << "the built-in English";
  EXPECT_EQ(named_language_file("/texts", "/proc/self/../French.llt"), "/texts/French.llt") << "from another process";
}
