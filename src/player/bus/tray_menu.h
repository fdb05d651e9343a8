#pragma once

#include "platform/app/messenger.h"

#include <QDBusVirtualObject>

/** The context menu of the tray icon (com.canonical.dbusmenu): show, play or pause, next song, quit. Its texts are
   those of the current language whenever the tray asks for them. Lives on the bus's thread; never blocks. */
class TTrayMenu : public QDBusVirtualObject {
public:
  static constexpr const char* kPath = "/MenuBar";

  explicit TTrayMenu(const BMessenger& player);

  bool handleMessage(const QDBusMessage& call, const QDBusConnection& bus) override;
  QString introspect(const QString& path) const override;

private:
  QDBusMessage Answer(const QDBusMessage& call) const;
  QDBusMessage AnswerForProperties(const QDBusMessage& call) const;
  void HandleEvent(int id, const QString& event) const;
  void HandleEvents(const QDBusMessage& call) const;

  const BMessenger fPlayer;
};
