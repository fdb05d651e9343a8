#pragma once

#include "player/bus/other_song.h"
#include "player/bus/shared_position.h"

#include <QDBusConnection>
#include <QObject>
#include <QTimer>

#include <functional>

class QDBusPendingCallWatcher;

/** Follows another player: its song, its state and, while somebody reads it, its position. All calls are asynchronous;
    an answer that is overdue counts as none. Lives on the bus's thread. */
class TOtherPlayer : public QObject {
  Q_OBJECT
public:
  /** `isSilent`: the player does not answer any more. */
  using TChanged = std::function<void(const TOtherSong& song, bool isSilent)>;
  TOtherPlayer(const QDBusConnection& bus, const QString& id, TSharedPosition* position, TChanged changed);

  // Commands; those that the player says it does not support are not sent.
  void SetPaused(bool paused);
  /** `byUs` is the same seek relative to the current position. */
  void SeekTo(int64 positionUs, int64 byUs);
  void SetRate(double rate);
  void SetVolume(double volume);
  void Skip(int direction);
  /** The position is needed again. */
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
  void MovedTo(int64 positionUs);
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
