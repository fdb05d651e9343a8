/** What the player asks of the desktop: to stay awake, and a place in the tray. */

#include "platform/app/looper.h"
#include "platform/app/message.h"
#include "player/bus/file_manager.h"
#include "player/bus/sleep_inhibitor.h"
#include "player/bus/tray_item.h"
#include "player/model/bus_messages.h"
#include "player/model/player_messages.h"
#include "tests/player/bus/private_bus.h"
#include "tests/support/own_looper.h"
#include "tests/support/testing.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusUnixFileDescriptor>
#include <QDBusVariant>
#include <QElapsedTimer>

using testing::ElementsAre;

namespace {

/** A service of the desktop that answers every call by `answer`, and notes it: its name and its last argument. */
struct FakeDesktopService : QDBusVirtualObject {
  FakeDesktopService(QDBusConnection bus, const char* name, const char* path, QVariant answer)
      : fAnswer(std::move(answer)) {
    bus.registerVirtualObject(path, this, QDBusConnection::SubPath);
    bus.registerService(name);
  }
  bool handleMessage(const QDBusMessage& call, const QDBusConnection& bus) override {
    fArguments = call.arguments();
    fCalls.push_back((call.member() + ' ' + fArguments.value(fArguments.size() - 1).toString()).toStdString());
    fBeforeAnswer();
    return bus.send(call.createReply(fAnswer));
  }
  QString introspect(const QString&) const override { return {}; }
  const QVariant fAnswer;
  std::vector<std::string> fCalls;
  QVariantList fArguments; // of the last call
  std::function<void()> fBeforeAnswer = [] {};
};

struct DesktopServices : testing::Test {
  static QString Address() { return qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"); }
  static QDBusConnection Connect(const char* name) { return QDBusConnection::connectToBus(Address(), name); }
  ~DesktopServices() override {
    for (const char* const name : {"desktop", "player"}) QDBusConnection::disconnectFromBus(name);
  }
  template <typename Condition>
  static bool Wait(const Condition& condition) {
    QElapsedTimer timer;
    timer.start();
    while (!condition() && timer.elapsed() < 10000) QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
    return condition();
  }
  PrivateBus fDaemon;
};

struct TrayListener : BLooper {
  void MessageReceived(BMessage* message) override {
    if (message->what == kMsgBusTray) fIsShown = message->GetBool("shown");
    if (message->what == kMsgBusRaise) fIsRaised = true;
    if (message->what != kMsgBusTray) fRequests.push_back(message->what);
  }
  bool fIsShown = false;
  bool fIsRaised = false;
  std::vector<uint32> fRequests;
};

} // namespace

TEST_F(DesktopServices, SleepIsInhibitedByTheServiceThatThereIsAndReleasedAgain) {
  FakeDesktopService desktop(Connect("desktop"), "org.gnome.SessionManager", "/org/gnome/SessionManager", 7U);
  TSleepInhibitor inhibitor(Connect("player"));
  const auto wait_for_calls = [&](size_t count) { return Wait([&] { return desktop.fCalls.size() == count; }); };
  inhibitor.Set(true);
  inhibitor.Set(true);
  ASSERT_TRUE(wait_for_calls(1));
  inhibitor.Set(false);
  ASSERT_TRUE(wait_for_calls(2));
  desktop.fBeforeAnswer = [&] { inhibitor.Set(false); };
  inhibitor.Set(true);
  ASSERT_TRUE(wait_for_calls(4)) << "not wanted any more by the time of the answer";
  EXPECT_THAT(desktop.fCalls, ElementsAre("Inhibit 4", "Uninhibit 7", "Inhibit 4", "Uninhibit 7"));
}

TEST_F(DesktopServices, ThePortalStandsInForServicesThatTheDesktopDoesNotHave) {
  const QString request = "/org/freedesktop/portal/desktop/request/1_2/a";
  QDBusConnection desktop = Connect("desktop");
  FakeDesktopService fake(desktop, "org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop",
                          QVariant::fromValue(QDBusObjectPath(request)));
  TSleepInhibitor inhibitor(Connect("player"));
  inhibitor.Set(true);
  ASSERT_TRUE(Wait([&] { return fake.fCalls.size() == 1; }));
  EXPECT_EQ(fake.fArguments[1].toUInt(), 4U) << "no suspend";
  inhibitor.Set(false);
  ASSERT_TRUE(Wait([&] { return fake.fCalls.size() == 2; }));
  const ScratchFolder folder;
  const std::string song = folder.Write("a.mp3", "");
  QObject context; // owns the calls
  bool hasFailed = false;
  show_in_file_manager(Connect("player"), song, &context, [&] { hasFailed = true; });
  ASSERT_TRUE(Wait([&] { return fake.fCalls.size() == 3; }));
  const int file = fake.fArguments[1].value<QDBusUnixFileDescriptor>().fileDescriptor();
  EXPECT_EQ(std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(file)), song);
  const auto respond = [&](uint result) {
    auto response = QDBusMessage::createSignal(request, "org.freedesktop.portal.Request", "Response");
    desktop.send(response << result << QVariantMap());
  };
  Wait([&] { return respond(2), hasFailed; });
  EXPECT_TRUE(hasFailed) << "the portal could not open it";
  EXPECT_THAT(fake.fCalls, ElementsAre("Inhibit ", "Close ", "OpenDirectory "));
}

