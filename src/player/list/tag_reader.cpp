#include "player/list/tag_reader.h"

#include "player/model/display_thread_check.h"

#include <QCoreApplication>
#include <QProcess>

#include <algorithm>
#include <utility>

namespace {

/** Time limit per song; generous, because the helper runs at the lowest CPU priority. */
constexpr int kLongestMs = 30000;
/** Gives up after this many failures in a row: then the helper is broken, not the songs. */
constexpr int kMostFailures = 20;
/** Results are batched, since each batch refreshes the whole list; longer lists get longer intervals. */
constexpr int kBatchIntervalMs = 200;
constexpr size_t kSongsPerMs = 20;

} // namespace

TTagReader::TTagReader(QObject* parent, std::function<int32()> firstSeen, TTaker taker, QString program)
    : QObject(parent), fFirstSeen(std::move(firstSeen)), fTaker(std::move(taker)), fProgramPath(std::move(program)) {
  fTimeout.setSingleShot(true);
  fBatchTimer.setSingleShot(true);
  connect(&fTimeout, &QTimer::timeout, this, &TTagReader::PassOver);
  connect(&fBatchTimer, &QTimer::timeout, this, &TTagReader::DeliverBatch);
}

TTagReader::~TTagReader() {
  if (fProgram == nullptr) return;
  QProcess* const program = Release();
  program->kill();
  program->waitForFinished(kBatchIntervalMs);
}

void TTagReader::Show(const std::shared_ptr<const TSongs>& songs) {
  check_display_thread();
  fAsker.Show(songs);
  fBatchIntervalMs = std::max(kBatchIntervalMs, static_cast<int>(songs->size() / kSongsPerMs));
  AskNext();
}

void TTagReader::AskNext() {
  if (fAsker.IsWaiting() || fFailures == kMostFailures) return;
  const std::string question = fAsker.Ask(fFirstSeen());
  if (!question.empty()) {
    if (fProgram == nullptr) StartProgram();
    fProgram->write(question.data(), static_cast<qint64>(question.size()));
    fTimeout.start(kLongestMs);
  } else if (fProgram) {
    Release()->closeWriteChannel(); // makes it exit
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
  fFailures = 0;
  fTimeout.stop();
  if (!fBatchTimer.isActive()) fBatchTimer.start(fBatchIntervalMs);
  AskNext();
}

void TTagReader::PassOver() {
  if (fProgram == nullptr) return;
  Release()->kill();
  fTimeout.stop();
  fAsker.GiveUp();
  ++fFailures;
  AskNext();
}

/** Ignores the process from now on; it deletes itself after its end. */
QProcess* TTagReader::Release() {
  QProcess* const program = std::exchange(fProgram, nullptr);
  program->disconnect(this);
  connect(program, &QProcess::finished, program, &QObject::deleteLater);
  if (program->state() == QProcess::NotRunning) program->deleteLater();
  return program;
}

void TTagReader::DeliverBatch() {
  const std::vector<TReadTags> found = fAsker.TakeFound();
  if (!found.empty()) fTaker(found);
}

QString tag_program() {
  return QCoreApplication::applicationDirPath() + "/sonivo-peaks";
}
