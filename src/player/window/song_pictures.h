#pragma once

#include "player/pictures/song_picture.h"

#include <QImage>
#include <QObject>

#include <functional>

class QProcess;

/** Provides the waveform and cover of the current song, from the cache or by the helper process sonivo-peaks. Display
    thread; never blocks. */
class TSongPictures : public QObject {
public:
  using TTaker = std::function<void(const TSongPicture& picture, const std::string& coverFile)>;
  /** `taker` gets an empty picture for each new song, then the song's own when it is available, with the image file of
      its cover, if any. */
  TSongPictures(QObject* parent, TTaker taker);

  /** An empty path means no song. */
  void Show(const std::string& song);
  const std::string& Song() const { return fSong; }

private:
  bool TakeKept();
  void Ask();
  void Drop();
  void Take(int exitCode);

  const TTaker fTaker;
  std::string fSong;
  std::string fKept;      // cache file of its picture; empty if it is not cached
  std::string fCoverFile; // cache file of its cover
  QProcess* fProgram = nullptr;
};

QImage cover_image(const TSongPicture& picture);
