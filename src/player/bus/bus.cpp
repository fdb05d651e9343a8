#include "player/bus/bus.h"

#include "platform/kernel/threads.h"
#include "player/bus/actions.h"
#include "player/bus/bus_link.h"

#include <QEventLoop>

TBus::TBus(const BMessenger& player, std::function<int32()> ownPositionMs)
    : fPlayer(player), fOwnPositionMs(std::move(ownPositionMs)), fOtherPosition(std::make_shared<TSharedPosition>()) {}

TBus::~TBus() {
  End();
}

void TBus::End() {
  if (!fThread.joinable()) return;
  fOtherPosition->OnNeed({});
  fActions->Do([this] { fLoop->quit(); });
  fThread.join();
  fActions = nullptr;
}

void TBus::Start() {
  if (fThread.joinable()) return;
  std::promise<TActions*> started;
  fThread = std::thread(&TBus::Run, this, &started);
  fActions = started.get_future().get();
  fOtherPosition->OnNeed([this] {
    Do([](TBusLink& link) {
      if (link.Other()) link.Other()->AskSoon();
    });
  });
  Do([status = fStatus](TBusLink& link) {
    link.Show(status);
    link.Connect();
  });
}

void TBus::Run(std::promise<TActions*>* started) {
  TActions actions;
  QEventLoop loop;
  fLoop = &loop;
  fLink = std::make_unique<TBusLink>(fPlayer, fOwnPositionMs, fOtherPosition.get());
  started->set_value(&actions);
  loop.exec();
  fLink.reset();
}

void TBus::Do(const std::function<void(TBusLink&)>& action) {
  if (fActions) fActions->Do([this, action] { action(*fLink); });
}

void TBus::Show(const TOwnStatus& status) {
  fOwnerThread.Check();
  if (status == fStatus) return;
  fStatus = status;
  Do([status](TBusLink& link) { link.Show(status); });
}

void TBus::SignalSeeked(int32 positionMs) {
  Do([=](TBusLink& link) { link.SignalSeeked(positionMs); });
}

void TBus::ShowInFolder(const std::string& path) {
  fOwnerThread.Check();
  if (fActions == nullptr) return report_no_file_manager(fPlayer, path);
  Do([path](TBusLink& link) { link.ShowInFolder(path); });
}

void TBus::Choose(const std::string& id) {
  fOwnerThread.Check();
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

/** The new position is assumed at once, so that the next time tag does not get the old one. */
void TBus::SeekTo(int32 positionMs) {
  fOwnerThread.Check();
  const int64 positionUs = int64{positionMs} * 1000;
  int64 byUs = 0;
  fOtherPosition->Change([&](TPositionEstimate& estimate) {
    const bigtime_t nowUs = system_time();
    byUs = positionUs - estimate.PositionUs(nowUs);
    estimate.Begin(nowUs, positionUs);
  });
  Do([=](TBusLink& link) {
    if (link.Other()) link.Other()->SeekTo(positionUs, byUs);
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
