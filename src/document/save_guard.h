#pragma once

#include "lyrics/document.h"

#include <string>

class TFileWatch;

/** Before a save: asks, in one question, when it would overwrite or lose something, and backs up what it replaces or
   cannot write. Owned by the document's view, on its window's thread; blocks while a question is shown. */
class TSaveGuard {
public:
  TSaveGuard(const TDocument* document, TFileWatch* watch) : fDocument(document), fWatch(watch) {}

  /** True when the save may go on; then the encoding may have become UTF-8, as the user wanted. False when the user
      has cancelled, or after a message. */
  [[nodiscard]] bool Allow(TLyricsInfo* info, TDialect dialect);
  /** Of the last save, what was backed up and where, for the status bar. Empty when nothing was. */
  const std::string& Report() const { return fReport; }

private:
  [[nodiscard]] bool Ask(TLyricsInfo* info, const TSavePlan& plan) const;
  [[nodiscard]] bool KeepReplaced(const std::string& path);
  void KeepWhole(const TSavePlan& plan);

  const TDocument* const fDocument;
  TFileWatch* const fWatch;
  std::string fReport;
};
