#pragma once

#include "player/peaks/song_picture.h"

#include <QImage>
#include <QObject>

#include <functional>

class QProcess;

/** Finds what can be seen of the song that plays: in the cache, else by the program sonivo-peaks. Display thread; never
    waits. */
class TSongPictures : public QObject {
public:
  using TTaker = std::function<void(const TSongPicture&)>;
  /** `taker` is given an empty picture at once, and the song's own when it is there. */
  TSongPictures(QObject* parent, TTaker taker);

  /** An empty path means no song. */
  void Show(const std::string& song);

private:
  void Ask(const std::string& keepAs);
  void Drop();
  void Take(int exitCode);

  const TTaker fTaker;
  std::string fSong;
  QProcess* fProgram = nullptr;
};

QImage cover_image(const TSongPicture& picture);
