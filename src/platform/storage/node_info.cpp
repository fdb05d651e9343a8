#include "platform/storage/node_info.h"

#include "platform/storage/file.h"
#include "platform/storage/status_of.h"

#include <sys/xattr.h>

#include <cerrno>
#include <cstring>

namespace {
constexpr const char* kTypeAttribute = "user.mime_type";
}

status_t BNodeInfo::GetType(std::string* type) const {
  char value[256];
  const ssize_t length = fgetxattr(fFile->Descriptor(), kTypeAttribute, value, sizeof value);
  if (length < 0) return errno == ENODATA ? B_ENTRY_NOT_FOUND : status_of_errno(errno);
  type->assign(value, strnlen(value, static_cast<size_t>(length)));
  return B_OK;
}

status_t BNodeInfo::SetType(const char* type) {
  return fsetxattr(fFile->Descriptor(), kTypeAttribute, type, strlen(type), 0) == 0 ? B_OK : status_of_errno(errno);
}
