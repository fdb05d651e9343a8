#include "player/bus/tray_item.h"

#include "platform/app/message.h"
#include "player/bus/mpris_names.h"
#include "player/bus/tray_icon.h"
#include "player/model/bus_messages.h"
#include "player/model/player_messages.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QVariantMap>

#include <atomic>
#include <utility>

namespace {

const QString kPath = QStringLiteral("/StatusNotifierItem");
const QString kInterface = QStringLiteral("org.kde.StatusNotifierItem");
const QString kTray = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString kTrayPath = QStringLiteral("/StatusNotifierWatcher");

const char* const kDescription = R"xml(
<interface name="org.kde.StatusNotifierItem">
  <property name="Category" type="s" access="read"/><property name="Id" type="s" access="read"/>
  <property name="Title" type="s" access="read"/><property name="Status" type="s" access="read"/>
  <property name="IconName" type="s" access="read"/><property name="IconPixmap" type="a(iiay)" access="read"/>
  <property name="ItemIsMenu" type="b" access="read"/>
  <property name="Menu" type="o" access="read"/>
  <method name="Activate"><arg name="x" type="i" direction="in"/><arg name="y" type="i" direction="in"/></method>
  <method name="SecondaryActivate"><arg name="x" type="i" direction="in"/><arg name="y" type="i" direction="in"/></method>
  <method name="ContextMenu"><arg name="x" type="i" direction="in"/><arg name="y" type="i" direction="in"/></method>
  <method name="Scroll"><arg name="delta" type="i" direction="in"/>
    <arg name="orientation" type="s" direction="in"/></method>
</interface>
)xml";

QString connection_name() {
  static std::atomic<int> items{0};
  return QStringLiteral("sonivo-tray-%1").arg(++items);
}

QVariantMap properties() {
  return {{"Category", QStringLiteral("ApplicationStatus")},
          {"Id", QStringLiteral("sonivo")},
          {"Title", QStringLiteral("Sonivo")},
          {"Status", QStringLiteral("Active")},
          {"IconName", QStringLiteral("sonivo")},
          {"IconPixmap", tray_icon()},
          {"ItemIsMenu", false},
          {"Menu", QVariant::fromValue(QDBusObjectPath(TTrayMenu::kPath))}};
}

} // namespace

TTrayItem::TTrayItem(const BMessenger& player, const QString& busAddress)
    : fPlayer(player), fMenu(player), fConnection(connection_name()),
      fBus(QDBusConnection::connectToBus(busAddress, fConnection)), fWatcher(kTray, fBus) {
  fBus.registerVirtualObject(kPath, this);
  fBus.registerVirtualObject(TTrayMenu::kPath, &fMenu);
  connect(&fWatcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
          [this](const QString&, const QString&, const QString& owner) {
            if (owner.isEmpty()) return Report(false);
            Register();
          });
  Register();
}

TTrayItem::~TTrayItem() {
  fBus.unregisterObject(kPath);
  fBus.unregisterObject(TTrayMenu::kPath);
  QCoreApplication::removePostedEvents(this);
  QDBusConnection::disconnectFromBus(fConnection);
  Report(false);
}

void TTrayItem::Register() {
  QDBusMessage call = QDBusMessage::createMethodCall(kTray, kTrayPath, kTray, "RegisterStatusNotifierItem");
  call.setAutoStartService(false);
  call << fBus.baseService();
  auto* const pending = new QDBusPendingCallWatcher(fBus.asyncCall(call), this);
  connect(pending, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
    finished->deleteLater();
    if (!finished->isError()) AskForHost();
  });
}

/** The service that collects the items may be there without a tray that shows them. */
void TTrayItem::AskForHost() {
  QDBusMessage call = QDBusMessage::createMethodCall(kTray, kTrayPath, mpris::kProperties, "Get");
  call << kTray << QStringLiteral("IsStatusNotifierHostRegistered");
  auto* const pending = new QDBusPendingCallWatcher(fBus.asyncCall(call), this);
  connect(pending, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
    finished->deleteLater();
    Report(finished->reply().arguments().value(0).value<QDBusVariant>().variant().toBool());
  });
}

void TTrayItem::Report(bool isShown) {
  if (std::exchange(fIsShown, isShown) == isShown) return;
  BMessage message(kMsgBusTray);
  message.AddBool("shown", isShown);
  fPlayer.SendMessage(&message, BMessenger(), 0);
}

bool TTrayItem::handleMessage(const QDBusMessage& call, const QDBusConnection& bus) {
  const QDBusMessage answer = Answer(call);
  return answer.type() != QDBusMessage::InvalidMessage && bus.send(answer);
}

QString TTrayItem::introspect(const QString& path) const {
  return path == kPath ? QString::fromLatin1(kDescription) : QString();
}

QDBusMessage TTrayItem::Answer(const QDBusMessage& call) const {
  const QVariantMap all = properties();
  if (call.interface() == mpris::kProperties) {
    if (call.member() == "GetAll") return call.createReply(QVariant(all));
    const QVariant value = all.value(call.arguments().value(1).toString());
    if (call.member() == "Get" && value.isValid()) return call.createReply(QVariant::fromValue(QDBusVariant(value)));
    return {};
  }
  if (call.interface() != kInterface) return {};
  const bool isRaised = call.member() == "Activate" || call.member() == "ContextMenu";
  const BMessage message(isRaised ? uint32{kMsgBusRaise} : uint32{kMsgPlayPause});
  if (isRaised || call.member() == "SecondaryActivate") fPlayer.SendMessage(&message, BMessenger(), 0);
  return call.createReply();
}