TEST_F(DesktopServices, ASongIsShownByTheFileManagerOrItIsSaidThatThereIsNone) {
  QObject context; // owns the calls
  const auto show = [&](bool* hasFailed) {
    show_in_file_manager(Connect("player"), "/m/a b#\u00e9.mp3", &context, [=] { *hasFailed = true; });
  };
  bool hasFailed = false;
  show(&hasFailed);
  EXPECT_TRUE(Wait([&] { return hasFailed; }));
  FakeDesktopService files(Connect("desktop"), "org.freedesktop.FileManager1", "/org/freedesktop/FileManager1",
                           QString());
  bool failsAgain = false;
  show(&failsAgain);
  ASSERT_TRUE(Wait([&] { return !files.fCalls.empty(); }));
  EXPECT_THAT(files.fCalls, ElementsAre("ShowItems "));
  EXPECT_EQ(files.fArguments[0].toStringList(), QStringList{"file:///m/a%20b%23%C3%A9.mp3"});
  EXPECT_FALSE(failsAgain);
}

TEST_F(DesktopServices, TheTrayShowsThePlayerWhileThereIsOne) {
  const OwnLooper<TrayListener> player(new TrayListener);
  const auto deliver = [&] {
    while (player->CountMessages() > 0) player->DeliverNext();
  };
  TTrayItem item(BMessenger(player.get()), Address());
  {
    FakeDesktopService tray(Connect("desktop"), "org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher",
                            QVariant::fromValue(QDBusVariant(true)));
    ASSERT_TRUE(Wait([&] { return deliver(), player->fIsShown; })) << "a tray that comes later";
    const std::string registered = tray.fCalls.front();
    const QString name = QString::fromStdString(registered.substr(registered.find(' ') + 1));
    QDBusMessage click =
        QDBusMessage::createMethodCall(name, "/StatusNotifierItem", "org.kde.StatusNotifierItem", "Activate");
    Connect("player").send(click << 1 << 2);
    EXPECT_TRUE(Wait([&] { return deliver(), player->fIsRaised; }));
    QDBusConnection::disconnectFromBus("desktop");
  }
  EXPECT_TRUE(Wait([&] { return deliver(), !player->fIsShown; }));
}

TEST_F(DesktopServices, TheTraysMenuShowsPausesSkipsAndQuits) {
  const OwnLooper<TrayListener> player(new TrayListener);
  const TTrayItem item(BMessenger(player.get()), Address());
  FakeDesktopService tray(Connect("desktop"), "org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher",
                          QVariant::fromValue(QDBusVariant(true)));
  ASSERT_TRUE(Wait([&] { return !tray.fCalls.empty(); }));
  const QString name = QString::fromStdString(tray.fCalls.front()).section(' ', 1);
  QDBusConnection host = Connect("player");
  const auto call = [&](const char* path, const char* interface, const char* member, const QVariantList& arguments) {
    QDBusMessage question = QDBusMessage::createMethodCall(name, path, interface, member);
    question.setArguments(arguments);
    const QDBusPendingCall pending = host.asyncCall(question);
    Wait([&] { return pending.isFinished(); });
    return pending.reply();
  };
  const char* const kMenu = "com.canonical.dbusmenu";
  const auto property = [&](const char* which) {
    const QDBusMessage answer =
        call("/StatusNotifierItem", "org.freedesktop.DBus.Properties", "Get", {"org.kde.StatusNotifierItem", which});
    return answer.arguments().value(0).value<QDBusVariant>().variant();
  };
  EXPECT_EQ(property("Menu").value<QDBusObjectPath>().path(), "/MenuBar");
  const auto icons = property("IconPixmap").value<QDBusArgument>();
  ASSERT_EQ(icons.currentSignature(), "a(iiay)");
  icons.beginArray();
  int count = 0;
  for (; !icons.atEnd(); ++count) {
    int width = 0, height = 0;
    QByteArray pixels;
    icons.beginStructure();
    icons >> width >> height >> pixels;
    icons.endStructure();
    ASSERT_EQ(pixels.size(), 4 * width * height);
    EXPECT_EQ(pixels[4 * (height / 2 * width + width / 2)], '\xff') << "the centre is opaque";
    EXPECT_EQ(pixels[0], 0) << "the corners are not";
  }
  icons.endArray();
  EXPECT_GE(count, 3) << "sizes";
  const QDBusMessage layout = call("/MenuBar", kMenu, "GetLayout", {0, -1, QStringList()});
  ASSERT_EQ(layout.signature(), "u(ia{sv}av)");
  const auto root = layout.arguments()[1].value<QDBusArgument>();
  int rootId = -1;
  QVariantMap properties;
  QVariantList entries;
  root.beginStructure();
  root >> rootId >> properties >> entries;
  root.endStructure();
  for (const QVariant& entry : entries)
    EXPECT_EQ(entry.value<QDBusArgument>().currentSignature(), "(ia{sv}av)") << "or the panel crashes";
  EXPECT_EQ(entries.size(), 6);

  for (int id = 0; id < 8; ++id) {
    const QVariant nothing = QVariant::fromValue(QDBusVariant(0));
    EXPECT_EQ(call("/MenuBar", kMenu, "Event", {id, "hovered", nothing, 0U}).type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(call("/MenuBar", kMenu, "Event", {id, "clicked", nothing, 0U}).type(), QDBusMessage::ReplyMessage);
  }
  EXPECT_EQ(call("/MenuBar", kMenu, "Event", {"3", "clicked"}).type(), QDBusMessage::ErrorMessage);
  while (player->CountMessages() > 0) player->DeliverNext();
  EXPECT_THAT(player->fRequests, ElementsAre(kMsgBusRaise, kMsgPlayPause, kMsgNext, kMsgWindowCloses));
}
