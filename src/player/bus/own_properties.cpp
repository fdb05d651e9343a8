#include "player/bus/own_properties.h"

#include "player/bus/mpris_names.h"
#include "player/model/song_address.h"

#include <QDBusObjectPath>
#include <QStringList>
#include <QUrl>

#include <algorithm>
#include <array>

namespace {

constexpr double kSlowest = 0.25;
constexpr double kFastest = 2;

/** Indexed by TRepeat. */
const std::array<QString, 3> kLoopNames{QStringLiteral("None"), QStringLiteral("Track"), QStringLiteral("Playlist")};

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
  if (!status.album.empty()) map["xesam:album"] = QString::fromStdString(status.album);
  if (status.albumTrack > 0) map["xesam:trackNumber"] = int{status.albumTrack};
  if (status.durationMs > 0) map["mpris:length"] = qlonglong{status.durationMs} * 1000;
  if (!status.picture.empty()) map["mpris:artUrl"] = url_of(status.picture);
  return map;
}

} // namespace

QString track_path(int64 track) {
  return track == 0 ? mpris::kNoTrack : QStringLiteral("/org/sonivo/track/%1").arg(track);
}

std::optional<TRepeat> repeat_of(const QVariant& loopStatus) {
  const bool isText = loopStatus.typeId() == QMetaType::QString;
  const auto found = std::ranges::find(kLoopNames, isText ? loopStatus.toString() : QString());
  if (found == kLoopNames.end()) return std::nullopt;
  return static_cast<TRepeat>(found - kLoopNames.begin());
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
      {"LoopStatus", kLoopNames.at(static_cast<size_t>(status.repeat))},
      {"Shuffle", status.shuffles},
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
