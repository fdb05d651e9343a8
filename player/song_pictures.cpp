#include "player/song_pictures.h"

#include "player/peaks/picture_cache.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>

#include <sys/stat.h>

TSongPictures::TSongPictures(QObject* parent, TTaker taker) : QObject(parent), fTaker(std::move(taker)) {}

void TSongPictures::Show(const std::string& song) {
  if (song == fSong) return;
  fSong = song;
  Drop();
  fTaker({});
  if (song.empty()) return;
  const std::string kept = cached_picture_path(song);
  QFile file(QString::fromStdString(kept));
  if (!kept.empty() && file.open(QIODevice::ReadOnly) && file.size() <= static_cast<qint64>(kLargestPicture)) {
    if (const auto picture = parse_picture(file.readAll().toStdString())) {
      futimens(file.handle(), nullptr); // those used longest ago go first
      return fTaker(*picture);
    }
  }
  Ask(kept);
}

void TSongPictures::Ask(const std::string& keepAs) {
  fProgram = new QProcess(this);
  fProgram->setStandardErrorFile(QProcess::nullDevice());
  fProgram->setStandardInputFile(QProcess::nullDevice());
  connect(fProgram, &QProcess::finished, this, &TSongPictures::Take);
  connect(fProgram, &QProcess::readyReadStandardOutput, fProgram, [program = fProgram] {
    if (program->bytesAvailable() > static_cast<qint64>(kLargestPicture)) program->kill();
  });
  QStringList arguments{QString::fromStdString(fSong)};
  if (!keepAs.empty()) arguments << QString::fromStdString(keepAs);
  fProgram->start(QCoreApplication::applicationDirPath() + "/sonivo-peaks", arguments);
}

/** A program that still looks at another song ends by itself, unheard. */
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
  if (const auto picture = parse_picture(bytes); exitCode == 0 && picture) fTaker(*picture);
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
