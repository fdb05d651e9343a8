#include "window/save_panel.h"

#include "tests/display/keeping.h"
#include "tests/editor/editor_world.h"
#include "tests/own_looper.h"

using SavePanel = EditorWorld;

TEST_F(SavePanel, NumberWithoutAnItemLeavesTheMark) {
  const OwnLooper<Keeping<BLooper>> answers(new Keeping<BLooper>);
  TVesmoESavePanel panel(BMessenger(answers.get()));
  panel.SetPanelDirectory(fFolder.Path().c_str());
  for (const auto& [encoding, crType] : {std::pair(2, 1), std::pair(3, -1)}) {
    panel.SetEncoding(encoding);
    panel.SetCRType(crType);
    panel.Show();
    hands::wait_for_display();
  }
  hands::type_file_name(*panel.Window(), "e.lrc");
  EXPECT_TRUE(hands::until([&] { return answers->DeliverAll() > 0; }));
  const BMessage answer = answers->Taken().front();
  EXPECT_EQ(answer.what, uint32{B_SAVE_REQUESTED});
  int32 value = -1;
  EXPECT_EQ(answer.FindInt32("Encoding", &value), B_OK);
  EXPECT_EQ(value, 2);
  EXPECT_EQ(answer.FindInt32("CRType", &value), B_OK);
  EXPECT_EQ(value, 1);
}
