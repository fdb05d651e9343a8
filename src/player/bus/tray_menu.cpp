#include "player/bus/tray_menu.h"

#include "platform/app/message.h"
#include "player/bus/mpris_names.h"
#include "player/model/bus_messages.h"
#include "player/model/player_messages.h"
#include "player/texts/player_texts.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QVariantMap>

#include <algorithm>
#include <array>

/** An entry as the protocol has it: (ia{sv}). */
struct TTrayEntry {
  int id = 0;
  QVariantMap properties;
};
Q_DECLARE_METATYPE(TTrayEntry)

/** An entry with those below it: (ia{sv}av). */
struct TTrayLayout {
  TTrayEntry entry;
  QVariantList below; // a TTrayLayout each; wrapped in another variant it makes panels crash
};
Q_DECLARE_METATYPE(TTrayLayout)

QDBusArgument& operator<<(QDBusArgument& argument, const TTrayEntry& entry) {
  argument.beginStructure();
  argument << entry.id << entry.properties;
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, TTrayEntry& entry) {
  argument.beginStructure();
  argument >> entry.id >> entry.properties;
  argument.endStructure();
  return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const TTrayLayout& layout) {
  argument.beginStructure();
  argument << layout.entry.id << layout.entry.properties << layout.below;
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, TTrayLayout& layout) {
  argument.beginStructure();
  argument >> layout.entry.id >> layout.entry.properties >> layout.below;
  argument.endStructure();
  return argument;
}

namespace {

const QString kInterface = QStringLiteral("com.canonical.dbusmenu");
constexpr uint kRevision = 1; // the entries never change
constexpr int kMostEvents = 64;

const char* const kDescription = R"xml(
<interface name="com.canonical.dbusmenu">
  <property name="Version" type="u" access="read"/><property name="Status" type="s" access="read"/>
  <property name="TextDirection" type="s" access="read"/><property name="IconThemePath" type="as" access="read"/>
  <method name="GetLayout"><arg type="i" direction="in"/><arg type="i" direction="in"/><arg type="as" direction="in"/>
    <arg type="u" direction="out"/><arg type="(ia{sv}av)" direction="out"/></method>
  <method name="GetGroupProperties"><arg type="ai" direction="in"/><arg type="as" direction="in"/>
    <arg type="a(ia{sv})" direction="out"/></method>
  <method name="GetProperty"><arg type="i" direction="in"/><arg type="s" direction="in"/>
    <arg type="v" direction="out"/></method>
  <method name="Event"><arg type="i" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="in"/>
    <arg type="u" direction="in"/></method>
  <method name="EventGroup"><arg type="a(isvu)" direction="in"/><arg type="ai" direction="out"/></method>
  <method name="AboutToShow"><arg type="i" direction="in"/><arg type="b" direction="out"/></method>
  <method name="AboutToShowGroup"><arg type="ai" direction="in"/><arg type="ai" direction="out"/>
    <arg type="ai" direction="out"/></method>
  <signal name="LayoutUpdated"><arg type="u"/><arg type="i"/></signal>
  <signal name="ItemsPropertiesUpdated"><arg type="a(ia{sv})"/><arg type="a(ias)"/></signal>
</interface>
)xml";

/** The entry with the id n + 1 is the n-th one; 0 is the menu itself. */
struct TEntryKind {
  const char* text; // null: a separator
  uint32 request;
};
constexpr std::array<TEntryKind, 6> kEntries{{{"Player_Tray_Show", kMsgBusRaise},
                                              {nullptr, 0},
                                              {"Player_Play_Pause", kMsgPlayPause},
                                              {"Player_Next", kMsgNext},
                                              {nullptr, 0},
                                              {"Player_Quit", kMsgWindowCloses}}};

bool is_entry(int id) {
  return id >= 1 && id <= static_cast<int>(kEntries.size());
}

const TEntryKind& kind_of(int id) {
  return kEntries[static_cast<size_t>(id - 1)];
}

/** The protocol marks an access key by an underscore. */
QString label_of(const char* key) {
  QString label = QString::fromUtf8(player_text(key));
  return label.replace('_', "__").replace('&', '_');
}

QVariantMap properties_of(int id) {
  if (!is_entry(id)) return {{"children-display", QStringLiteral("submenu")}};
  const char* const text = kind_of(id).text;
  if (text == nullptr) return {{"type", QStringLiteral("separator")}};
  return {{"label", label_of(text)}, {"enabled", true}, {"visible", true}};
}

