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

const char* status_text(status_t status) {
  switch (status) {
  case B_OK:
    return "no error";
  case B_ENTRY_NOT_FOUND:
    return "there is no such file or folder";
  case B_PERMISSION_DENIED:
    return "permission denied";
  case B_IS_A_DIRECTORY:
    return "it is a folder";
  case B_DEVICE_FULL:
    return "the disk is full";
  case B_FILE_TOO_LARGE:
    return "the file would be too large";
  default:
    return "input/output error";
  }
}
