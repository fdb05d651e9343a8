#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QVariantMap>

#include <functional>
#include <string>
#include <thread>
#include <vector>

class QEventLoop;

/** A scripted media player on the bus, with its own thread and connection. */
struct FakePlayer {
  /** `positionUs` supplies the position on request. */
  FakePlayer(const std::string& id, QVariantMap properties, std::function<qlonglong()> positionUs = {});
  FakePlayer(const FakePlayer&) = delete;
  FakePlayer& operator=(const FakePlayer&) = delete;
  /** Releases its names on the bus. */
  ~FakePlayer();

  /** Stops answering calls. */
  void FallSilent();
  void Speak();
  void Change(const QVariantMap& properties);
  void SignalSeeked(qlonglong positionUs);
  /** The calls it received, such as "Pause" or "SetPosition /track/1 5000000". */
  std::vector<std::string> Received();

private:
  class Object;
  /** Synchronous. */
  void Do(const std::function<void()>& action);

  QEventLoop* fLoop = nullptr;
  Object* fObject = nullptr;
  std::thread fThread;
};

/** A minute-long song that plays. */
QVariantMap playing_song(const std::string& url);
