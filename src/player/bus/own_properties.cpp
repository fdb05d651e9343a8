#include "player/bus/own_properties.h"

#include "player/bus/mpris_names.h"
#include "player/model/song_address.h"

#include <QDBusObjectPath>
#include <QStringList>
#include <QUrl>

namespace {

constexpr double kSlowest = 0.25;
constexpr double kFastest = 2;

QString state_name(int32 state) {
  if (state == TInfoRecord::kPlaying) return QStringLiteral("Playing");
  return state == TInfoRecord::kPaused ? QStringLiteral("Paused") : QStringLiteral("Stopped");
}

QString url_of(const std::string& path) {
  if (!is_file_path(path)) return QString::fromStdString(path);
  return QUrl::fromLocalFile(QString::fromStdString(path)).toString(QUrl::FullyEncoded);
}

QVariantMap metadata(const TOwnStatus& status) {
  QVariantMap map{{"mpris:trackid", QVariant::fromValue(QDBusObjectPath(track_path(status.track)))}};
  if (status.track == 0) return map;
  map["xesam:title"] = QString::fromStdString(status.title);
  map["xesam:url"] = url_of(status.path);
  if (!status.artist.empty()) map["xesam:artist"] = QStringList{QString::fromStdString(status.artist)};
  if (status.durationMs > 0) map["mpris:length"] = qlonglong{status.durationMs} * 1000;
  if (!status.picture.empty()) map["mpris:artUrl"] = url_of(status.picture);
  return map;
}

} // namespace

QString track_path(int64 track) {
  return track == 0 ? mpris::kNoTrack : QStringLiteral("/org/sonivo/track/%1").arg(track);
}

QVariantMap root_properties() {
  return {
      {"CanQuit", true},
      {"CanRaise", true},
      {"HasTrackList", false},
      {"Identity", QStringLiteral("Sonivo")},
      {"DesktopEntry", QStringLiteral("sonivo")},
      {"SupportedUriSchemes", QStringList{"file", "http", "https"}},
      {"SupportedMimeTypes", QStringList{"audio/mpeg", "audio/ogg", "audio/flac", "audio/x-wav", "audio/mp4",
                                         "audio/aac", "audio/opus", "audio/x-ms-wma", "audio/x-aiff", "audio/x-ape",
                                         "audio/x-wavpack", "audio/x-matroska", "audio/webm"}},
  };
}

QVariantMap player_properties(const TOwnStatus& status) {
  return {
      {"PlaybackStatus", state_name(status.state)},
      {"LoopStatus", QStringLiteral("None")},
      {"Shuffle", false},
      {"Metadata", metadata(status)},
      {"Rate", status.speedPercent / 100.0},
      {"MinimumRate", kSlowest},
      {"MaximumRate", kFastest},
      {"Volume", status.volumePercent / 100.0},
      {"CanGoNext", status.canGoNext},
      {"CanGoPrevious", status.canGoPrevious},
      {"CanPlay", status.canPlay},
      {"CanPause", status.canPlay},
      {"CanSeek", status.track != 0},
      {"CanControl", true},
  };
}
