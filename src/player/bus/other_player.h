#pragma once

#include "player/bus/other_song.h"
#include "player/bus/shared_position.h"

#include <QDBusConnection>
#include <QObject>
#include <QTimer>

#include <functional>

class QDBusPendingCallWatcher;

/** One other player, followed: its song, its state, and its position as long as somebody wants to know. Nothing here
    waits for it; what it does not answer in time counts as silence. On the bus's thread. */
class TOtherPlayer : public QObject {
  Q_OBJECT
public:
  /** `changed` gets the song and whether the player has fallen silent. */
  using TChanged = std::function<void(const TOtherSong& song, bool isSilent)>;
  TOtherPlayer(const QDBusConnection& bus, const QString& id, TSharedPosition* position, TChanged changed);

  // Wishes; those that the player says it cannot fulfil are left.
  void SetPaused(bool paused);
  /** To there, which is so far from where it is. */
  void SeekTo(int64 positionUs, int64 byUs);
  void SetRate(double rate);
  void SetVolume(double volume);
  void Skip(int direction);
  /** Somebody wants to know the position. */
  void AskSoon();

private slots:
  void PropertiesChanged(const QString& interface, const QVariantMap& changed, const QStringList& invalidated);
  void Seeked(qlonglong positionUs);

private:
  using TAnswered = std::function<void(QDBusPendingCallWatcher&)>;
  void Ask(const QString& method, const QVariantList& arguments, const TAnswered& answered);
  void Send(const QString& method, const QVariantList& arguments = {});
  void Set(const QString& property, const QVariant& value);
  enum class TakePosition { no, yes };
  void AskAll(TakePosition takePosition);
  void AskPosition();
  void Take(const QVariantMap& properties);
  void TakeQuietly(const QVariantMap& properties);
  void TellMovedTo(int64 positionUs);
  void Heard(bool answered);
  void Plan();

  QDBusConnection fBus;
  const QString fService;
  TSharedPosition* const fPosition;
  const TChanged fChanged;
  TOtherSong fSong;
  QTimer fTimer;
  bool fIsAsking = false;
  bigtime_t fAskedAllUs = 0;
  int fUnanswered = 0;
  bool fIsSilent = false;
};
