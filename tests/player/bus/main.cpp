#include <gmock/gmock.h>

#include <QCoreApplication>

/** QtDBus needs an application object; its loop need not run. */
int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
