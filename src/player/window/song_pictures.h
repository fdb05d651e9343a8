#pragma once

#include "player/pictures/song_picture.h"

#include <QImage>
#include <QObject>

#include <functional>

class QProcess;

/** Finds what can be seen of the song that plays: in the cache, else by the program sonivo-peaks. Display thread; never
    waits. */
class TSongPictures : public QObject {
public:
  using TTaker = std::function<void(const TSongPicture& picture, const std::string& coverFile)>;
  /** `taker` is given an empty picture at once, and the song's own when it is there; with it the file of its cover, if
      it has one. */
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
  std::string fKept;      // where its picture is kept
  std::string fCoverFile; // and its cover
  QProcess* fProgram = nullptr;
};

QImage cover_image(const TSongPicture& picture);
