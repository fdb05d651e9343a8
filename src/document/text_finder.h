#pragma once

#include "lyrics/find_text.h"

#include <string>

class BMessage;
class TDocument;
class TEditSession;

/** Finds and replaces text in the open document, whichever edit view shows it. Belongs to the editor view, on its
    window's thread. */
class TTextFinder {
public:
  /** Neither is owned. */
  TTextFinder(TEditSession* session, const TDocument* document) : fSession(session), fDocument(document) {}

  /** False for a message that is neither kMsgFind nor kMsgReplace. */
  bool Handle(const BMessage& message);

private:
  /** Shows the next match, and reports it in the status bar. */
  void Find(const BMessage& message);
  /** Replaces the match that is shown and goes to the next one, or all of them in one step. */
  void Replace(const BMessage& message);
  void ShowNext(const TFindOptions& options, bool backward);
  /** No effect when no match is shown, or its line has changed since. */
  void ReplaceShown(const TFindOptions& options, const std::string& by);
  void ReplaceAll(const TFindOptions& options, const std::string& by);
  /** Where the next search begins. */
  TFindPlace Place(bool backward) const;

  TEditSession* const fSession;
  const TDocument* const fDocument;
  int32 fDocumentNumber = -1; // fDocumentNumber to fShown: the match that was shown last
  TMatchInLine fShown;
};
