/** Commands on every line say what they change before they do. */

#include "plugin/message_codes.h"
#include "tests/support/editor_fixture.h"

using namespace testing;

using BulkQuestions = EditorByHand;

TEST_F(BulkQuestions, NameHowManyLinesChangeAndShowTheFirst) {
  std::string file = "title\n[Chorus]\n";
  for (int i = 1; i <= 9; ++i) file += "[00:0" + std::to_string(i) + "]line\n";
  Open(fFolder.Write("a.lrc", file));
  const std::string deleted = Answer("Escape", [&] { SendToView(BMessage(kMsgDeleteTags)); }).text;
  EXPECT_THAT(deleted, HasSubstr("Delete all time tags?\n\nLines that change: 10\nLines that become empty: 1\n"
                                 "2:  [Chorus]  →  \n3:  [00:01]line  →  line\n"));
  EXPECT_THAT(deleted, EndsWith("6:  [00:04]line  →  line\n…"));
  const BMessage convert = message_of(kMsgConvertTags, "CvtTagS2E", true);
  EXPECT_THAT(Answer("Escape", [&] { SendToView(convert); }).text, HasSubstr("3:  [00:01]line  →  [00:01:00]line\n"));
  EXPECT_FALSE(IsModified());
  Answer("Y", [&] { SendToView(convert); });
  EXPECT_EQ(Lines().back(), "[00:09:00]line");
  EXPECT_THAT(Status(), HasSubstr("Converted all "));
  Answer("Y", [&] { SendToView(BMessage(kMsgDeleteTags)); });
  EXPECT_EQ(Lines().back(), "line");
  EXPECT_THAT(Status(), EndsWith("All time tags deleted"));
}

TEST_F(BulkQuestions, AShiftThatWouldPileUpTagsAsksFirst) {
  Open(fFolder.Write("a.lrc", "[00:01]a\n[00:02]b\n[00:09]c\n"));
  const std::string asked = Answer("N", [&] { Shift("-2000"); }).text;
  EXPECT_THAT(asked, HasSubstr("Time tags that become 0: 2\n\nLines that change: 3\n1:  [00:01]a  →  [00:00]a\n"));
  EXPECT_THAT(Lines(), ElementsAre("[00:01]a", "[00:02]b", "[00:09]c"));
  Shift("-1000"); // the first one becomes exactly 0
  EXPECT_THAT(Lines(), ElementsAre("[00:00]a", "[00:01]b", "[00:08]c"));
  Answer("Y", [&] { Shift("-3000"); });
  EXPECT_THAT(Lines(), ElementsAre("[00:00]a", "[00:00]b", "[00:05]c"));
  Send(BMessage(kMsgSave));
  SendToView(BMessage(kMsgUndo));
  EXPECT_THAT(Lines(), ElementsAre("[00:00]a", "[00:01]b", "[00:08]c")) << "also after the save";
}
