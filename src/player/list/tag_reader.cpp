#include "player/list/tag_reader.h"

#include <QCoreApplication>
#include <QProcess>

#include <algorithm>
#include <utility>

namespace {

/** A song, also where others leave the lowest priority next to nothing. */
constexpr int kLongestMs = 30000;
/** A program that never answers is no use; a row of broken songs is shorter. */
constexpr int kMostLosses = 20;
/** Each time the whole list is shown anew: a long one less often. */
constexpr int kBetweenMs = 200;
constexpr size_t kSongsPerMs = 20;

} // namespace

TTagReader::TTagReader(QObject* parent, std::function<int32()> firstSeen, TTaker taker, QString program)
    : QObject(parent), fFirstSeen(std::move(firstSeen)), fTaker(std::move(taker)), fProgramPath(std::move(program)) {
  fLimit.setSingleShot(true);
  fTeller.setSingleShot(true);
  connect(&fLimit, &QTimer::timeout, this, &TTagReader::PassOver);
  connect(&fTeller, &QTimer::timeout, this, &TTagReader::Tell);
}

TTagReader::~TTagReader() {
  if (fProgram == nullptr) return;
  QProcess* const program = LetGo();
  program->kill();
  program->waitForFinished(kBetweenMs);
}

void TTagReader::Show(const std::shared_ptr<const TSongs>& songs) {
  fAsker.Show(songs);
  fBetweenMs = std::max(kBetweenMs, static_cast<int>(songs->size() / kSongsPerMs));
  AskNext();
}

void TTagReader::AskNext() {
  if (fAsker.IsWaiting() || fLosses == kMostLosses) return;
  const std::string question = fAsker.Ask(fFirstSeen());
  if (!question.empty()) {
    if (fProgram == nullptr) StartProgram();
    fProgram->write(question.data(), static_cast<qint64>(question.size()));
    fLimit.start(kLongestMs);
  } else if (fProgram) {
    LetGo()->closeWriteChannel(); // it ends by itself
  }
}

void TTagReader::StartProgram() {
  fProgram = new QProcess(this);
  fProgram->setProcessChannelMode(QProcess::ForwardedErrorChannel);
  connect(fProgram, &QProcess::readyReadStandardOutput, this, &TTagReader::Hear);
  connect(fProgram, &QProcess::finished, this, &TTagReader::PassOver);
  connect(
      fProgram, &QProcess::errorOccurred, this,
      [this, program = fProgram](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart && program == fProgram) PassOver();
      },
      Qt::QueuedConnection);
  fProgram->start(fProgramPath, {QStringLiteral("--tags")});
}

void TTagReader::Hear() {
  if (!fAsker.Take(fProgram->readAllStandardOutput().toStdString())) return PassOver();
  if (fAsker.IsWaiting()) return;
  fLosses = 0;
  fLimit.stop();
  if (!fTeller.isActive()) fTeller.start(fBetweenMs);
  AskNext();
}

void TTagReader::PassOver() {
  if (fProgram == nullptr) return;
  LetGo()->kill();
  fLimit.stop();
  fAsker.GiveUp();
  ++fLosses;
  AskNext();
}

/** From now on it is not heard of; it goes when it has ended. */
QProcess* TTagReader::LetGo() {
  QProcess* const program = std::exchange(fProgram, nullptr);
  program->disconnect(this);
  connect(program, &QProcess::finished, program, &QObject::deleteLater);
  if (program->state() == QProcess::NotRunning) program->deleteLater();
  return program;
}

void TTagReader::Tell() {
  const std::vector<TReadTags> found = fAsker.TakeFound();
  if (!found.empty()) fTaker(found);
}

QString tag_program() {
  return QCoreApplication::applicationDirPath() + "/sonivo-peaks";
}
