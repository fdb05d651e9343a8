#include "companion/vesmo_d_comm_man.h"
#include "interapp/inter_app_prefs.h"
#include "platform/app/application.h"
#include "plugin/message_codes.h"
#include "tests/support/hands.h"
#include "tests/support/keeping.h"
#include "tests/support/messages.h"
#include "tests/support/plugin_globals.h"

using namespace testing;

namespace {

/** The companion's manager and what it sends to the editor's, both with their messages delivered by the test. */
struct CompanionManager : testing::Test, PluginGlobals {
  CompanionManager() {
    gIAP = new TInterAppPrefs;
    gIAP->AddItem(new TIAPItemAccKeyFormat);
    gAppPrivacy->UpdateLanguageInfos();
    fManager.reset(new TVesmoDCommMan(fFolder.File("gen_VesmoD.so")));
    Send(message_of(kMsgPartnerConnects, "CSCommMan", fEditor.get()));
  }
  ~CompanionManager() override {
    fManager.reset();
    delete std::exchange(gIAP, nullptr);
  }
  void Send(const BMessage& message) {
    fManager->PostMessage(&message);
    fManager->DeliverAll();
    fEditor->DeliverAll();
  }
  OwnLooper<BApplication> fApp{new BApplication("application/x-vnd.test")};
  OwnLooper<Keeping<BLooper>> fEditor{new Keeping<BLooper>};
  OwnLooper<TVesmoDCommMan> fManager;
};

} // namespace

TEST_F(CompanionManager, TakesOverChangesAndPassesThemOnToTheEditor) {
  int32 leadInMs = 0;
  for (const auto& [code, isPassedOn] : {std::pair(kMsgOptions, true), {kMsgOptionsChosen, false}}) {
    Send(message_of(code, "LdIn", ++leadInMs));
    EXPECT_EQ(gPref->Values()->leadInMs, leadInMs);
    EXPECT_EQ(fEditor->Taken().size(), isPassedOn ? 1U : 0U);
  }
  int32 offsetMs = 0;
  for (const uint32 code : {kMsgStayOnTop, kMsgToolBar, kMsgPollInterval, kMsgDefaultStatBar, kMsgAppearance,
                            kMsgEncoding, kMsgReadEncoding, kMsgLineEnds, kMsgTimeOffset}) {
    Send(message_of(code, "TmDf", ++offsetMs));
    EXPECT_EQ(gPref->Values()->timeOffsetMs, offsetMs);
    EXPECT_EQ(field<int32>(fEditor->Taken().at(0), "TmDf"), offsetMs) << std::hex << code;
  }
}

TEST_F(CompanionManager, KeysAndLanguageComeFromHere) {
  gKeyBindings->Unarchive(message_of(0, "stamp", "S"));
  Send(BMessage(kMsgKeys));
  EXPECT_EQ(field<std::string>(fEditor->Taken().at(0), "stamp"), "S");
  Send(BMessage(kMsgLanguageChanged));
  EXPECT_THAT(fEditor->Taken(), IsEmpty()) << "the editor watches the files itself";
  Send(message_of(kMsgLanguageChanged, "LLTF", ""));
  EXPECT_EQ(fEditor->Taken().at(0).what, kMsgLanguageChanged);
  EXPECT_FALSE(gAppPrivacy->ShouldBeLanguageChanged());
}
