#include "player/model/read_file.h"

#include "platform/storage/file.h"

std::optional<std::string> read_file(const std::string& path) {
  BFile file(path.c_str(), B_READ_ONLY);
  off_t size = 0;
  if (file.GetSize(&size) != B_OK) return std::nullopt;
  std::string bytes(static_cast<size_t>(size), '\0');
  const ssize_t count = file.Read(bytes.data(), bytes.size());
  if (count < 0) return std::nullopt;
  bytes.resize(static_cast<size_t>(count));
  return bytes;
}
