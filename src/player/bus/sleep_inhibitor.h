#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>

#include <optional>

/** Keeps the desktop from suspending an idle computer, by whichever of the services for that is on the session bus.
    Never blocks; the services release it by themselves when the connection ends. Lives on the bus's thread. */
class TSleepInhibitor : public QObject {
public:
  explicit TSleepInhibitor(const QDBusConnection& bus) : fBus(bus) {}

  void Set(bool isOn);

private:
  void Ask(size_t service);
  void Granted(size_t service, const QDBusMessage& answer);

  QDBusConnection fBus;
  bool fIsWanted = false;
  bool fIsAsking = false;
  std::optional<QDBusMessage> fRelease; // the call that ends it, while it is in effect
};
