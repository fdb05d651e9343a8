#include "platform/storage/status_of.h"

#include <cerrno>

status_t status_of_errno(int error) {
  switch (error) {
  case ENOENT:
    return B_ENTRY_NOT_FOUND;
  case EACCES:
  case EPERM:
  case EROFS:
    return B_PERMISSION_DENIED;
  case EEXIST:
    return B_FILE_EXISTS;
  case EISDIR:
    return B_IS_A_DIRECTORY;
  case ENOTDIR:
    return B_NOT_A_DIRECTORY;
  case ENOSPC:
  case EDQUOT:
    return B_DEVICE_FULL;
  case EFBIG:
    return B_FILE_TOO_LARGE;
  case ENOMEM:
    return B_NO_MEMORY;
  case EAGAIN:
    return B_WOULD_BLOCK;
  case EINTR:
    return B_INTERRUPTED;
  default:
    return B_IO_ERROR;
  }
}
