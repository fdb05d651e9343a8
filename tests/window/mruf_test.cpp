#include "tests/support/messages.h"
#include "window/mruf.h"

#include "platform/interface/menu.h"
#include "platform/kernel/modifiers.h"
#include "platform/storage/entry.h"

using testing::ElementsAre;

namespace {

std::vector<std::string> paths_of(const TMRUF& files) {
  std::vector<std::string> paths;
  for (int32 i = 0; i < files.CountMRUFs(); ++i) paths.emplace_back(files.MRUFAt(i));
  return paths;
}

} // namespace

TEST(RecentFiles, NewestComesFirstAndTheOldestGoes) {
  TMRUF files;
  files.SetMaxMRUF(3);
  for (const char* path : {"/a", "/b", "/c", "/B", "/c"}) files.AddMRUF(path);
  EXPECT_THAT(paths_of(files), ElementsAre("/c", "/B", "/b"));
  EXPECT_EQ(files.FindMRUF("/a"), -1);
  for (char* const removed : {files.RemoveMRUF("/a"), files.RemoveMRUF(3), files.RemoveMRUF(-1)})
    EXPECT_EQ(removed, nullptr);
  EXPECT_STREQ(std::unique_ptr<char[]>(files.RemoveMRUF("/B")).get(), "/B");
  files.SetMaxMRUF(1);
  EXPECT_THAT(paths_of(files), ElementsAre("/c"));
}

TEST(RecentFiles, ComeBackInTheirOrder) {
  TMRUF files;
  for (const char* path : {"/one", "/two", "/three"}) files.AddMRUF(path);
  BMessage archive;
  EXPECT_TRUE(files.Archive(&archive));
  EXPECT_EQ(field<std::string>(archive, "MRUF"), "/one") << "oldest first";
  TMRUF read;
  read.AddMRUF("/gone");
  EXPECT_TRUE(read.Unarchive(archive));
  EXPECT_THAT(paths_of(read), ElementsAre("/three", "/two", "/one"));
  EXPECT_FALSE(read.Unarchive(message_of(0, "MRUF", 1)));
  EXPECT_EQ(read.CountMRUFs(), 0);
}

TEST(RecentFiles, ItemsStandBeforeTheSeparatorOfTheirMenu) {
  BMenu menu("files");
  menu.AddItem(new BMenuItem("above", nullptr));
  menu.AddSeparatorItem();
  TMRUF files;
  files.SetTgtMenu(&menu);
  files.SetTgtBase(1);
  files.SetTriggerBase(9);
  files.SetShowSC(true);
  files.SetSeparator("a) ");
  files.SetMessage(new BMessage('test'));
  for (const char* path : {"/x/same.lrc", "/y/same.lrc"}) files.AddMRUF(path);
  for (int i = 0; i < 2; ++i) files.GenerateMenu(); // a second time nothing is doubled
  ASSERT_EQ(menu.CountItems(), 4);
  EXPECT_STREQ(menu.ItemAt(1)->Label(), "9) same.lrc");
  EXPECT_EQ(menu.ItemAt(1)->Shortcut(), '9');
  EXPECT_EQ(menu.ItemAt(1)->ShortcutModifiers(), uint32{B_SHIFT_KEY});
  EXPECT_STREQ(menu.ItemAt(2)->Label(), "A) same.lrc");
  EXPECT_EQ(menu.ItemAt(2)->Shortcut(), 0);
  EXPECT_EQ(menu.ItemAt(2)->Message()->what, uint32{'test'});
  EXPECT_EQ(field<entry_ref>(*menu.ItemAt(2)->Message(), "refs"), ref_of("/x/same.lrc"));
  files.ClearMRUF();
  files.GenerateMenu();
  EXPECT_EQ(menu.CountItems(), 2);
}
