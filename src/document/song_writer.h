#pragma once

#include "platform/app/handler.h"

#include <memory>

class Sonivo_FrontEnd;
class TCurrentSongFinder;
class TDocument;
class TEditSession;
class TSongLyricsJob;

/** Writes the document into the song that is playing, by command and after a question that says what changes. Owned by
    the document's view, on its window's thread; handles the answers of its own search for the current song. */
class TSongWriter : public BHandler {
public:
  /** `looper` is the window. Nothing that is passed is owned. */
  TSongWriter(BLooper* looper, Sonivo_FrontEnd* frontEnd, TEditSession* session, const TDocument* document);
  /** `Sonivo_FrontEnd::StopWaiting` must have been called. */
  ~TSongWriter() override;

  void MessageReceived(BMessage* message) override;
  /** Reads the song as soon as the player has named it. */
  void Start();

private:
  void Ask();
  void Report();

  TEditSession* const fSession;
  const TDocument* const fDocument;
  std::unique_ptr<TCurrentSongFinder> fFinder;
  std::unique_ptr<TSongLyricsJob> fJob;
};
