#include "platform/storage/directory.h"

#include "platform/storage/status_of.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>

BDirectory::BDirectory(const char* path) {
  SetTo(path);
}

status_t BDirectory::SetTo(const char* path) {
  fPath = path ? path : "";
  return fStatus = Rewind();
}

status_t BDirectory::Rewind() {
  fNames.clear();
  fNext = 0;
  DIR* const folder = opendir(fPath.c_str());
  if (folder == nullptr) return status_of_errno(errno);
  while (const dirent* entry = readdir(folder)) {
    const std::string name = entry->d_name;
    if (name != "." && name != "..") fNames.push_back(name);
  }
  closedir(folder);
  std::sort(fNames.begin(), fNames.end());
  return B_OK;
}

status_t BDirectory::GetNextEntry(BEntry* entry, bool traverse) {
  if (fStatus != B_OK) return fStatus;
  if (fNext >= fNames.size()) return B_ENTRY_NOT_FOUND;
  return entry->SetTo(this, fNames[fNext++].c_str(), traverse);
}

status_t create_directory(const char* path, uint32 mode) {
  if (path == nullptr || *path == '\0') return B_BAD_VALUE;
  const std::string whole = path;
  for (size_t slash = whole.find('/', 1);; slash = whole.find('/', slash + 1)) {
    const std::string part = whole.substr(0, slash);
    if (mkdir(part.c_str(), mode) != 0 && errno != EEXIST) return status_of_errno(errno);
    if (slash == std::string::npos) break;
  }
  struct stat info {};
  if (stat(path, &info) != 0) return status_of_errno(errno);
  return S_ISDIR(info.st_mode) ? B_OK : B_NOT_A_DIRECTORY;
}
