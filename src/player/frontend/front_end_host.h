#pragma once

#include "platform/app/looper.h"

#include <string>

class TNowPlaying;

/** Answers the front ends' questions for the information record, on a thread that does nothing else, so that the
    position in the answer is that of the moment of the question. */
class TFrontEndHost : public BLooper {
public:
  explicit TFrontEndHost(const TNowPlaying* nowPlaying);
  ~TFrontEndHost() override;
  void MessageReceived(BMessage* message) override;
  /** A signature that reaches this looper from every process, where a messenger is good in its own process only. */
  const std::string& Signature() const { return fSignature; }

private:
  const TNowPlaying* fNowPlaying;
  const std::string fSignature;
};
