#include "platform/app/roster.h"

#include "platform/storage/entry_ref.h"
#include "tests/scratch_folder.h"

#include <gtest/gtest.h>

namespace {

/** A desktop whose opener of documents is a script. */
class Launching : public testing::Test {
protected:
  Launching() { setenv("PATH", (fFolder.Path() + ":" + fPath).c_str(), 1); }
  ~Launching() override { setenv("PATH", fPath.c_str(), 1); }
  status_t LaunchWith(const std::string& script) const {
    std::filesystem::permissions(fFolder.Write("xdg-open", "#!/bin/sh\n" + script), std::filesystem::perms::owner_all);
    entry_ref document;
    get_ref_for_path(fFolder.File("document").c_str(), &document);
    return be_roster->Launch(&document);
  }
  ScratchFolder fFolder;

private:
  const std::string fPath = getenv("PATH");
};

} // namespace

TEST_F(Launching, TellsWhetherTheDocumentCouldBeHandedOver) {
  EXPECT_EQ(LaunchWith("exit 0\n"), B_OK);
  EXPECT_EQ(LaunchWith("exit 3\n"), B_LAUNCH_FAILED);
}

TEST_F(Launching, DoesNotWaitForAnOpenerThatStays) {
  EXPECT_EQ(LaunchWith("while [ -e \"$0\" ]; do sleep 0.1; done\n"), B_OK); // it goes with its folder
}
