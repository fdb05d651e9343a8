#include "platform/display/display.h"

#include "tests/support/testing.h"

/** Tests run on their own thread, like a program's loopers; the main thread runs the display. */
int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  testing::InitGoogleTest(&argc, argv);
  if (testing::GTEST_FLAG(list_tests)) return RUN_ALL_TESTS();
  std::thread tests;
  const int exitCode =
      display::run(argc, argv, [&tests] { tests = std::thread([] { display::quit(RUN_ALL_TESTS()); }); });
  tests.join();
  return exitCode;
}
