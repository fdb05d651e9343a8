#pragma once

#include "common/archivable.h"

/** When the lyrics of the playing song open by themselves. The numbers are stored. */
enum class TSongOpening : int32 {
  kNever = 0,
  kIntoNewDocument = 1, // while the document is new and untouched
  kWithEverySong = 2    // while nothing is unsaved
};
inline constexpr int32 kSongOpenings = 3;

/** The editor's setting for opening lyrics, in a file of its own. To be used on one thread. */
class TOpeningPref : public koreva::TArchivable {
public:
  /** Reads the stored value; the default without one. */
  void LoadStored();
  bool Store();
  TSongOpening Opening() const { return fOpening; }
  void SetOpening(TSongOpening opening) { fOpening = opening; }

  bool Archive(BMessage* archive) override;
  /** An unknown number keeps the current value. */
  bool Unarchive(const BMessage& archive) override;

private:
  TSongOpening fOpening = TSongOpening::kIntoNewDocument; // "OpSg"
};
