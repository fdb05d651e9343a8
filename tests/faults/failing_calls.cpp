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

/** A call that may fail, on a file or path among its arguments; the others are passed on. */
#define INTERCEPT(Result, name, on, Parameters, arguments, ...)                                                        \
  Result name Parameters __VA_ARGS__ {                                                                                 \
    return fails_on(#name, on) ? -1 : next<Result(*) Parameters>(#name) arguments;                                     \
  }

// Reading is not counted: it loses nothing.
extern "C" {

INTERCEPT(ssize_t, write, file, (int file, const void* bytes, size_t size), (file, bytes, size))
INTERCEPT(int, fdatasync, file, (int file), (file))
INTERCEPT(int, fsync, file, (int file), (file))
INTERCEPT(int, unlinkat, folder, (int folder, const char* name, int flags), (folder, name, flags), noexcept)
INTERCEPT(int, unlink, path, (const char* path), (path), noexcept)
INTERCEPT(int, rename, to, (const char* from, const char* to), (from, to), noexcept)
INTERCEPT(int, ftruncate, file, (int file, off_t size), (file, size), noexcept)
INTERCEPT(int, fchmod, file, (int file, mode_t mode), (file, mode), noexcept)
INTERCEPT(int, mkdir, path, (const char* path, mode_t mode), (path, mode), noexcept)
INTERCEPT(int, fsetxattr, file, (int file, const char* name, const void* value, size_t size, int flags),
          (file, name, value, size, flags), noexcept)

int open(const char* path, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = (flags & O_CREAT) ? va_arg(rest, mode_t) : 0;
  va_end(rest);
  const bool writes = (flags & O_ACCMODE) != O_RDONLY || (flags & O_CREAT);
  if (writes && fails_on("open", path)) return -1;
  return opened(next<int (*)(const char*, int, ...)>("open")(path, flags, mode), path);
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

int close(int file) {
  const bool isFailing = fails_on("close", file);
  const int result = next<int (*)(int)>("close")(file); // closed in any case, as the kernel does
  if (tPlan) tPlan->files.erase(file);
  if (!isFailing) return result;
  errno = tPlan->error;
  return -1;
}
}
