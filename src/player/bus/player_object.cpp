#include "player/bus/player_object.h"

#include "platform/app/message.h"
#include "player/bus/mpris_names.h"
#include "player/bus/own_properties.h"
#include "player/model/bus_messages.h"
#include "player/model/player_choices.h"
#include "player/model/player_messages.h"
#include "player/model/song_address.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include <algorithm>
#include <cmath>

namespace {

/** Introspection data; the properties are those that GetAll returns. */
const char* const kDescription = R"(
<interface name="org.mpris.MediaPlayer2">
  <method name="Raise"/><method name="Quit"/>
  <property name="CanQuit" type="b" access="read"/><property name="CanRaise" type="b" access="read"/>
  <property name="HasTrackList" type="b" access="read"/><property name="Identity" type="s" access="read"/>
  <property name="DesktopEntry" type="s" access="read"/>
  <property name="SupportedUriSchemes" type="as" access="read"/>
  <property name="SupportedMimeTypes" type="as" access="read"/>
</interface>
<interface name="org.mpris.MediaPlayer2.Player">
  <method name="Next"/><method name="Previous"/><method name="Pause"/><method name="PlayPause"/>
  <method name="Stop"/><method name="Play"/>
  <method name="Seek"><arg direction="in" name="Offset" type="x"/></method>
  <method name="SetPosition"><arg direction="in" name="TrackId" type="o"/>
    <arg direction="in" name="Position" type="x"/></method>
  <method name="OpenUri"><arg direction="in" name="Uri" type="s"/></method>
  <signal name="Seeked"><arg name="Position" type="x"/></signal>
  <property name="PlaybackStatus" type="s" access="read"/><property name="LoopStatus" type="s" access="readwrite"/>
  <property name="Shuffle" type="b" access="readwrite"/>
  <property name="Rate" type="d" access="readwrite"/><property name="Metadata" type="a{sv}" access="read"/>
  <property name="Volume" type="d" access="readwrite"/>
  <property name="Position" type="x" access="read">
    <annotation name="org.freedesktop.DBus.Property.EmitsChangedSignal" value="false"/></property>
  <property name="MinimumRate" type="d" access="read"/><property name="MaximumRate" type="d" access="read"/>
  <property name="CanGoNext" type="b" access="read"/><property name="CanGoPrevious" type="b" access="read"/>
  <property name="CanPlay" type="b" access="read"/><property name="CanPause" type="b" access="read"/>
  <property name="CanSeek" type="b" access="read"/><property name="CanControl" type="b" access="read">
    <annotation name="org.freedesktop.DBus.Property.EmitsChangedSignal" value="false"/></property>
</interface>
<interface name="org.freedesktop.DBus.Properties">
  <method name="Get"><arg direction="in" type="s"/><arg direction="in" type="s"/>
    <arg direction="out" type="v"/></method>
  <method name="Set"><arg direction="in" type="s"/><arg direction="in" type="s"/>
    <arg direction="in" type="v"/></method>
  <method name="GetAll"><arg direction="in" type="s"/><arg direction="out" type="a{sv}"/></method>
  <signal name="PropertiesChanged"><arg type="s"/><arg type="a{sv}"/><arg type="as"/></signal>
</interface>
)";

constexpr double kMostMs = 2147483647.0;

int32 to_ms(qlonglong us) {
  return static_cast<int32>(std::clamp(static_cast<double>(us) / 1000, -kMostMs, kMostMs));
}

void send_int(const BMessenger& target, uint32 what, const char* name, int32 value) {
  BMessage message(what);
  message.AddInt32(name, value);
  target.SendMessage(&message, BMessenger(), 0);
}

QString text_at(const QVariantList& arguments, int index) {
  return arguments.value(index).toString();
}

} // namespace

TPlayerObject::TPlayerObject(const BMessenger& player, std::function<int32()> positionMs)
    : fPlayer(player), fPositionMs(std::move(positionMs)) {}

void TPlayerObject::Show(const TOwnStatus& status, const QDBusConnection& bus) {
  const QVariantMap before = player_properties(fStatus);
  const QVariantMap now = player_properties(status);
  fStatus = status;
  QVariantMap changed;
  for (auto property = now.begin(); property != now.end(); ++property) {
    if (before[property.key()] != property.value()) changed.insert(property.key(), property.value());
  }
  if (changed.isEmpty()) return;
  QDBusMessage news = QDBusMessage::createSignal(mpris::kPath, mpris::kProperties, "PropertiesChanged");
  bus.send(news << mpris::kPlayer << changed << QStringList());
}

void TPlayerObject::SignalSeeked(int32 positionMs, const QDBusConnection& bus) const {
  QDBusMessage news = QDBusMessage::createSignal(mpris::kPath, mpris::kPlayer, "Seeked");
  bus.send(news << qlonglong{positionMs} * 1000);
}

bool TPlayerObject::handleMessage(const QDBusMessage& message, const QDBusConnection& bus) {
  const QDBusMessage answer = Answer(message);
  return answer.type() != QDBusMessage::InvalidMessage && bus.send(answer);
}

QString TPlayerObject::introspect(const QString& path) const {
  return path == mpris::kPath ? QString::fromLatin1(kDescription) : QString();
}

