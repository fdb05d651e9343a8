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

/** 'SNVm' to the player: a handshake, answered with 'SNVm' and messenger "Msgr"; to another process, with string
    "Signature" instead.
    'SNVi' to either: answered with 'SNVi' and "Info", 124 bytes of type 'CSTR', and bool "Playing". */
enum : uint32 { kMsgHandshake = 'SNVm', kMsgInformation = 'SNVi' };

/** Wishes of a front end, to the player; not answered. */
enum : uint32 {
  kMsgWishSeek = 'SNsk',      // int32 "Time": ms, bounded to the song
  kMsgWishSeekBy = 'SNsr',    // int32 "Time": ms, negative is back; bounded to the song
  kMsgWishPlayPause = 'SNpp', // starts the song where none is loaded
  kMsgWishSpeedBy = 'SNsp',   // int32 "Percent": points of the song's own speed; bounded to 25 to 200 of them
  kMsgWishMarks = 'SNmk',     // string "Title", as the record told it; int32 "TimeMs", any number, ascending: the
                              // moments to mark while that song plays, instead of those told before
};
