#include "interapp/inter_app_prefs.h"

#include "platform/app/message.h"
#include "platform/kernel/ports.h"
#include "tests/scratch_folder.h"

#include <gtest/gtest.h>

namespace {

class InterAppPrefs : public testing::Test {
protected:
  InterAppPrefs() { setenv("XDG_CONFIG_HOME", fFolder.Path().c_str(), 1); }
  static std::unique_ptr<TInterAppPrefs> Make() {
    auto prefs = std::make_unique<TInterAppPrefs>();
    prefs->SetAppSignatureRef("application/x-vnd.test");
    prefs->AddItem(new TIAPItemAccKeyFormat);
    prefs->AddItem(new TIAPItemFlatToolBar);
    return prefs;
  }
  ScratchFolder fFolder;
};

} // namespace

TEST_F(InterAppPrefs, ValuesAreStoredOncePerUser) {
  auto prefs = Make();
  std::string format = "x";
  bool flat = false;
  EXPECT_EQ(prefs->GetString("AccKeyFormat", &format), B_OK);
  EXPECT_EQ(prefs->GetBool("FlatToolBar", &flat), B_OK);
  EXPECT_EQ(format, "");
  EXPECT_TRUE(flat);
  EXPECT_EQ(prefs->SetString("AccKeyFormat", "a) "), B_OK);
  EXPECT_EQ(prefs->SetBool("FlatToolBar", false), B_OK);
  prefs = Make();
  prefs->GetString("AccKeyFormat", &format);
  prefs->GetBool("FlatToolBar", &flat);
  EXPECT_EQ(format, "a) ");
  EXPECT_FALSE(flat);
  EXPECT_EQ(prefs->GetBool("AccKeyFormat", &flat), B_BAD_TYPE);
  EXPECT_EQ(prefs->SetBool("Unknown", true), B_NAME_NOT_FOUND);
}

TEST_F(InterAppPrefs, ChangeNoticesNameTheirItem) {
  const auto prefs = Make();
  BMessage notice('_ipc');
  notice.AddString("IAP:Value", "a - ");
  EXPECT_EQ(prefs->SetValue(notice), -1);
  notice.AddString("IAP:SrcIAPItem", "AccKeyFormat");
  EXPECT_EQ(prefs->SetValue(notice), B_OK);
  std::string format;
  prefs->GetString("AccKeyFormat", &format);
  EXPECT_EQ(format, "a - ");
  BMessage wrong('_ipc');
  wrong.AddString("IAP:SrcIAPItem", "AccKeyFormat");
  wrong.AddBool("IAP:Value", true);
  EXPECT_NE(prefs->SetValue(wrong), B_OK);
  prefs->GetString("AccKeyFormat", &format);
  EXPECT_EQ(format, "a - ");
}
