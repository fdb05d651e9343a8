#include "companion/followed_document.h"

#include "plugin/message_codes.h"
#include "tests/support/messages.h"

using testing::ElementsAre;

namespace {

BMessage notice(uint32 code, int32 number, const std::vector<std::string>& lines) {
  BMessage message = message_of(code, "Number", number);
  for (const std::string& line : lines) message.AddString("Line", line);
  return message;
}

BMessage whole(int32 number, const std::vector<std::string>& lines) {
  BMessage message = notice(kMsgDocumentWhole, number, lines);
  add_fields(&message, "Title", "A Song", "Path", "/songs/a.lrc");
  return message;
}

BMessage change(int32 number, int32 first, int32 removed, const std::vector<std::string>& lines) {
  BMessage message = notice(kMsgDocumentLines, number, lines);
  add_fields(&message, "First", first, "Removed", removed);
  return message;
}

} // namespace

TEST(FollowedDocument, AppliesChangesInOrderAndDetectsAGap) {
  TFollowedDocument document;
  EXPECT_FALSE(document.Take(change(1, 0, 0, {"x"}))) << "no document yet";
  EXPECT_TRUE(document.Take(whole(7, {"one", "two", "three"})));
  EXPECT_TRUE(document.Take(change(8, 1, 2, {"[00:02]two"})));
  EXPECT_TRUE(document.Take(change(9, 0, 0, {"zero", ""})));
  EXPECT_THAT(document.Lines(), ElementsAre("zero", "", "one", "[00:02]two"));
  EXPECT_FALSE(document.Take(change(11, 0, 1, {}))) << "one is missing";
  for (const auto& [first, removed] : {std::pair(4, 1), std::pair(-1, 1), std::pair(0, -1), std::pair(2, INT32_MAX)})
    EXPECT_FALSE(document.Take(change(10, first, removed, {}))) << first << ", " << removed;
  EXPECT_THAT(document.Lines(), ElementsAre("zero", "", "one", "[00:02]two"));
}

TEST(FollowedDocument, BelongsToASongByTitleOrFile) {
  TFollowedDocument document;
  document.Take(whole(1, {"one"}));
  EXPECT_TRUE(document.BelongsTo("A Song", ""));
  EXPECT_TRUE(document.BelongsTo("Another", "/songs/a.lrc"));
  EXPECT_FALSE(document.BelongsTo("Another", "/songs/b.lrc"));
  document.Take(whole(2, {"", ""}));
  EXPECT_FALSE(document.BelongsTo("A Song", "")) << "there is nothing to show yet";
  document.Take(whole(3, {"one"}));
  document.Take(notice(kMsgDocumentClosed, 4, {}));
  EXPECT_FALSE(document.BelongsTo("A Song", ""));
}
