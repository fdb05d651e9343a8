#pragma once

#include <QDBusConnection>
#include <QObject>

#include <functional>
#include <map>

/** The other media players on the bus, as they come and go. On the bus's thread. */
class TPlayerList : public QObject {
  Q_OBJECT
public:
  /** From the bus name's own part ("vlc") to the name that the player shows itself under. */
  using TPlayers = std::map<QString, QString>;

  TPlayerList(const QDBusConnection& bus, std::function<void(const TPlayers&)> changed);

private slots:
  void OwnerChanged(const QString& name, const QString& before, const QString& now);

private:
  void Tell() const;
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
  int fAwaitedOwners = 0; // of those that were there before
};
