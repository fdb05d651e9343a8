#pragma once

#include "lyrics/document.h"

#include <optional>
#include <string>

/** Writes a document to its file, compares the file with what was written, and reports what went wrong or was lost.
    Owned by the editor view, on its window's thread; blocks while a message is shown. */
class TLyricsSaver {
public:
  explicit TLyricsSaver(TDocument* document) : fDocument(document) {}

  /** A file that was not read whole is backed up before it is replaced. */
  void Write(TSavePlan plan);
  /** After Write: whether the file has the bytes. Then the document counts as saved and losses are reported; else the
      bytes are kept in a recovery file and the user learns where. */
  bool Verify();

private:
  void ReportLosses(const TSavePlan& plan) const;
  void ReportFailure(const TSavePlan& plan) const;

  TDocument* const fDocument;
  std::optional<TSavePlan> fPlan; // between Write and Verify
  std::string fBackup;            // path of the backup that Write made
};
