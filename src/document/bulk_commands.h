#pragma once

class BMessage;
class TDocument;
class TEditSession;

/** The commands that change the time tags of every line, or of some lines, in one step: shift, convert, delete. Asks
    before tags are lost. Owned by the document's view, on its window's thread. */
class TBulkCommands {
public:
  /** Neither is owned. */
  TBulkCommands(const TDocument* document, TEditSession* session) : fDocument(document), fSession(session) {}

  /** False for a message that is none of these commands. */
  bool Handle(const BMessage& message);

private:
  void FineTimeTagRqtd(const BMessage& message);
  void MItemCvtTag(const BMessage& message);
  void MItemDelAllTimeTagClicked();

  const TDocument* const fDocument;
  TEditSession* const fSession;
};
