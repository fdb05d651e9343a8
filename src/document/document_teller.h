#pragma once

#include "lyrics/lines_change.h"
#include "platform/app/messenger.h"

#include <memory>
#include <vector>

class BMessageRunner;
class Sonivo_FrontEnd;

/** To the owner, by itself: the whole document is to be told; its lines have been still for a moment. */
enum : uint32 { kMsgTellWhole = 'dtwh', kMsgTellMarks = 'dtmk' };

/** Tells of a document: each change to who follows it, and to the player, a moment later, where its lines are sung.
    Owned by the document's view, on its thread; tells nobody anything while nobody follows and no line has a tag. */
class TDocumentTeller {
public:
  /** `owner` gets the messages above. */
  TDocumentTeller(const BMessenger& owner, const Sonivo_FrontEnd* frontEnd);
  TDocumentTeller(const TDocumentTeller&) = delete;
  TDocumentTeller& operator=(const TDocumentTeller&) = delete;
  /** Tells that the document is gone. */
  ~TDocumentTeller();

  void FollowRqtd(const BMessage& request);
  void LinesChanged(const TLinesChange& change);
  /** Another document, or another name of it. */
  void DocumentChanged();

  /** What the owner does when it is told to. */
  void TellWhole(const std::vector<std::string>& lines, const std::string& title, const std::string& path);
  void TellMarks(const std::vector<std::string>& lines, const std::string& title);

private:
  void Tell(BMessage* notice);
  void MarksChanged();

  const BMessenger fOwner;
  const Sonivo_FrontEnd* const fFrontEnd;
  BMessenger fFollower;
  bool fIsWholeDue = false;
  int32 fNumber = 0;
  std::unique_ptr<BMessageRunner> fMarksLater;
  std::vector<int32> fMarksMs; // as the player knows them, and the next
  std::string fMarksTitle;
};
