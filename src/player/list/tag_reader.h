#pragma once

#include "player/list/tag_asker.h"

#include <QObject>
#include <QTimer>

#include <functional>

class QProcess;

/** Has the program `sonivo-peaks --tags` look into the songs of the list that nothing is known of, those that are seen
    first. It runs while there are such songs; one on which it ends, or takes too long, is passed over. Display thread;
    never waits, but for the program's end at its own: 0.2 s at most. */
class TTagReader : public QObject {
public:
  using TTaker = std::function<void(const std::vector<TReadTags>& found)>;
  /** `firstSeen` tells the first row of the list that is seen. */
  TTagReader(QObject* parent, std::function<int32()> firstSeen, TTaker taker, QString program);
  ~TTagReader() override;

  void Show(const std::shared_ptr<const TSongs>& songs);
  /** The answer that is waited for does not come, or not in time. */
  void PassOver();

private:
  void AskNext();
  void StartProgram();
  void Hear();
  QProcess* LetGo();
  void Tell();

  const std::function<int32()> fFirstSeen;
  const TTaker fTaker;
  const QString fProgramPath;
  TTagAsker fAsker;
  QProcess* fProgram = nullptr;
  int fLosses = 0; // in a row
  int fBetweenMs = 0;
  QTimer fLimit;
  QTimer fTeller;
};

/** Beside the player's own program. */
QString tag_program();
