#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QVariantMap>

#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

class QEventLoop;
class TActions;

/** A media player on the bus that does what a test wants of it, on a thread and a connection of its own. */
class FakePlayer {
public:
  /** `positionUs`: what it says when asked. */
  FakePlayer(const std::string& id, QVariantMap properties, std::function<qlonglong()> positionUs = {});
  FakePlayer(const FakePlayer&) = delete;
  FakePlayer& operator=(const FakePlayer&) = delete;
  /** Quits: its names are gone from the bus. */
  ~FakePlayer();

  /** From now on it takes questions and answers none of them. */
  void FallSilent();
  void Speak();
  void Change(const QVariantMap& properties);
  void TellSeeked(qlonglong positionUs);
  /** What it was told to do, "Pause" or "SetPosition /track/1 5000000". */
  std::vector<std::string> Told();

private:
  class Object;
  /** Returns when it is done. */
  void Do(const std::function<void()>& action);

  TActions* fActions = nullptr;
  QEventLoop* fLoop = nullptr;
  Object* fObject = nullptr;
  std::thread fThread;
};

/** A minute-long song that plays. */
QVariantMap playing_song(const std::string& url);
