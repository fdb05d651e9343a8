#include "platform/storage/entry_ref.h"

#include <filesystem>

std::string entry_ref::FullPath() const {
  if (IsEmpty()) return {};
  return directory == "/" ? "/" + name : directory + "/" + name;
}

status_t get_ref_for_path(const char* path, entry_ref* ref) {
  if (path == nullptr || *path == '\0') return B_BAD_VALUE;
  std::error_code error;
  std::filesystem::path absolute = std::filesystem::absolute(path, error).lexically_normal();
  if (error) return B_BAD_VALUE;
  if (!absolute.has_filename() && absolute.has_relative_path()) absolute = absolute.parent_path(); // "folder/"
  ref->directory = absolute.parent_path().string();
  ref->name = absolute.has_relative_path() ? absolute.filename().string() : ".";
  return B_OK;
}
