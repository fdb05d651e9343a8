#pragma once

#include "player/bus/other_player.h"
#include "player/bus/player_list.h"
#include "player/bus/player_object.h"
#include "player/bus/sleep_inhibitor.h"
#include "player/bus/tray_item.h"

#include <QObject>
#include <QTimer>

#include <memory>
#include <optional>

/** The connection to the desktop's message bus, and the objects that depend on it; reconnects with exponential
    back-off. Lives on the bus's thread, which may block on the bus; reports to the application by messages. */
class TBusLink : public QObject {
  Q_OBJECT
public:
  TBusLink(const BMessenger& player, std::function<int32()> ownPositionMs, TSharedPosition* otherPosition);
  ~TBusLink() override;

  void Connect();
  void Show(const TOwnStatus& status);
  void SignalSeeked(int32 positionMs);
  void ShowInFolder(const std::string& path);
  /** Empty to follow no other player. */
  void Choose(const std::string& id);
  /** Null while no other player is followed. */
  TOtherPlayer* Other() { return fOther.get(); }

private slots:
  void Disconnected();

private:
  void ShowOnDesktop();
  void Leave();
  void RetryLater(const std::string& logged);
  void ClaimName();
  void ReportPlayers(const TPlayerList::TPlayers& players) const;
  void ReportUnreachable() const;
  void ReportOther(const std::string& id, const TOtherSong& song, bool isSilent) const;

  const BMessenger fPlayer;
  const QString fConnection;
  TSharedPosition* const fOtherPosition;
  std::unique_ptr<TPlayerObject> fObject;
  std::optional<QDBusConnection> fBus; // empty while disconnected
  std::unique_ptr<TSleepInhibitor> fSleep;
  std::unique_ptr<TTrayItem> fTray; // while the user wants it
  std::unique_ptr<TPlayerList> fList;
  std::unique_ptr<TOtherPlayer> fOther;
  TOwnStatus fStatus;
  QTimer fRetry;
  int fRetryMs = 0; // 0 while connected, and before the first attempt
};

void report_no_file_manager(const BMessenger& player, const std::string& path);
