#pragma once

#include "platform/app/looper.h"

class TNowPlaying;

/** Answers the front ends' questions for the information record, on a thread that does nothing else, so that the
    position in the answer is that of the moment of the question. */
class TFrontEndHost : public BLooper {
public:
  explicit TFrontEndHost(const TNowPlaying* nowPlaying);
  void MessageReceived(BMessage* message) override;

private:
  const TNowPlaying* fNowPlaying;
};

/** 'SNVm' to the player: a handshake, answered with 'SNVm' and messenger "Msgr".
    'SNVi' to that messenger: answered with 'SNVi' and "Info", 124 bytes of type 'CSTR'. */
enum : uint32 { kMsgHandshake = 'SNVm', kMsgInformation = 'SNVi' };