/** Invalid for an unknown method: the caller gets an error then. */
QDBusMessage TPlayerObject::Answer(const QDBusMessage& call) {
  const QString interface = call.interface();
  if (interface == mpris::kProperties) return AnswerProperties(call);
  const bool isDone = interface == mpris::kRoot     ? DoRoot(call.member())
                      : interface == mpris::kPlayer ? DoPlayer(call.member(), call.arguments())
                                                    : false;
  return isDone ? call.createReply() : QDBusMessage();
}

QVariantMap TPlayerObject::All(const QString& interface) const {
  if (interface == mpris::kRoot) return root_properties();
  if (interface != mpris::kPlayer) return {};
  QVariantMap all = player_properties(fStatus);
  all["Position"] = qlonglong{fStatus.track == 0 ? 0 : fPositionMs()} * 1000;
  return all;
}

QDBusMessage TPlayerObject::AnswerProperties(const QDBusMessage& call) {
  const QVariantList arguments = call.arguments();
  const QVariantMap all = All(text_at(arguments, 0));
  if (call.member() == "GetAll") return call.createReply(QVariant(all));
  const QString name = text_at(arguments, 1);
  if (!all.contains(name)) return call.createErrorReply(QDBusError::UnknownProperty, "No such property: " + name);
  if (call.member() == "Get") return call.createReply(QVariant::fromValue(QDBusVariant(all[name])));
  if (call.member() != "Set") return {};
  return Set(call, name, arguments.value(2).value<QDBusVariant>().variant());
}

QDBusMessage TPlayerObject::Set(const QDBusMessage& call, const QString& name, const QVariant& value) const {
  const double number = value.toDouble();
  if (name == "Volume") {
    send_int(fPlayer, kMsgVolume, "percent", static_cast<int32>(std::lround(std::clamp(number, 0.0, 1.0) * 100)));
  } else if (name == "Rate" && number == 0) {
    Send(kMsgBusPause);
  } else if (name == "Rate") {
    send_int(fPlayer, kMsgSpeed, "percent", static_cast<int32>(std::lround(std::clamp(number, 0.0, 10.0) * 100)));
  } else if (name == "LoopStatus" || name == "Shuffle") {
    if (!ChooseMode(name, value)) return call.createErrorReply(QDBusError::InvalidArgs, "Not a value of " + name);
  } else {
    return call.createErrorReply(QDBusError::PropertyReadOnly, name + " is read-only");
  }
  return call.createReply();
}

bool TPlayerObject::ChooseMode(const QString& name, const QVariant& value) const {
  BMessage message(kMsgChoose);
  const std::optional<TRepeat> repeat = repeat_of(value);
  if (name == "Shuffle" && value.typeId() == QMetaType::Bool) {
    message.AddBool(choice::kShuffle, value.toBool());
  } else if (name == "LoopStatus" && repeat) {
    message.AddInt32(choice::kRepeat, static_cast<int32>(*repeat));
  } else {
    return false;
  }
  fPlayer.SendMessage(&message, BMessenger(), 0);
  return true;
}

bool TPlayerObject::DoRoot(const QString& method) const {
  if (method == "Raise") {
    Send(kMsgBusRaise);
  } else if (method == "Quit") {
    Send(kMsgWindowCloses);
  } else {
    return false;
  }
  return true;
}

bool TPlayerObject::DoPlayer(const QString& method, const QVariantList& arguments) const {
  const struct {
    const char* name;
    uint32 what;
    bool isPossible;
  } kPlain[] = {{"Play", kMsgBusPlay, fStatus.canPlay},        {"Pause", kMsgBusPause, fStatus.canPlay},
                {"PlayPause", kMsgPlayPause, fStatus.canPlay}, {"Stop", kMsgBusStop, fStatus.canPlay},
                {"Next", kMsgBusNext, fStatus.canGoNext},      {"Previous", kMsgBusPrevious, fStatus.canGoPrevious}};
  for (const auto& plain : kPlain) {
    if (method != plain.name) continue;
    if (plain.isPossible) Send(plain.what);
    return true;
  }
  if (method == "Seek") {
    if (fStatus.track != 0) send_int(fPlayer, kMsgBusSeekBy, "byMs", to_ms(arguments.value(0).toLongLong()));
  } else if (method == "SetPosition") {
    SetPosition(arguments);
  } else if (method == "OpenUri") {
    OpenUri(text_at(arguments, 0));
  } else {
    return false;
  }
  return true;
}

/** Requests for a previous song, or a position outside the song, are ignored. */
void TPlayerObject::SetPosition(const QVariantList& arguments) const {
  const QString track = arguments.value(0).value<QDBusObjectPath>().path();
  const int32 positionMs = to_ms(arguments.value(1).toLongLong());
  if (fStatus.track == 0 || track != track_path(fStatus.track) || positionMs < 0 || positionMs > fStatus.durationMs)
    return;
  send_int(fPlayer, kMsgSeek, "positionMs", positionMs);
}

void TPlayerObject::OpenUri(const QString& uri) const {
  BMessage message(kMsgHandedOver);
  message.AddString("path", song_address(uri.toStdString(), "/").text);
  fPlayer.SendMessage(&message, BMessenger(), 0);
}

void TPlayerObject::Send(uint32 what) const {
  const BMessage message(what);
  fPlayer.SendMessage(&message, BMessenger(), 0);
}
