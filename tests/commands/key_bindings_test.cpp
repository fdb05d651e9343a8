#include "commands/key_bindings.h"

#include "commands/key_names.h"
#include "tests/support/messages.h"

using namespace testing;
using enum TCommandId;

TEST(KeyNames, AreNormalizedAndRefusedWhenTheyNameNoKey) {
  const std::pair<const char*, const char*> kNames[] = {
      {"ctrl+s", ""},
      {"Ctrl+s", "Ctrl+S"},
      {"Shift+Ctrl+M", "Ctrl+Shift+M"},
      {"Ctrl++", "Ctrl++"},
      {"+", "+"},
      {"F24", "F24"},
      {"F25", ""},
      {"F0", ""},
      {"ö", "ö"},
      {"öö", ""},
      {"Ctrl+Ctrl+A", ""},
      {"Ctrl+", ""},
      {"", ""},
      {"Tab", ""},
      {"Esc", ""},
      {"\x1", ""},
      {"Ctrl+\xC3", ""},
      {"Alt+Up", "Alt+Up"},
  };
  for (const auto& [text, keys] : kNames) EXPECT_EQ(normalized_keys(text).value_or(""), keys) << text;
}

TEST(CommandTable, DefaultKeysAreValidFreeAndOfOneCommandEach) {
  std::set<std::string> names;
  const TKeys defaults;
  for (const TEditorCommand& each : all_commands()) {
    EXPECT_TRUE(names.insert(each.name).second) << each.name;
    const std::string keys = each.keys;
    if (keys.empty()) continue;
    EXPECT_EQ(normalized_keys(keys), keys) << each.name;
    EXPECT_FALSE(are_reserved_keys(keys)) << each.name;
    EXPECT_FALSE(defaults.OtherWith(keys, each.id)) << each.name;
  }
}

TEST(KeyBindings, TheKeysOfARecordReplaceTheDefaultsButNeverConflict) {
  TKeyBindings bindings;
  EXPECT_TRUE(bindings.Unarchive(message_of(0, "save", "Ctrl+O", "open", "Ctrl+S", "export", "F10", "new", "Ctrl+W",
                                            "stamp", "Return", "play-from", "", "redo", "nonsense")));
  const auto keys = bindings.Values();
  EXPECT_EQ(keys->Of(kSave), "Ctrl+O") << "two commands may change their keys";
  EXPECT_EQ(keys->Of(kOpen), "Ctrl+S");
  EXPECT_EQ(keys->Of(kExport), "") << "reserved";
  EXPECT_EQ(keys->Of(kNew), "Ctrl+N") << "Ctrl+W closes the window";
  EXPECT_EQ(keys->Of(kStamp), "Return");
  EXPECT_EQ(keys->Of(kPlayFrom), "");
  EXPECT_EQ(keys->Of(kRedo), "Ctrl+Shift+Z");
  BMessage archive;
  ASSERT_TRUE(bindings.Archive(&archive));
  EXPECT_THAT(archive.FieldNames(), UnorderedElementsAre("save", "open", "stamp", "play-from"));
  TKeyBindings again;
  EXPECT_TRUE(again.Unarchive(archive));
  EXPECT_EQ(*again.Values(), *keys);
  EXPECT_FALSE(again.Unarchive(message_of(0, "save", int32{1})));
  EXPECT_EQ(*again.Values(), TKeys()) << "what is absent is as by default";
}
