#pragma once

#include "player/list/tag_asker.h"

#include <QObject>
#include <QTimer>

#include <functional>

class QProcess;

/** Reads missing tags by the helper process `sonivo-peaks --tags`, visible songs first. The helper runs while there are
    such songs; a song on which it crashes or exceeds the time limit is skipped. Display thread; never blocks, except
    in the destructor, which waits for the helper for 0.2 s at most. */
class TTagReader : public QObject {
public:
  using TTaker = std::function<void(const std::vector<TReadTags>& found)>;
  /** `firstSeen` returns the first visible row. */
  TTagReader(QObject* parent, std::function<int32()> firstSeen, TTaker taker, QString program);
  ~TTagReader() override;

  void Show(const std::shared_ptr<const TSongs>& songs);
  /** Skips the song whose answer is pending. */
  void PassOver();

private:
  void AskNext();
  void StartProgram();
  void Hear();
  QProcess* Release();
  void DeliverBatch();

  const std::function<int32()> fFirstSeen;
  const TTaker fTaker;
  const QString fProgramPath;
  TTagAsker fAsker;
  QProcess* fProgram = nullptr;
  int fFailures = 0; // in a row
  int fBatchIntervalMs = 0;
  QTimer fTimeout;
  QTimer fBatchTimer;
};

/** In the folder of the player's executable. */
QString tag_program();
