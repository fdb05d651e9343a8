#include "platform/kernel/images.h"

#include <dlfcn.h>
#include <link.h>
#include <unistd.h>

#include <climits>
#include <utility>

namespace {

std::string program_path() {
  char path[PATH_MAX];
  const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
  return length > 0 ? std::string(path, static_cast<size_t>(length)) : std::string();
}

/** Skips `left` images and takes the name of the next. */
struct Search {
  int32 left;
  bool isFirst;
  std::string name;
};

int visit(dl_phdr_info* info, size_t, void* data) {
  auto* const search = static_cast<Search*>(data);
  if (search->left-- > 0) return 0;
  // The linker gives the program itself no name.
  search->name = search->isFirst ? program_path() : info->dlpi_name;
  return 1;
}

} // namespace

status_t get_next_image_info(int32* cookie, image_info* info) {
  Search search{*cookie, *cookie == 0, {}};
  if (*cookie < 0 || dl_iterate_phdr(visit, &search) == 0) return B_BAD_INDEX;
  info->name = std::move(search.name);
  ++*cookie;
  return B_OK;
}

void keep_image_mapped(const void* address) {
  Dl_info image{};
  // Never closed, on purpose. Fails for the program itself, which stays anyway.
  if (dladdr(address, &image) != 0) dlopen(image.dli_fname, RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE);
}
