#pragma once

#include "lyrics/reaction_time.h"

#include <list>
#include <optional>
#include <string>

class Sonivo_FrontEnd;
class TTagRows;

/** Estimates from the corrections of fresh stamps how late the user presses the key, and reports what the user should
    know about a stamp. Belongs to the tag input view, on its window's thread. */
class TStampHabit {
public:
  /** Neither is owned. */
  TStampHabit(const TTagRows* rows, const Sonivo_FrontEnd* frontEnd) : fRows(rows), fFrontEnd(frontEnd) {}

  /** The row was stamped; the status bar shows `report`, with what is to be added. */
  void Stamped(int32 row, int32 timeMs, const std::string& report);
  /** The user has moved the row's tag to that time. */
  void Moved(int32 row, int32 timeMs);
  /** Lines from `first` on were changed by a step of the history. */
  void Replayed(int32 first, const std::list<std::string>& lines);
  /** The rows are other lines now. */
  void ForgetLines() { fCorrections.ForgetLines(); }
  /** Of the user's stamps; nothing before there were enough corrections. */
  std::optional<int32> LatenessMs() const { return fCorrections.Lateness(); }
  /** A newly found lateness of the user's stamps, to be shown after a report; nearly always empty. */
  std::string NewFinding();

private:
  /** Something that the user should know about a stamp of that time; nearly always empty. */
  std::string RemarkOn(int32 timeMs);

  const TTagRows* const fRows;
  const Sonivo_FrontEnd* const fFrontEnd;
  TStampCorrections fCorrections;
  std::optional<int32> fLastStampMs;
};
