#include <gmock/gmock.h>

#include <QCoreApplication>

/** The library behind the bus wants to know of an application; its loop need not run. */
int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
