#include "platform/kernel/images.h"

#include <link.h>
#include <unistd.h>

#include <climits>
#include <vector>

namespace {

std::string program_path() {
  char path[PATH_MAX];
  const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
  return length > 0 ? std::string(path, static_cast<size_t>(length)) : std::string();
}

int add_name(dl_phdr_info* info, size_t, void* names) {
  // The linker gives the program itself no name.
  const bool isFirst = static_cast<std::vector<std::string>*>(names)->empty();
  static_cast<std::vector<std::string>*>(names)->push_back(isFirst ? program_path() : info->dlpi_name);
  return 0;
}

} // namespace

status_t get_next_image_info(int32* cookie, image_info* info) {
  std::vector<std::string> names;
  dl_iterate_phdr(add_name, &names);
  if (*cookie < 0 || static_cast<size_t>(*cookie) >= names.size()) return B_BAD_INDEX;
  info->name = names[static_cast<size_t>((*cookie)++)];
  return B_OK;
}
