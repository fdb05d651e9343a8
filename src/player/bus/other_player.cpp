#include "player/bus/other_player.h"

#include "platform/kernel/threads.h"
#include "player/bus/mpris_names.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace {

constexpr int kAnswerLimitMs = 1000;
constexpr int kSilentAfter = 3; // consecutive time-outs
/** For players that do not signal changes. */
constexpr bigtime_t kAskAllEveryUs = 5000000;

} // namespace

TOtherPlayer::TOtherPlayer(const QDBusConnection& bus, const QString& id, TSharedPosition* position, TChanged changed)
    : fBus(bus), fService(mpris::kServicePrefix + id), fPosition(position), fChanged(std::move(changed)) {
  fTimer.setSingleShot(true);
  fTimer.setTimerType(Qt::PreciseTimer);
  connect(&fTimer, &QTimer::timeout, this, &TOtherPlayer::AskPosition);
  fBus.connect(fService, mpris::kPath, mpris::kProperties, "PropertiesChanged", this,
               SLOT(PropertiesChanged(QString, QVariantMap, QStringList)));
  fBus.connect(fService, mpris::kPath, mpris::kPlayer, "Seeked", this, SLOT(Seeked(qlonglong)));
  AskAll(TakePosition::yes);
}

void TOtherPlayer::Ask(const QString& method, const QVariantList& arguments, const TAnswered& answered) {
  auto call = QDBusMessage::createMethodCall(fService, mpris::kPath, mpris::kProperties, method);
  call.setArguments(arguments);
  auto* const watcher = new QDBusPendingCallWatcher(fBus.asyncCall(call, kAnswerLimitMs), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [answered](QDBusPendingCallWatcher* finished) {
    finished->deleteLater();
    answered(*finished);
  });
}

void TOtherPlayer::AskAll(TakePosition takePosition) {
  fAskedAllUs = system_time();
  Ask("GetAll", {mpris::kPlayer}, [this, takePosition](QDBusPendingCallWatcher& finished) {
    const QDBusPendingReply<QVariantMap> properties = finished;
    Heard(!properties.isError());
    if (properties.isError()) return;
    if (takePosition == TakePosition::no || !properties.value().contains("Position")) return Take(properties.value());
    TakeQuietly(properties.value());
    // The position before the report: a listener may read it right away, and never again while the song is paused.
    MovedTo(properties.value()["Position"].toLongLong());
  });
}

/** One call at a time: the answer or its time-out schedules the next. */
void TOtherPlayer::AskPosition() {
  if (fIsAsking) return;
  fIsAsking = true;
  const bigtime_t askedUs = system_time();
  Ask("Get", {mpris::kPlayer, QStringLiteral("Position")}, [this, askedUs](QDBusPendingCallWatcher& finished) {
    const bigtime_t answeredUs = system_time();
    fIsAsking = false;
    const QDBusPendingReply<QDBusVariant> position = finished;
    Heard(!position.isError());
    if (!position.isError()) {
      const qlonglong positionUs = position.value().variant().toLongLong();
      fPosition->Change([&](TPositionEstimate& estimate) { estimate.Take({askedUs, answeredUs, positionUs}); });
    }
    Plan();
  });
}

void TOtherPlayer::AskSoon() {
  if (!fIsAsking) fTimer.start(0);
}

void TOtherPlayer::Plan() {
  const bigtime_t nextUs = fPosition->NextQuestionUs();
  if (nextUs < 0) return;
  const bigtime_t nowUs = system_time();
  if (nowUs - fAskedAllUs > kAskAllEveryUs) AskAll(TakePosition::no);
  fTimer.start(static_cast<int>(std::max<bigtime_t>(0, nextUs - nowUs + 500) / 1000));
}

void TOtherPlayer::Heard(bool answered) {
  fUnanswered = answered ? 0 : fUnanswered + 1;
  const bool isSilent = fUnanswered >= kSilentAfter;
  const bool wasSilent = std::exchange(fIsSilent, isSilent);
  if (isSilent == wasSilent) return;
  // The position is unknown: it stays at the last estimate.
  const bool isPlaying = !isSilent && fSong.state == TInfoRecord::kPlaying;
  fPosition->Change([&](TPositionEstimate& estimate) { estimate.SetPlaying(system_time(), isPlaying); });
  fChanged(fSong, isSilent);
  if (!isSilent) AskAll(TakePosition::yes);
}

void TOtherPlayer::PropertiesChanged(const QString& interface, const QVariantMap& changed,
                                     const QStringList& invalidated) {
  if (interface != mpris::kPlayer) return;
  Take(changed);
  if (!invalidated.isEmpty()) AskAll(TakePosition::no);
}

void TOtherPlayer::Seeked(qlonglong positionUs) {
  MovedTo(positionUs);
}

void TOtherPlayer::MovedTo(int64 positionUs) {
  fPosition->Change([&](TPositionEstimate& estimate) { estimate.Begin(system_time(), positionUs); });
  fChanged(fSong, fIsSilent);
  AskSoon();
}

void TOtherPlayer::Take(const QVariantMap& properties) {
  const TOtherSong before = fSong;
  TakeQuietly(properties);
  if (fSong == before) return;
  fChanged(fSong, fIsSilent);
  AskSoon();
}

void TOtherPlayer::TakeQuietly(const QVariantMap& properties) {
  const TOtherSong before = fSong;
  take_properties(&fSong, properties);
  const bigtime_t nowUs = system_time();
  fPosition->Change([&](TPositionEstimate& estimate) {
    if (!fSong.IsSameTrack(before) || fSong.state == TInfoRecord::kStopped) estimate.Begin(nowUs, 0);
    estimate.SetDuration(fSong.durationUs);
    estimate.SetRate(nowUs, fSong.rate);
    estimate.SetPlaying(nowUs, fSong.state == TInfoRecord::kPlaying && !fIsSilent);
  });
}

void TOtherPlayer::Send(const QString& method, const QVariantList& arguments) {
  auto call = QDBusMessage::createMethodCall(fService, mpris::kPath, mpris::kPlayer, method);
  call.setArguments(arguments);
  fBus.send(call);
}

void TOtherPlayer::Set(const QString& property, const QVariant& value) {
  auto call = QDBusMessage::createMethodCall(fService, mpris::kPath, mpris::kProperties, "Set");
  call << mpris::kPlayer << property << QVariant::fromValue(QDBusVariant(value));
  fBus.send(call);
}

void TOtherPlayer::SetPaused(bool paused) {
  if (paused ? fSong.canPause : fSong.canPlay) Send(paused ? "Pause" : "Play");
}

void TOtherPlayer::SeekTo(int64 positionUs, int64 byUs) {
  if (!fSong.canSeek) return;
  const QDBusObjectPath track(QString::fromStdString(fSong.trackId));
  if (!track.path().isEmpty()) return Send("SetPosition", {QVariant::fromValue(track), qlonglong{positionUs}});
  Send("Seek", {qlonglong{byUs}}); // without a track id only relative seeks are possible
}

void TOtherPlayer::SetRate(double rate) {
  Set("Rate", rate);
}

void TOtherPlayer::SetVolume(double volume) {
  Set("Volume", volume);
}

void TOtherPlayer::Skip(int direction) {
  Send(direction > 0 ? "Next" : "Previous");
}
