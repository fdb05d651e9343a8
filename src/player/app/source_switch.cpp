#include "player/app/source_switch.h"
#include "player/texts/player_texts.h"

#include "platform/app/message.h"
#include "player/app/own_transport.h"
#include "player/app/player_events.h"
#include "player/bus/bus.h"
#include "player/model/bus_messages.h"
#include "player/model/player_messages.h"
#include "player/sound/now_playing.h"

#include <algorithm>
#include <utility>

TSourceSwitch::TSourceSwitch(TOwnTransport* own, TBus* bus, TNowPlaying* nowPlaying, TPlayerEvents* events,
                             std::string wanted)
    : fOwn(own), fBus(bus), fNowPlaying(nowPlaying), fEvents(events), fWanted(std::move(wanted)) {}

TTransport& TSourceSwitch::Transport() {
  if (fOther) return *fOther;
  return *fOwn;
}

bool TSourceSwitch::Handle(const BMessage& message) {
  fThread.Check();
  std::string id;
  switch (message.what) {
  case kMsgBusPlayers:
    TakePlayers(message);
    return true;
  case kMsgBusOtherIs:
    if (fOther && message.FindString("id", &id) == B_OK && id == fOther->Id()) fOther->TakeReport(message);
    return true;
  case kMsgPartBeat:
    if (fOther) fOther->Beat();
    return true;
  case kMsgChooseSource:
    fEvents->UserChose();
    if (message.FindString("id", &id) == B_OK) Choose(id);
    return true;
  default:
    return false;
  }
}

const TSourceName* TSourceSwitch::Find(const std::string& id) const {
  const auto found = std::ranges::find(fPlayers, id, &TSourceName::id);
  return found == fPlayers.end() ? nullptr : &*found;
}

void TSourceSwitch::Choose(const std::string& id) {
  fWanted.clear();
  if (id.empty()) return UseOwn();
  if (fOther && fOther->Id() == id) return;
  const TSourceName* const player = Find(id);
  if (player == nullptr) return fEvents->ErrorOccurred(player_text("Player_Err_No_Player", {id}));
  fOwn->Pause();
  fOther.emplace(fBus, fEvents, *player);
  fBus->Choose(id);
  fNowPlaying->SetSound(fBus);
  fEvents->StateChanged();
}

void TSourceSwitch::UseOwn() {
  if (!fOther) return;
  fOther.reset();
  fBus->Choose({});
  fNowPlaying->SetSound(fOwn->Sound());
  fEvents->StateChanged();
  fEvents->PositionJumped(fOwn->PositionMs());
}

void TSourceSwitch::TakePlayers(const BMessage& message) {
  fIsBusReachable = message.GetBool("reachable", fIsBusReachable);
  fPlayers.clear();
  TSourceName player;
  for (int32 i = 0; message.FindString("id", i, &player.id) == B_OK; ++i) {
    if (message.FindString("name", i, &player.name) == B_OK) fPlayers.push_back(player);
    if (fOther && fOther->Id() == player.id) fOther->SetName(player.name); // its identity arrives later than its id
  }
  CheckChosenIsThere();
  if (!fWanted.empty() && Find(fWanted)) {
    fEvents->UserChose();
    return Choose(std::string(fWanted));
  }
  if (!fWanted.empty()) {
    fEvents->ErrorOccurred(fIsBusReachable ? player_text("Player_Err_Waiting", {fWanted})
                                           : player_text("Player_Err_No_Bus"));
  }
  fEvents->StateChanged();
}

void TSourceSwitch::CheckChosenIsThere() {
  if (!fOther || Find(fOther->Id())) return;
  const std::string lost =
      player_text(fIsBusReachable ? "Player_Err_Player_Closed" : "Player_Err_Bus_Lost", {fOther->Name()});
  UseOwn();
  fEvents->ErrorOccurred(lost);
}

void TSourceSwitch::AddTo(TPlayerState* state) const {
  static_cast<TPlayback&>(*state) = fOther ? fOther->Playback() : fOwn->Playback();
  state->sources = fPlayers;
  state->isBusReachable = fIsBusReachable;
  if (!fOther) return;
  state->source = fOther->Id();
  state->otherSong = std::make_shared<const TSong>(fOther->Song());
}
