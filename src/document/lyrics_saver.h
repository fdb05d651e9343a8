#pragma once

#include "lyrics/document.h"

#include <optional>
#include <string>

/** Writes a document to its file, compares the file with what was written, and reports a failure. Owned by the editor
    view, on its window's thread; blocks while a message is shown. */
class TLyricsSaver {
public:
  explicit TLyricsSaver(TDocument* document) : fDocument(document) {}

  void Write(TSavePlan plan);
  /** After Write: whether the file has the bytes. Then the document counts as saved; else the text is kept in a
      recovery file and the user learns where. */
  bool Verify();

private:
  TDocument* const fDocument;
  std::optional<TSavePlan> fPlan; // between Write and Verify
};

/** Keeps the text of a save that cannot be made in a recovery file, and tells the user where, or that it is still only
    in the editor. The reason may be empty. */
void tell_not_saved(const TDocument& document, const TSavePlan& plan, const std::string& reason);
