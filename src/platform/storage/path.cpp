#include "platform/storage/path.h"

#include "platform/storage/entry_ref.h"

BPath::BPath(const char* path, const char* leaf) {
  SetTo(path, leaf);
}

status_t BPath::SetTo(const char* path, const char* leaf) {
  fPath.clear();
  entry_ref ref;
  if (path == nullptr || get_ref_for_path(path, &ref) != B_OK) return B_BAD_VALUE;
  fPath = ref.name == "." && ref.directory == "/" ? "/" : ref.FullPath();
  return leaf ? Append(leaf) : B_OK;
}

status_t BPath::Append(const char* leaf) {
  if (fPath.empty()) return B_NO_INIT;
  if (leaf == nullptr || *leaf == '\0' || *leaf == '/') return B_BAD_VALUE;
  return SetTo((fPath + "/" + leaf).c_str());
}

status_t BPath::GetParent(BPath* parent) const {
  if (fPath.empty() || fPath == "/") return B_ENTRY_NOT_FOUND;
  const size_t slash = fPath.rfind('/');
  const std::string folder = slash == 0 ? "/" : fPath.substr(0, slash);
  return parent->SetTo(folder.c_str());
}

const char* BPath::Leaf() const {
  const size_t slash = fPath.rfind('/');
  return fPath.c_str() + (slash == std::string::npos ? 0 : slash + 1);
}
