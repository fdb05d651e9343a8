#include "songtags/helper/write_song.h"

#include "common/file_replacement.h"
#include "common/stale_files.h"
#include "common/unique_file.h"
#include "confined/regular_file.h"
#include "songtags/helper/song_in_sandbox.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace {

constexpr off_t kMostSongBytes = off_t{4} << 30;

TSongStatus status_of_error(int error) {
  switch (error) {
  case ENOENT:
  case ENOTDIR:
    return TSongStatus::kNotFound;
  case EACCES:
  case EPERM:
  case EROFS:
    return TSongStatus::kNoPermission;
  default:
    return TSongStatus::kFailed;
  }
}

TSongStatus status_of_write(status_t status) {
  if (status == B_DEVICE_FULL) return TSongStatus::kDiskFull;
  if (status == B_PERMISSION_DENIED) return TSongStatus::kNoPermission;
  return TSongStatus::kFailed;
}

std::string state_of(const struct stat& file) {
  std::string state;
  for (const int64 number : {static_cast<int64>(file.st_dev), static_cast<int64>(file.st_ino), int64{file.st_size},
                             int64{file.st_mtim.tv_sec}, int64{file.st_mtim.tv_nsec}})
    state += std::to_string(number) + '.';
  return state;
}

/** Empty, with the reason, if it cannot be used. */
UniqueFd open_song(const std::string& path, struct stat* state, TSongStatus* status) {
  errno = 0;
  UniqueFd file = open_regular_file(path);
  *status = file && fstat(file.Get(), state) == 0 ? TSongStatus::kDone : status_of_error(errno);
  if (!file && errno == 0) *status = TSongStatus::kNotSupported; // no regular file
  if (file && state->st_size > kMostSongBytes) *status = TSongStatus::kTooLarge;
  return *status == TSongStatus::kDone ? std::move(file) : UniqueFd();
}

/** Without reading where the file system can share the content. */
status_t copy_content(int from, int to) {
  if (lseek(from, 0, SEEK_SET) != 0) return B_IO_ERROR;
  constexpr size_t kPiece = size_t{1} << 30;
  ssize_t count = 0;
  while ((count = copy_file_range(from, nullptr, to, nullptr, kPiece, 0)) > 0) {
  }
  if (count == 0) return B_OK;
  std::string piece(size_t{1} << 20, '\0'); // goes on where the other stopped
  while ((count = read(from, piece.data(), piece.size())) > 0) {
    const status_t status = write_all(to, std::string_view(piece).substr(0, static_cast<size_t>(count)));
    if (status != B_OK) return status;
  }
  return count == 0 ? B_OK : B_IO_ERROR;
}

/** Changes the copy and checks the result against the original. */
TSongStatus edit_copy(int song, int copy, const std::string& text) {
  const auto before = read_in_sandbox(song);
  if (!before) return TSongStatus::kDamaged;
  if (before->lyrics.format == TSongFormat::kNone) return TSongStatus::kNotSupported;
  if (!write_in_sandbox(copy, text)) return TSongStatus::kDamaged;
  const auto after = read_in_sandbox(copy);
  if (!after || after->lyrics.found != lyrics_to_write(before->lyrics.format, text)) return TSongStatus::kDamaged;
  return after->otherTags == before->otherTags ? TSongStatus::kDone : TSongStatus::kOtherTags;
}

bool is_in_state(const std::string& path, const std::string& state) {
  struct stat now {};
  return lstat(path.c_str(), &now) == 0 && S_ISREG(now.st_mode) && state_of(now) == state;
}

TSongStatus replace_song(const TFileTarget& target, const UniqueFd& song, const std::string& state,
                         const std::string& text) {
  TSongStatus edited = TSongStatus::kFailed;
  const auto fill = [&](int copy) {
    const status_t copied = copy_content(song.Get(), copy);
    if (copied == B_OK) edited = edit_copy(song.Get(), copy, text);
    return copied == B_OK && edited != TSongStatus::kDone ? B_ERROR : copied;
  };
  TFileReplacement replacement;
  const status_t written = replacement.WriteBy(target, fill, true);
  if (written != B_OK)
    return edited == TSongStatus::kDone || edited == TSongStatus::kFailed ? status_of_write(written) : edited;
  if (!is_in_state(target.path, state)) return TSongStatus::kChanged;
  const status_t renamed = replacement.Commit();
  if (renamed == B_OK) flush_folder_of(target.path);
  return renamed == B_OK ? TSongStatus::kDone : status_of_write(renamed);
}

} // namespace

TSongStatus read_song(const std::string& path, TLyricsInSong* lyrics) {
  struct stat state {};
  TSongStatus status{};
  const UniqueFd song = open_song(path, &state, &status);
  if (!song) return status;
  const auto seen = read_lyrics_in_sandbox(song.Get());
  if (!seen) return TSongStatus::kDamaged;
  *lyrics = *seen;
  lyrics->state = state_of(state);
  return lyrics->format == TSongFormat::kNone ? TSongStatus::kNotSupported : TSongStatus::kDone;
}

TSongStatus write_song(const std::string& path, const std::string& state, const std::string& text) {
  struct stat link {};
  if (lstat(path.c_str(), &link) != 0) return status_of_error(errno);
  if (S_ISLNK(link.st_mode) || link.st_nlink > 1) return TSongStatus::kIsLink;
  TFileTarget target;
  if (const status_t found = find_file_target(path, &target); found != B_OK) return status_of_write(found);
  struct stat opened {};
  TSongStatus status{};
  const UniqueFd song = open_song(path, &opened, &status);
  if (!song) return status;
  if (state_of(opened) != state || !target.old || state_of(*target.old) != state) return TSongStatus::kChanged;
  TStaleFiles(folder_of(target.path)).RemoveThoseOf(target.path);
  return replace_song(target, song, state, text);
}
