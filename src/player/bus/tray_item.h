#pragma once

#include "player/bus/tray_menu.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QDBusVirtualObject>

/** The player's icon in the desktop's tray (StatusNotifierItem), on a connection of its own: a tray drops an item only
    when its connection ends. Reports to the application whether a tray shows it. Lives on the bus's thread; never
    blocks. */
class TTrayItem : public QDBusVirtualObject {
public:
  TTrayItem(const BMessenger& player, const QString& busAddress);
  ~TTrayItem() override;

  bool handleMessage(const QDBusMessage& call, const QDBusConnection& bus) override;
  QString introspect(const QString& path) const override;

private:
  void Register();
  void AskForHost();
  void Report(bool isShown);
  QDBusMessage Answer(const QDBusMessage& call) const;

  const BMessenger fPlayer;
  TTrayMenu fMenu;
  const QString fConnection;
  QDBusConnection fBus;
  QDBusServiceWatcher fWatcher;
  bool fIsShown = false;
};
