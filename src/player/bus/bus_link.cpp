#include "player/bus/bus_link.h"

#include "platform/app/message.h"
#include "platform/support/cut_text.h"
#include "platform/support/log.h"
#include "player/bus/file_manager.h"
#include "player/bus/mpris_names.h"
#include "player/model/bus_messages.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QFileInfo>

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cmath>

namespace {

const QString kLocalPath = QStringLiteral("/org/freedesktop/DBus/Local");
const QString kLocal = QStringLiteral("org.freedesktop.DBus.Local");
/** Exponential back-off: quick after a restart of the bus, cheap after the end of its session. */
constexpr int kFirstRetryMs = 250;
constexpr int kLongestRetryMs = 30000;

/** Qt identifies connections by name, so every link needs its own. */
QString connection_name() {
  static std::atomic<int> links{0};
  return QStringLiteral("sonivo-%1").arg(++links);
}

/** Empty if there is no bus: Qt would launch one. */
QString bus_address() {
  QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
  if (!address.isEmpty()) return address;
  const QString socket = qEnvironmentVariable("XDG_RUNTIME_DIR") + "/bus";
  return QFileInfo::exists(socket) ? "unix:path=" + socket : QString();
}

int32 to_percent(double share) {
  return static_cast<int32>(std::lround(std::clamp(share, 0.0, 100.0) * 100));
}

} // namespace

void report_no_file_manager(const BMessenger& player, const std::string& path) {
  BMessage message(kMsgBusNoFileManager);
  message.AddString("path", path);
  player.SendMessage(&message, BMessenger(), 0);
}

TBusLink::TBusLink(const BMessenger& player, std::function<int32()> ownPositionMs, TSharedPosition* otherPosition)
    : fPlayer(player), fConnection(connection_name()), fOtherPosition(otherPosition),
      fObject(std::make_unique<TPlayerObject>(player, std::move(ownPositionMs))) {
  fRetry.setSingleShot(true);
  connect(&fRetry, &QTimer::timeout, this, &TBusLink::Connect);
}

TBusLink::~TBusLink() {
  if (fBus) Leave();
}

/** Calls that are queued for the object refer to the connection: they are dropped before it goes. */
void TBusLink::Leave() {
  fOther.reset();
  fList.reset();
  fSleep.reset();
  fTray.reset();
  fBus->unregisterObject(mpris::kPath);
  QCoreApplication::removePostedEvents(fObject.get());
  fBus.reset();
  QDBusConnection::disconnectFromBus(fConnection);
}

void TBusLink::Connect() {
  const QString address = bus_address();
  if (address.isEmpty()) return RetryLater({});
  QDBusConnection bus = QDBusConnection::connectToBus(address, fConnection);
  if (!bus.isConnected()) {
    const std::string reason = bus.lastError().message().toStdString();
    QDBusConnection::disconnectFromBus(fConnection);
    return RetryLater("cannot connect to the session bus: " + reason);
  }
  fRetryMs = 0;
  fBus = bus;
  fBus->connect(QString(), kLocalPath, kLocal, "Disconnected", this, SLOT(Disconnected()));
  fBus->registerVirtualObject(mpris::kPath, fObject.get());
  fSleep = std::make_unique<TSleepInhibitor>(*fBus);
  ShowOnDesktop();
  ClaimName();
  fList =
      std::make_unique<TPlayerList>(*fBus, [this](const TPlayerList::TPlayers& players) { ReportPlayers(players); });
}

/** Only the first failure is reported to the application and the log. */
void TBusLink::RetryLater(const std::string& logged) {
  if (fRetryMs == 0) {
    if (!logged.empty()) log_error("bus", logged);
    ReportUnreachable();
  }
  fRetryMs = std::clamp(fRetryMs * 2, kFirstRetryMs, kLongestRetryMs);
  fRetry.start(fRetryMs);
}

/** A second instance of this player gets a name of its own. */
void TBusLink::ClaimName() {
  const QString name = mpris::kServicePrefix + "sonivo";
  if (fBus->registerService(name)) return;
  fBus->registerService(name + ".instance" + QString::number(getpid()));
}

void TBusLink::Disconnected() {
  Leave();
  RetryLater("the session bus connection was lost");
}

void TBusLink::Show(const TOwnStatus& status) {
  fStatus = status;
  if (fBus) ShowOnDesktop();
}

void TBusLink::ShowOnDesktop() {
  fObject->Show(fStatus, *fBus);
  fSleep->Set(fStatus.keepsAwake);
  if (!fStatus.wantsTray) {
    fTray.reset();
  } else if (!fTray) {
    fTray = std::make_unique<TTrayItem>(fPlayer, bus_address());
  }
}

void TBusLink::SignalSeeked(int32 positionMs) {
  if (fBus) fObject->SignalSeeked(positionMs, *fBus);
}

void TBusLink::ShowInFolder(const std::string& path) {
  const auto failed = [player = fPlayer, path] { report_no_file_manager(player, path); };
  if (!fBus) return failed();
  show_in_file_manager(*fBus, path, this, failed);
}

void TBusLink::Choose(const std::string& id) {
  fOther.reset();
  fOtherPosition->Change([](TPositionEstimate& estimate) { estimate = TPositionEstimate(); });
  if (id.empty() || !fBus) return;
  fOther = std::make_unique<TOtherPlayer>(
      *fBus, QString::fromStdString(id), fOtherPosition,
      [this, id](const TOtherSong& song, bool isSilent) { ReportOther(id, song, isSilent); });
}

void TBusLink::ReportPlayers(const TPlayerList::TPlayers& players) const {
  BMessage message(kMsgBusPlayers);
  message.AddBool("reachable", true);
  for (const auto& [id, name] : players) {
    message.AddString("id", id.toStdString());
    message.AddString("name", std::string(cut_text(name.toStdString())));
  }
  fPlayer.SendMessage(&message, BMessenger(), 0);
}

void TBusLink::ReportUnreachable() const {
  BMessage message(kMsgBusPlayers);
  message.AddBool("reachable", false);
  fPlayer.SendMessage(&message, BMessenger(), 0);
}

void TBusLink::ReportOther(const std::string& id, const TOtherSong& song, bool isSilent) const {
  BMessage message(kMsgBusOtherIs);
  message.AddString("id", id);
  message.AddString("title", song.title);
  message.AddString("artist", song.artist);
  message.AddString("path", song.path);
  message.AddInt32("durationMs", static_cast<int32>(song.durationUs / 1000));
  message.AddInt32("state", song.state);
  message.AddInt32("speedPercent", to_percent(song.rate));
  message.AddInt32("volumePercent", to_percent(song.volume));
  message.AddBool("silent", isSilent);
  fPlayer.SendMessage(&message, BMessenger(), 0);
}
