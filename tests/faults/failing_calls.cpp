#include "tests/faults/failing_calls.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <stdarg.h>
#include <stdio.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <set>

namespace failing_calls {

namespace {

struct Plan {
  std::string folder;
  int number = 0;
  int error = 0;
  Fate fate = Fate::kFails;
  bool areAll = false;
  int count = 0;
  std::string failed;
  std::set<int> files; // open below the folder
};

/** Of the arming thread. */
thread_local Plan* tPlan = nullptr;
std::string gFailed;

bool is_below(const char* path) {
  return tPlan && path && std::string(path).starts_with(tPlan->folder);
}

/** True when this call is to fail; errno is set then. */
bool fails(const char* name) {
  Plan& plan = *tPlan;
  ++plan.count;
  const bool isLater = plan.areAll && plan.count > plan.number && std::string_view(name) != "unlink";
  const bool isIt = plan.number > 0 && (plan.count == plan.number || isLater);
  if (!isIt) return false;
  if (plan.fate == Fate::kKills) _exit(99);
  plan.failed = name;
  errno = plan.error;
  return true;
}

bool fails_on(const char* name, int file) {
  return tPlan && tPlan->files.contains(file) && fails(name);
}
bool fails_on(const char* name, const char* path) {
  return is_below(path) && fails(name);
}

template <typename Function>
Function next(const char* name) {
  return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

int opened(int file, const char* path) {
  if (file >= 0 && is_below(path)) tPlan->files.insert(file);
  return file;
}

} // namespace

void arm(const std::string& folder, int number, int error, Fate fate, bool areAll) {
  delete tPlan;
  tPlan = new Plan{folder, number, error, fate, areAll, 0, {}, {}};
}

void disarm() {
  gFailed = tPlan ? tPlan->failed : std::string();
  delete tPlan;
  tPlan = nullptr;
}

std::string failed_call() {
  return gFailed;
}

} // namespace failing_calls

using namespace failing_calls;

// Reading is not counted: it loses nothing.
extern "C" {

int open(const char* path, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = (flags & O_CREAT) ? va_arg(rest, mode_t) : 0;
  va_end(rest);
  const bool writes = (flags & O_ACCMODE) != O_RDONLY || (flags & O_CREAT);
  if (writes && fails_on("open", path)) return -1;
  return opened(next<int (*)(const char*, int, ...)>("open")(path, flags, mode), path);
}

ssize_t write(int file, const void* bytes, size_t size) {
  if (fails_on("write", file)) return -1;
  return next<ssize_t (*)(int, const void*, size_t)>("write")(file, bytes, size);
}

int openat(int folder, const char* name, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = (flags & O_CREAT) ? va_arg(rest, mode_t) : 0;
  va_end(rest);
  if ((flags & O_CREAT) && fails_on("openat", folder)) return -1;
  const int file = next<int (*)(int, const char*, int, ...)>("openat")(folder, name, flags, mode);
  if (file >= 0 && tPlan && tPlan->files.contains(folder)) tPlan->files.insert(file);
  return file;
}

int unlinkat(int folder, const char* name, int flags) noexcept {
  if (fails_on("unlinkat", folder)) return -1;
  return next<int (*)(int, const char*, int)>("unlinkat")(folder, name, flags);
}

int fdatasync(int file) {
  if (fails_on("fdatasync", file)) return -1;
  return next<int (*)(int)>("fdatasync")(file);
}

int fsync(int file) {
  if (fails_on("fsync", file)) return -1;
  return next<int (*)(int)>("fsync")(file);
}

int close(int file) {
  const bool isFailing = fails_on("close", file);
  const int result = next<int (*)(int)>("close")(file); // closed in any case, as the kernel does
  if (tPlan) tPlan->files.erase(file);
  if (!isFailing) return result;
  errno = tPlan->error;
  return -1;
}

int rename(const char* from, const char* to) noexcept {
  if (fails_on("rename", to)) return -1;
  return next<int (*)(const char*, const char*)>("rename")(from, to);
}

int unlink(const char* path) noexcept {
  if (fails_on("unlink", path)) return -1;
  return next<int (*)(const char*)>("unlink")(path);
}

int ftruncate(int file, off_t size) noexcept {
  if (fails_on("ftruncate", file)) return -1;
  return next<int (*)(int, off_t)>("ftruncate")(file, size);
}

int fchmod(int file, mode_t mode) noexcept {
  if (fails_on("fchmod", file)) return -1;
  return next<int (*)(int, mode_t)>("fchmod")(file, mode);
}

int fsetxattr(int file, const char* name, const void* value, size_t size, int flags) noexcept {
  if (fails_on("fsetxattr", file)) return -1;
  return next<int (*)(int, const char*, const void*, size_t, int)>("fsetxattr")(file, name, value, size, flags);
}

int mkdir(const char* path, mode_t mode) noexcept {
  if (fails_on("mkdir", path)) return -1;
  return next<int (*)(const char*, mode_t)>("mkdir")(path, mode);
}
}
