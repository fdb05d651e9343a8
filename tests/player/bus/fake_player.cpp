#include "tests/player/bus/fake_player.h"

#include "player/bus/mpris_names.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QEventLoop>

#include <atomic>
#include <future>

class FakePlayer::Object : public QDBusVirtualObject {
public:
  Object(const std::string& id, QVariantMap properties, std::function<qlonglong()> positionUs)
      : fName(QString::fromStdString(id)), fProperties(std::move(properties)), fPositionUs(std::move(positionUs)) {}

  void Begin() {
    QDBusConnection bus = QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), fName);
    bus.registerVirtualObject(mpris::kPath, this);
    for (const QString& name : {fName, fName + ".too"}) bus.registerService(mpris::kServicePrefix + name);
  }
  void End() {
    QDBusConnection(fName).unregisterObject(mpris::kPath);
    QCoreApplication::removePostedEvents(this);
    QDBusConnection::disconnectFromBus(fName);
  }

  bool handleMessage(const QDBusMessage& call, const QDBusConnection& bus) override {
    if (fIsSilent) return true;
    if (call.interface() != mpris::kProperties) Note(call);
    return bus.send(Answer(call));
  }
  QString introspect(const QString&) const override { return {}; }

  void Change(const QVariantMap& changed) {
    for (auto property = changed.begin(); property != changed.end(); ++property)
      fProperties[property.key()] = property.value();
    Signal(mpris::kProperties, "PropertiesChanged", {mpris::kPlayer, changed, QStringList()});
  }
  void Signal(const QString& interface, const QString& signal, const QVariantList& arguments) {
    QDBusMessage news = QDBusMessage::createSignal(mpris::kPath, interface, signal);
    news.setArguments(arguments);
    QDBusConnection(fName).send(news);
  }
  std::vector<std::string> Received() {
    const std::lock_guard lock(fMutex);
    return fReceived;
  }
  std::atomic<bool> fIsSilent{false};

private:
  QDBusMessage Answer(const QDBusMessage& call) {
    QVariantMap all = fProperties;
    if (fPositionUs) all["Position"] = fPositionUs();
    const QVariantList arguments = call.arguments();
    if (call.member() == "GetAll") return call.createReply(QVariant(all));
    const QString name = arguments.value(1).toString();
    if (call.member() == "Get" && all.contains(name))
      return call.createReply(QVariant::fromValue(QDBusVariant(all[name])));
    if (call.member() == "Get") return call.createErrorReply(QDBusError::UnknownProperty, name);
    if (call.member() == "Set") Note(call);
    return call.createReply();
  }

  void Note(const QDBusMessage& call) {
    QStringList words{call.member()};
    for (const QVariant& argument : call.arguments()) {
      const QVariant value = argument.canConvert<QDBusVariant>() ? argument.value<QDBusVariant>().variant() : argument;
      const bool isPath = value.canConvert<QDBusObjectPath>();
      words << (isPath ? value.value<QDBusObjectPath>().path() : value.toString());
    }
    const std::lock_guard lock(fMutex);
    fReceived.push_back(words.join(' ').toStdString());
  }

  const QString fName;
  QVariantMap fProperties;
  const std::function<qlonglong()> fPositionUs;
  std::mutex fMutex; // guards fReceived
  std::vector<std::string> fReceived;
};

FakePlayer::FakePlayer(const std::string& id, QVariantMap properties, std::function<qlonglong()> positionUs) {
  std::promise<void> begun;
  fThread = std::thread([&] {
    QEventLoop loop;
    Object object(id, std::move(properties), std::move(positionUs));
    fLoop = &loop;
    fObject = &object;
    object.Begin();
    begun.set_value();
    loop.exec();
    object.End();
  });
  begun.get_future().get();
}

FakePlayer::~FakePlayer() {
  QMetaObject::invokeMethod(fLoop, &QEventLoop::quit, Qt::QueuedConnection);
  fThread.join();
}

void FakePlayer::Do(const std::function<void()>& action) {
  QMetaObject::invokeMethod(fLoop, action, Qt::BlockingQueuedConnection);
}

void FakePlayer::FallSilent() {
  fObject->fIsSilent = true;
}

void FakePlayer::Speak() {
  fObject->fIsSilent = false;
}

void FakePlayer::Change(const QVariantMap& properties) {
  Do([&] { fObject->Change(properties); });
}

void FakePlayer::SignalSeeked(qlonglong positionUs) {
  Do([&] { fObject->Signal(mpris::kPlayer, "Seeked", {positionUs}); });
}

std::vector<std::string> FakePlayer::Received() {
  return fObject->Received();
}

QVariantMap playing_song(const std::string& url) {
  return {{"PlaybackStatus", "Playing"},
          {"Rate", 1.0},
          {"Volume", 0.5},
          {"CanSeek", true},
          {"CanPause", true},
          {"CanPlay", true},
          {"Metadata", QVariantMap{{"mpris:trackid", QVariant::fromValue(QDBusObjectPath("/track/1"))},
                                   {"mpris:length", qlonglong{60000000}},
                                   {"xesam:title", "A title"},
                                   {"xesam:artist", QStringList{"One", "Two"}},
                                   {"xesam:url", QString::fromStdString(url)}}}};
}
