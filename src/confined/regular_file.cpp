#include "confined/regular_file.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <utility>

UniqueFd open_regular_file(const std::string& path) {
  UniqueFd file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  struct stat state {};
  const bool isRegular = file && fstat(file.Get(), &state) == 0 && S_ISREG(state.st_mode);
  return isRegular && fcntl(file.Get(), F_SETFL, 0) == 0 ? std::move(file) : UniqueFd();
}
