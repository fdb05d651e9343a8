#pragma once

#include "lyrics/proposal.h"

#include <vector>

class BMessage;
class BView;
class Sonivo_FrontEnd;
class TDocument;
class TEditSession;
class TProposalWin;
class TSongSoundSource;
struct TProposalRow;

/** Proposes times for the tags of the document from the onsets in the song's sound, by the user's command only. Waits
    for the sound without blocking, shows the differences in a window, and makes those that the user accepts one step.
    Owned by the document's view, on its window's thread; its own window is created at first use, and quit by the
    destructor. */
class TProposer {
public:
  struct TParts {
    Sonivo_FrontEnd* frontEnd;
    const TDocument* document;
    TEditSession* session;
    TSongSoundSource* sound;
  };
  /** `owner` is attached, and passes its messages on. Nothing is owned. */
  TProposer(const BView* owner, const TParts& parts) : fOwner(owner), fParts(parts) {}
  TProposer(const TProposer&) = delete;
  TProposer& operator=(const TProposer&) = delete;
  ~TProposer();

  /** False for a message that is not about proposals. */
  bool Handle(const BMessage& message);
  /** `isSoundUsed`: somebody else has it read anyway. */
  void Poll(bool isSoundUsed);

private:
  void Start();
  void Offer(const std::vector<TProposedTag>& proposed);
  TProposalRow RowOf(const TProposedTag& tag) const;
  void Accept(const BMessage& answer);
  void Hear(const BMessage& answer);

  const BView* const fOwner;
  const TParts fParts;
  TProposalWin* fWindow = nullptr;
  bool fIsWaiting = false; // for the sound
};
