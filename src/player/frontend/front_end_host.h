#pragma once

#include "platform/app/looper.h"
#include "player/model/steady_play.h"

#include <string>

class TNowPlaying;

/** Answers requests for the information record on a dedicated thread, so that the position in the answer is current, or
    that of the earlier moment that was asked for. */
class TFrontEndHost : public BLooper {
public:
  explicit TFrontEndHost(const TNowPlaying* nowPlaying);
  ~TFrontEndHost() override;
  void MessageReceived(BMessage* message) override;
  /** Answers kMsgHostHandshake: a front end learns how to reach this looper. Any thread. */
  void AnswerHandshake(const BMessage& handshake) const;
  /** Addresses this looper from any process; a messenger is valid in its own process only. */
  const std::string& Signature() const { return fSignature; }

private:
  void AnswerInformation(const BMessage& request);

  const TNowPlaying* fNowPlaying;
  const std::string fSignature;
  TSteadyPlay fPlay; // on this looper's thread
};
