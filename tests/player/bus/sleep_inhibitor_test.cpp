#include "player/bus/sleep_inhibitor.h"

#include "tests/player/bus/private_bus.h"

#include <QCoreApplication>
#include <QDBusVirtualObject>
#include <QElapsedTimer>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

namespace {

/** A session manager that grants everything. */
struct SessionManager : QDBusVirtualObject {
  explicit SessionManager(QDBusConnection bus) {
    bus.registerVirtualObject("/org/gnome/SessionManager", this);
    bus.registerService("org.gnome.SessionManager");
  }
  bool handleMessage(const QDBusMessage& call, const QDBusConnection& bus) override {
    const bool isRequest = call.member() == "Inhibit";
    fCalls.push_back((isRequest ? call.member() : call.member() + call.arguments().value(0).toString()).toStdString());
    return bus.send(isRequest ? call.createReply(7U) : call.createReply());
  }
  QString introspect(const QString&) const override { return {}; }
  std::vector<std::string> fCalls;
};

struct Sleep : testing::Test {
  static QDBusConnection Connect(const char* name) {
    return QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), name);
  }
  ~Sleep() override {
    for (const char* const name : {"desktop", "player"}) QDBusConnection::disconnectFromBus(name);
  }
  bool WaitForCalls(size_t count) const {
    QElapsedTimer timer;
    timer.start();
    while (fDesktop.fCalls.size() < count && timer.elapsed() < 10000)
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 100);
    return fDesktop.fCalls.size() == count;
  }
  PrivateBus fDaemon;
  SessionManager fDesktop{Connect("desktop")};
};

} // namespace

TEST_F(Sleep, IsInhibitedByTheServiceThatThereIsAndReleasedAgain) {
  TSleepInhibitor inhibitor(Connect("player"));
  inhibitor.Set(true);
  inhibitor.Set(true);
  ASSERT_TRUE(WaitForCalls(1));
  inhibitor.Set(false); // before the answer
  inhibitor.Set(true);
  inhibitor.Set(false);
  ASSERT_TRUE(WaitForCalls(2));
  inhibitor.Set(true);
  ASSERT_TRUE(WaitForCalls(3));
  EXPECT_THAT(fDesktop.fCalls, ElementsAre("Inhibit", "Uninhibit7", "Inhibit"));
}
