#include "player/window/song_pictures.h"

#include "player/model/display_thread_check.h"
#include "player/pictures/picture_cache.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>

#include <fcntl.h>
#include <sys/stat.h>

TSongPictures::TSongPictures(QObject* parent, TTaker taker) : QObject(parent), fTaker(std::move(taker)) {}

void TSongPictures::Show(const std::string& song) {
  check_display_thread();
  if (song == fSong) return;
  fSong = song;
  Drop();
  fTaker({}, {});
  if (song.empty()) return;
  fKept = cached_picture_path(song);
  fCoverFile = fKept.empty() ? std::string() : cover_file_beside(fKept);
  if (!TakeKept()) Ask();
}

/** False if the cache entry is missing or incomplete. */
bool TSongPictures::TakeKept() {
  QFile file(QString::fromStdString(fKept));
  if (fKept.empty() || !file.open(QIODevice::ReadOnly) || file.size() > static_cast<qint64>(kLargestPicture))
    return false;
  const auto picture = parse_picture(file.readAll().toStdString());
  // Marks the entry as recently used, for the eviction.
  const bool hasCover = picture && !picture->cover.empty();
  if (!picture || (hasCover && utimensat(AT_FDCWD, fCoverFile.c_str(), nullptr, 0) != 0)) return false;
  futimens(file.handle(), nullptr);
  fTaker(*picture, hasCover ? fCoverFile : std::string());
  return true;
}

void TSongPictures::Ask() {
  fProgram = new QProcess(this);
  fProgram->setProcessChannelMode(QProcess::ForwardedErrorChannel);
  fProgram->setStandardInputFile(QProcess::nullDevice());
  connect(fProgram, &QProcess::finished, this, &TSongPictures::Take);
  connect(fProgram, &QProcess::readyReadStandardOutput, fProgram, [program = fProgram] {
    if (program->bytesAvailable() > static_cast<qint64>(kLargestPicture)) program->kill();
  });
  QStringList arguments{QString::fromStdString(fSong)};
  if (!fKept.empty()) arguments << QString::fromStdString(fKept);
  fProgram->start(QCoreApplication::applicationDirPath() + "/sonivo-peaks", arguments);
}

/** Cancels reading the previous song. */
void TSongPictures::Drop() {
  if (fProgram == nullptr) return;
  fProgram->disconnect(this);
  connect(fProgram, &QProcess::finished, fProgram, &QObject::deleteLater);
  if (fProgram->state() == QProcess::NotRunning) fProgram->deleteLater();
  fProgram->kill();
  fProgram = nullptr;
}

void TSongPictures::Take(int exitCode) {
  const std::string bytes = fProgram->readAllStandardOutput().toStdString();
  if (const auto picture = parse_picture(bytes); exitCode == 0 && picture)
    fTaker(*picture, picture->cover.empty() || !QFile::exists(QString::fromStdString(fCoverFile)) ? "" : fCoverFile);
  fProgram->deleteLater();
  fProgram = nullptr;
}

QImage cover_image(const TSongPicture& picture) {
  if (picture.cover.empty()) return {};
  const auto* const points = reinterpret_cast<const uchar*>(picture.cover.data());
  return QImage(points, picture.coverWidth, picture.coverHeight, qsizetype{3} * picture.coverWidth,
                QImage::Format_RGB888)
      .copy();
}
