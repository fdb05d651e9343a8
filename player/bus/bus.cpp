#include "player/bus/bus.h"

#include "player/bus/bus_link.h"

#include <QThread>

TBus::TBus(const BMessenger& player, std::function<int32()> ownPositionMs)
    : fPlayer(player), fOwnPositionMs(std::move(ownPositionMs)), fOtherPosition(std::make_shared<TSharedPosition>()) {}

TBus::~TBus() {
  End();
}

void TBus::End() {
  if (!fThread) return;
  fOtherPosition->OnNeed({});
  fThread->quit();
  fThread->wait();
  fThread.reset();
}

void TBus::Start() {
  if (fThread) return;
  fThread = std::make_unique<QThread>();
  fThread->setObjectName("bus");
  fLink = new TBusLink(fPlayer, fOwnPositionMs, fOtherPosition.get());
  fLink->moveToThread(fThread.get());
  // Deleted where it lives, however the thread's loop ends.
  QObject::connect(fThread.get(), &QThread::finished, fLink, &QObject::deleteLater);
  fOtherPosition->OnNeed([this] {
    Do([](TBusLink& link) {
      if (link.Other()) link.Other()->AskSoon();
    });
  });
  fThread->start();
  Do([status = fStatus](TBusLink& link) {
    link.Show(status);
    link.Connect();
  });
}

void TBus::Do(const std::function<void(TBusLink&)>& action) {
  if (!fThread) return;
  QMetaObject::invokeMethod(
      fLink, [link = fLink, action] { action(*link); }, Qt::QueuedConnection);
}

void TBus::Show(const TOwnStatus& status) {
  if (status == fStatus) return;
  fStatus = status;
  Do([status](TBusLink& link) { link.Show(status); });
}

void TBus::TellSeeked(int32 positionMs) {
  Do([=](TBusLink& link) { link.TellSeeked(positionMs); });
}

void TBus::Choose(const std::string& id) {
  Do([id](TBusLink& link) { link.Choose(id); });
}

void TBus::Skip(int direction) {
  Do([=](TBusLink& link) {
    if (link.Other()) link.Other()->Skip(direction);
  });
}

void TBus::SetPaused(bool paused) {
  Do([=](TBusLink& link) {
    if (link.Other()) link.Other()->SetPaused(paused);
  });
}

void TBus::SeekTo(int32 positionMs) {
  Do([=](TBusLink& link) {
    if (link.Other()) link.Other()->SeekTo(int64{positionMs} * 1000);
  });
}

void TBus::SetSpeed(double speed) {
  Do([=](TBusLink& link) {
    if (link.Other()) link.Other()->SetRate(speed);
  });
}

void TBus::SetVolume(double percent) {
  Do([=](TBusLink& link) {
    if (link.Other()) link.Other()->SetVolume(percent / 100);
  });
}
