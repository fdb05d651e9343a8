#pragma once

#include "platform/app/messenger.h"
#include "player/bus/own_status.h"

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QVariantMap>

#include <functional>

/** This player's MPRIS object: answers calls and signals changes. Requests become messages to the application. Lives on
    the bus's thread. */
class TPlayerObject : public QDBusVirtualObject {
public:
  TPlayerObject(const BMessenger& player, std::function<int32()> positionMs);

  /** Signals the properties that differ from the last call. */
  void Show(const TOwnStatus& status, const QDBusConnection& bus);
  void SignalSeeked(int32 positionMs, const QDBusConnection& bus) const;

  bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override;
  QString introspect(const QString& path) const override;

private:
  QDBusMessage Answer(const QDBusMessage& call);
  QDBusMessage AnswerProperties(const QDBusMessage& call);
  QVariantMap All(const QString& interface) const;
  QDBusMessage Set(const QDBusMessage& call, const QString& name, const QVariant& value) const;
  bool ChooseMode(const QString& name, const QVariant& value) const;
  bool DoRoot(const QString& method) const;
  bool DoPlayer(const QString& method, const QVariantList& arguments) const;
  void SetPosition(const QVariantList& arguments) const;
  void OpenUri(const QString& uri) const;
  void Send(uint32 what) const;

  const BMessenger fPlayer;
  const std::function<int32()> fPositionMs;
  TOwnStatus fStatus;
};
