#include "player/bus/other_song.h"

#include "platform/support/cut_text.h"
#include "player/model/song_address.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QFileInfo>

#include <algorithm>
#include <cmath>

namespace {

constexpr double kSlowest = 0.01;
constexpr double kFastest = 100;
constexpr int64 kLongestUs = int64{INT32_MAX} * 1000;

std::string text_of(const QVariant& value) {
  return std::string(cut_text(value.toString().toStdString()));
}

/** Some players send a string instead of a list. */
std::string joined(const QVariant& value) {
  const QStringList texts = value.userType() == qMetaTypeId<QDBusArgument>()
                                ? qdbus_cast<QStringList>(value.value<QDBusArgument>())
                                : value.toStringList();
  return std::string(cut_text(texts.join(QStringLiteral(", ")).toStdString()));
}

std::string track_of(const QVariant& value) {
  return value.canConvert<QDBusObjectPath>() ? text_of(value.value<QDBusObjectPath>().path()) : text_of(value);
}

/** Some players send a plain path instead of a URL. */
std::string path_of(const QVariant& value) {
  return local_path(value.toString().toStdString());
}

void take_metadata(TOtherSong* song, const QVariant& value) {
  const QVariantMap map = value.userType() == qMetaTypeId<QDBusArgument>()
                              ? qdbus_cast<QVariantMap>(value.value<QDBusArgument>())
                              : value.toMap();
  song->title = text_of(map["xesam:title"]);
  song->artist = joined(map["xesam:artist"]);
  song->path = path_of(map["xesam:url"]);
  song->trackId = track_of(map["mpris:trackid"]);
  song->durationUs = std::clamp<int64>(map["mpris:length"].toLongLong(), 0, kLongestUs);
  if (song->title.empty())
    song->title = cut_text(QFileInfo(QString::fromStdString(song->path)).completeBaseName().toStdString());
}

int32 state_of(const QString& name) {
  if (name == "Playing") return TInfoRecord::kPlaying;
  return name == "Paused" ? TInfoRecord::kPaused : TInfoRecord::kStopped;
}

void take_flag(bool* flag, const QVariantMap& properties, const char* name) {
  if (properties.contains(name)) *flag = properties[name].toBool();
}

} // namespace

void take_properties(TOtherSong* song, const QVariantMap& properties) {
  if (properties.contains("PlaybackStatus")) song->state = state_of(properties["PlaybackStatus"].toString());
  if (properties.contains("Metadata")) take_metadata(song, properties["Metadata"]);
  const double rate = properties.value("Rate").toDouble();
  if (std::isfinite(rate) && rate > 0) song->rate = std::clamp(rate, kSlowest, kFastest);
  if (properties.contains("Volume")) song->volume = std::clamp(properties["Volume"].toDouble(), 0.0, 1.0);
  take_flag(&song->canSeek, properties, "CanSeek");
  take_flag(&song->canPause, properties, "CanPause");
  take_flag(&song->canPlay, properties, "CanPlay");
}
