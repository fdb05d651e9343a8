#include "player/bus/player_list.h"

#include "player/bus/mpris_names.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace {

const QString kBusName = QStringLiteral("org.freedesktop.DBus");
const QString kBusPath = QStringLiteral("/org/freedesktop/DBus");
constexpr int kAnswerLimitMs = 2000;

QString part_of(const QString& name) {
  return name.mid(mpris::kServicePrefix.size());
}

} // namespace

TPlayerList::TPlayerList(const QDBusConnection& bus, std::function<void(const TPlayers&)> changed)
    : fBus(bus), fChanged(std::move(changed)) {
  fBus.connect(kBusName, kBusPath, kBusName, "NameOwnerChanged", this, SLOT(OwnerChanged(QString, QString, QString)));
  const auto call = QDBusMessage::createMethodCall(kBusName, kBusPath, kBusName, "ListNames");
  auto* const watcher = new QDBusPendingCallWatcher(fBus.asyncCall(call, kAnswerLimitMs), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
    finished->deleteLater();
    const QDBusPendingReply<QStringList> names = *finished;
    if (names.isError()) return;
    for (const QString& name : names.value()) {
      if (name.startsWith(mpris::kServicePrefix)) AskOwner(name);
    }
    Report(); // the bus can be reached, even if no player is there
  });
}

void TPlayerList::OwnerChanged(const QString& name, const QString& before, const QString& now) {
  if (!name.startsWith(mpris::kServicePrefix)) return;
  if (!before.isEmpty() && fPlayers.erase(part_of(name)) > 0) Report();
  if (!now.isEmpty()) Add(name, now);
}

void TPlayerList::AskOwner(const QString& name) {
  ++fAwaitedOwners;
  auto call = QDBusMessage::createMethodCall(kBusName, kBusPath, kBusName, "GetNameOwner");
  auto* const watcher = new QDBusPendingCallWatcher(fBus.asyncCall(call << name, kAnswerLimitMs), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, name](QDBusPendingCallWatcher* finished) {
    finished->deleteLater();
    const QDBusPendingReply<QString> owner = *finished;
    --fAwaitedOwners;
    if (!owner.isError()) Add(name, owner.value());
    Report();
  });
}

void TPlayerList::Add(const QString& name, const QString& owner) {
  if (owner == fBus.baseService()) return;
  fPlayers[part_of(name)] = {owner, part_of(name)}; // until it reports its identity, if ever
  Report();
  AskIdentity(name);
}

/** A player with two bus names is listed once, under the shorter one. */
void TPlayerList::Report() const {
  if (fAwaitedOwners > 0) return;
  TPlayers players;
  QString lastOwner;
  for (const auto& [id, player] : fPlayers) {
    if (player.owner != lastOwner) players[id] = player.shown;
    lastOwner = player.owner;
  }
  fChanged(players);
}

void TPlayerList::AskIdentity(const QString& name) {
  auto call = QDBusMessage::createMethodCall(name, mpris::kPath, mpris::kProperties, "Get");
  call << mpris::kRoot << QStringLiteral("Identity");
  auto* const watcher = new QDBusPendingCallWatcher(fBus.asyncCall(call, kAnswerLimitMs), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, name](QDBusPendingCallWatcher* finished) {
    finished->deleteLater();
    const QDBusPendingReply<QDBusVariant> identity = *finished;
    const auto player = fPlayers.find(part_of(name));
    if (identity.isError() || player == fPlayers.end()) return;
    const QString shown = identity.value().variant().toString().simplified();
    if (shown.isEmpty() || shown == player->second.shown) return;
    player->second.shown = shown;
    Report();
  });
}
