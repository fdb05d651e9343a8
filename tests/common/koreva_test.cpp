#include "common/koreva.h"

#include "platform/storage/entry.h"
#include "platform/storage/path.h"
#include "tests/support/keeping.h"
#include "tests/support/messages.h"

TEST(AcceleratorKey, TakesThePlaceOfTheFirstA) {
  EXPECT_EQ(koreva::merge_accelerator_key("a) ", "O", "Open"), "O) Open");
  EXPECT_EQ(koreva::merge_accelerator_key("a・", "O", "開く"), "O・開く");
  EXPECT_EQ(koreva::merge_accelerator_key("(a) a ", "X", "y"), "(X) a y");
  EXPECT_EQ(koreva::merge_accelerator_key("", "O", "Open"), "Open");
  EXPECT_EQ(koreva::merge_accelerator_key("-", "O", "Open"), "Open");
}

TEST(Reext, LooksAtTheLastComponentAlone) {
  EXPECT_EQ(koreva::reext("/m/a.mp3", "lrc"), "/m/a.lrc");
  EXPECT_EQ(koreva::reext("/m.d/a", "lrc"), "/m.d/a.lrc");
  EXPECT_EQ(koreva::reext("/m/.hidden", "lrc"), "/m/.hidden.lrc");
  EXPECT_EQ(koreva::reext("a.b.mp3", "txt"), "a.b.txt");
  EXPECT_EQ(koreva::reext("", "txt"), ".txt");
}

TEST(TextDetection, FollowsTheCounts) {
  for (const auto& [text, type] : {std::pair{"a", 0}, {"a\n\r\n", 0}, {"\r\n\n\r", 1}, {"\r\r\n", 2}})
    EXPECT_EQ(koreva::detect_cr_type(text), type) << "unpaired ones count as well";
  EXPECT_EQ(koreva::detect_charset("\xe3\x81"), 1) << "a truncated sequence is one error";
  EXPECT_EQ(koreva::detect_charset("\xfe\x80\x80\x80\x80\x80\x80"), 0) << "seven ones announce six bytes";
  EXPECT_EQ(koreva::detect_charset("\x80"), 1);
  EXPECT_EQ(koreva::detect_charset("\xe3\x1b\x81"), 1) << "an ESC stepped over does not count";
}

TEST(GetEntry, MakesTheFoldersOfTheSettings) {
  const ScratchFolder folder;
  setenv("XDG_CONFIG_HOME", folder.Path().c_str(), 1);
  BEntry entry;
  BPath path;
  ASSERT_TRUE(koreva::get_entry("a.arc", &entry, koreva::kSettingsDir, "Shared"));
  EXPECT_EQ(entry.GetPath(&path), B_OK);
  EXPECT_EQ(path.Path(), folder.File("KOREVA/Shared/a.arc"));
  EXPECT_TRUE(BEntry(folder.File("KOREVA/Shared").c_str()).IsDirectory());
  ASSERT_TRUE(koreva::get_entry("/x/y", &entry, koreva::kSettingsDir, "Other"));
  EXPECT_EQ(entry.GetPath(&path), B_OK);
  EXPECT_STREQ(path.Path(), "/x/y");
  EXPECT_FALSE(BEntry(folder.File("KOREVA/Other").c_str()).Exists());
  EXPECT_FALSE(koreva::get_entry("", &entry, koreva::kSettingsDir, "Shared"));
}

TEST(NextMessage, WaitsInsideAMessageUntilInvoked) {
  OwnLooper<Keeping<BLooper>> target(new Keeping<BLooper>);
  BMessage save('_sav');
  koreva::add_next_msg(&save, BMessage('next'), target.get());
  BMessage copy('copy');
  EXPECT_TRUE(koreva::copy_next_msg(&copy, save));
  EXPECT_TRUE(koreva::invoke_next_msg(&copy));
  target->DeliverAll();
  EXPECT_EQ(target->Codes(), std::vector<uint32>{'next'});
  BMessage bare = message_of('bare', "NextMsg", BMessage('then')); // without the messenger that add_next_msg adds
  EXPECT_FALSE(koreva::invoke_next_msg(&bare));
  bare.AddPointer("NextMsgTgt", static_cast<BHandler*>(target.get()));
  EXPECT_TRUE(koreva::invoke_next_msg(&bare));
  target->DeliverAll();
  EXPECT_EQ(target->Codes().back(), uint32{'then'});
  copy.RemoveName("NextMsgTgt");
  EXPECT_FALSE(koreva::invoke_next_msg(&copy));
  EXPECT_FALSE(koreva::copy_next_msg(&copy, copy));
  target.reset();
  EXPECT_FALSE(koreva::invoke_next_msg(&save)) << "the target is gone";
}

TEST(NextMessage, APointerFromAnotherProcessIsNeverFollowed) {
  const OwnLooper<Keeping<BLooper>> target(new Keeping<BLooper>);
  BMessage bare = message_of('bare', "NextMsg", BMessage('next'), "NextMsgTgt", static_cast<BHandler*>(target.get()));
  bare.SetDropped(true);
  ASSERT_TRUE(bare.IsSourceRemote());
  EXPECT_FALSE(koreva::invoke_next_msg(&bare));
  BMessage copy('copy');
  EXPECT_TRUE(koreva::copy_next_msg(&copy, bare));
  EXPECT_FALSE(koreva::invoke_next_msg(&copy)) << "nor by way of a copy";
  EXPECT_EQ(target->DeliverAll(), 0);
}

TEST(SaveRef, IsInTheFolderThatThePanelNames) {
  const auto path_of = [](const entry_ref& directory) {
    BMessage answer = message_of(B_SAVE_REQUESTED, "directory", directory, "name", "a.lrc");
    entry_ref ref;
    EXPECT_TRUE(koreva::get_save_ref(&answer, &ref));
    return ref.FullPath();
  };
  EXPECT_EQ(path_of({"/music", "new"}), "/music/new/a.lrc");
  EXPECT_EQ(path_of({"/music", "."}), "/music/a.lrc");
}