QVariant layout_of(int id, int depth) {
  TTrayLayout layout{{id, properties_of(id)}, {}};
  for (int entry = 1; id == 0 && depth != 0 && is_entry(entry); ++entry) layout.below.append(layout_of(entry, 0));
  return QVariant::fromValue(layout);
}

QVariant entries_of(const QList<int>& ids) {
  QList<TTrayEntry> entries;
  for (int id = 0; id == 0 || is_entry(id); ++id)
    if (ids.isEmpty() || ids.contains(id)) entries.append({id, properties_of(id)});
  return QVariant::fromValue(entries);
}

const QVariantMap& menu_properties() {
  static const QVariantMap properties{{"Version", 3U},
                                      {"Status", QStringLiteral("normal")},
                                      {"TextDirection", QStringLiteral("ltr")},
                                      {"IconThemePath", QStringList()}};
  return properties;
}

QList<int> ids_in(const QDBusMessage& call) {
  return qdbus_cast<QList<int>>(call.arguments().value(0));
}

} // namespace

TTrayMenu::TTrayMenu(const BMessenger& player) : fPlayer(player) {
  qDBusRegisterMetaType<TTrayEntry>();
  qDBusRegisterMetaType<QList<TTrayEntry>>();
  qDBusRegisterMetaType<TTrayLayout>();
  qDBusRegisterMetaType<QList<int>>();
}

bool TTrayMenu::handleMessage(const QDBusMessage& call, const QDBusConnection& bus) {
  const QDBusMessage answer = call.interface() == mpris::kProperties ? AnswerForProperties(call) : Answer(call);
  return answer.type() != QDBusMessage::InvalidMessage && bus.send(answer);
}

QString TTrayMenu::introspect(const QString& path) const {
  return path == kPath ? QString::fromLatin1(kDescription) : QString();
}

QDBusMessage TTrayMenu::AnswerForProperties(const QDBusMessage& call) const {
  if (call.member() == "GetAll") return call.createReply(QVariant(menu_properties()));
  const QVariant value = menu_properties().value(call.arguments().value(1).toString());
  if (call.member() != "Get" || !value.isValid()) return {};
  return call.createReply(QVariant::fromValue(QDBusVariant(value)));
}

/** Checks the signature first: what the conversions make of other types is no answer. */
QDBusMessage TTrayMenu::Answer(const QDBusMessage& call) const {
  if (call.interface() != kInterface) return {};
  const QVariantList arguments = call.arguments();
  const auto is = [&call](const char* member, const char* signature) {
    return call.member() == member && call.signature() == signature;
  };
  const int id = arguments.value(0).toInt();
  if (is("GetLayout", "iias")) return call.createReply({kRevision, layout_of(id, arguments[1].toInt())});
  if (is("GetGroupProperties", "aias")) return call.createReply(entries_of(ids_in(call)));
  if (is("GetProperty", "is"))
    return call.createReply(QVariant::fromValue(QDBusVariant(properties_of(id).value(arguments[1].toString(), ""))));
  // The texts may be in another language than when they were last asked for.
  if (is("AboutToShow", "i")) return call.createReply(true);
  if (is("AboutToShowGroup", "ai"))
    return call.createReply({QVariant::fromValue(ids_in(call)), QVariant::fromValue(QList<int>())});
  if (is("Event", "isvu")) {
    HandleEvent(id, arguments[1].toString());
    return call.createReply();
  }
  if (!is("EventGroup", "a(isvu)")) return {};
  HandleEvents(call);
  return call.createReply(QVariant::fromValue(QList<int>()));
}

void TTrayMenu::HandleEvent(int id, const QString& event) const {
  if (event != "clicked" || !is_entry(id) || kind_of(id).text == nullptr) return;
  const BMessage message(kind_of(id).request);
  fPlayer.SendMessage(&message, BMessenger(), 0);
}

void TTrayMenu::HandleEvents(const QDBusMessage& call) const {
  const auto events = call.arguments()[0].value<QDBusArgument>();
  events.beginArray();
  for (int count = 0; count < kMostEvents && !events.atEnd(); ++count) {
    int id = 0;
    QString event;
    QDBusVariant data;
    uint timestamp = 0;
    events.beginStructure();
    events >> id >> event >> data >> timestamp;
    events.endStructure();
    HandleEvent(id, event);
  }
  events.endArray();
}
