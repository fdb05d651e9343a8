#pragma once

#include "common/archivable.h"
#include "lyrics/file_state.h"

#include <optional>
#include <string>
#include <vector>

/** The copies for other players that this program has written, so that a file of another origin is never mistaken for
    one: "VesmoE_Copies.arc" in the settings folder. Not thread-safe. */
class TPlayerCopies : public koreva::TArchivable {
public:
  struct TCopy {
    std::string path;
    std::string lyrics; // the path of the document; empty if it was never saved
    int64 size = 0;
    uint64 digest = 0; // of the bytes that were written
  };

  bool Archive(BMessage* archive) override;
  bool Unarchive(const BMessage& archive) override;

  /** Stored and loaded by these; a file that cannot be read counts as an empty one. */
  static TPlayerCopies Stored();
  bool Store();

  /** The last copy of these lyrics. */
  std::optional<TCopy> Of(const std::string& lyrics) const;
  /** True if the file under that path is a copy that nobody has changed. */
  bool IsCopy(const std::string& path, const TFileState& file) const;
  /** In place of an earlier one with that path. */
  void Add(const TCopy& copy);
  void Remove(const std::string& path);

private:
  std::vector<TCopy> fCopies; // the oldest first
};
