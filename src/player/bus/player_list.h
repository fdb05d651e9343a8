#pragma once

#include <QDBusConnection>
#include <QObject>

#include <functional>
#include <map>

/** The other media players on the bus, as they come and go. On the bus's thread. */
class TPlayerList : public QObject {
  Q_OBJECT
public:
  /** From the bus name without its prefix ("vlc") to the name shown to the user. */
  using TPlayers = std::map<QString, QString>;

  TPlayerList(const QDBusConnection& bus, std::function<void(const TPlayers&)> changed);

private slots:
  void OwnerChanged(const QString& name, const QString& before, const QString& now);

private:
  void Report() const;
  void Add(const QString& name, const QString& owner);
  void AskOwner(const QString& name);
  void AskIdentity(const QString& name);

  QDBusConnection fBus;
  struct TPlayer {
    QString owner;
    QString shown;
  };
  const std::function<void(const TPlayers&)> fChanged;
  std::map<QString, TPlayer> fPlayers;
  int fAwaitedOwners = 0; // answers missing for the names listed at the start
};
