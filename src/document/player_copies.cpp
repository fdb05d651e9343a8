#include "document/player_copies.h"

#include "platform/app/message.h"
#include "plugin/kept_record.h"

#include <algorithm>

namespace {

constexpr const char* kFolder = "VesmoE";
constexpr const char* kName = "VesmoE_Copies.arc";
/** The oldest are forgotten, and then treated like files of another origin. */
constexpr size_t kMostCopies = 2000;

} // namespace

bool TPlayerCopies::Archive(BMessage* archive) {
  return std::all_of(fCopies.begin(), fCopies.end(), [archive](const TCopy& copy) {
    return archive->AddString("Path", copy.path) == B_OK && archive->AddString("Lyrics", copy.lyrics) == B_OK &&
           archive->AddInt64("Size", copy.size) == B_OK &&
           archive->AddInt64("Digest", static_cast<int64>(copy.digest)) == B_OK;
  });
}

bool TPlayerCopies::Unarchive(const BMessage& archive) {
  fCopies.clear();
  for (int32 i = 0; i < static_cast<int32>(kMostCopies); ++i) {
    TCopy copy;
    int64 digest = 0;
    const status_t status = Find(archive, "Path", &copy.path, i);
    if (status != B_OK) return status == B_NAME_NOT_FOUND || status == B_BAD_INDEX;
    const bool isWhole = Find(archive, "Lyrics", &copy.lyrics, i) == B_OK &&
                         Find(archive, "Size", &copy.size, i) == B_OK && Find(archive, "Digest", &digest, i) == B_OK;
    if (!isWhole) return false;
    copy.digest = static_cast<uint64>(digest);
    fCopies.push_back(copy);
  }
  return true;
}

TPlayerCopies TPlayerCopies::Stored() {
  TPlayerCopies copies;
  load_record(&copies, kFolder, kName);
  return copies;
}

bool TPlayerCopies::Store() {
  return save_record(this, kFolder, kName);
}

std::optional<TPlayerCopies::TCopy> TPlayerCopies::Of(const std::string& lyrics) const {
  const auto found = std::find_if(fCopies.rbegin(), fCopies.rend(),
                                  [&lyrics](const TCopy& copy) { return !lyrics.empty() && copy.lyrics == lyrics; });
  return found == fCopies.rend() ? std::nullopt : std::optional(*found);
}

bool TPlayerCopies::IsCopy(const std::string& path, const TFileState& file) const {
  return std::any_of(fCopies.begin(), fCopies.end(), [&](const TCopy& copy) {
    return copy.path == path && copy.size == file.size && copy.digest == file.digest;
  });
}

void TPlayerCopies::Add(const TCopy& copy) {
  Remove(copy.path);
  fCopies.push_back(copy);
  if (fCopies.size() > kMostCopies) fCopies.erase(fCopies.begin());
}

void TPlayerCopies::Remove(const std::string& path) {
  std::erase_if(fCopies, [&path](const TCopy& copy) { return copy.path == path; });
}
