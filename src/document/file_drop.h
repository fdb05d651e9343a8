#pragma once

#include <string>
#include <vector>

class BMessage;
class BView;
class Sonivo_FrontEnd;
class TEditSession;

/** Files dropped on the document: lyrics are opened, songs and folders are passed to the player. Owned by the
    document's view, on its window's thread. */
class TFileDrop {
public:
  /** `owner` is attached, and passes B_SIMPLE_DATA on. Nothing is owned. */
  TFileDrop(const BView* owner, Sonivo_FrontEnd* frontEnd, TEditSession* session)
      : fOwner(owner), fFrontEnd(frontEnd), fSession(session) {}

  /** False for a message that is no drop of files from another application. */
  bool SimpleData(const BMessage& message);

private:
  void FilesDropped(const BMessage& message);
  void PlayDropped(const std::vector<std::string>& songs);

  const BView* const fOwner;
  Sonivo_FrontEnd* const fFrontEnd;
  TEditSession* const fSession;
};
