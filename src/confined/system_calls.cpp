#include "confined/system_calls.h"

#include "platform/kernel/unique_fd.h"

#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <seccomp.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <iterator>

namespace {

/** Memory, time, open descriptors, exit. */
constexpr int kAllowed[] = {
    SCMP_SYS(read),
    SCMP_SYS(readv),
    SCMP_SYS(pread64),
    SCMP_SYS(lseek),
    SCMP_SYS(write),
    SCMP_SYS(writev),
    SCMP_SYS(pwrite64),
    SCMP_SYS(close),
    SCMP_SYS(fstat),
    SCMP_SYS(brk),
    SCMP_SYS(munmap),
    SCMP_SYS(mremap),
    SCMP_SYS(madvise),
    SCMP_SYS(futex),
    SCMP_SYS(sched_yield),
    SCMP_SYS(sched_getaffinity),
    SCMP_SYS(getrandom),
    SCMP_SYS(clock_gettime),
    SCMP_SYS(clock_getres),
    SCMP_SYS(gettimeofday),
    SCMP_SYS(time),
    SCMP_SYS(nanosleep),
    SCMP_SYS(clock_nanosleep),
    SCMP_SYS(getrusage),
    SCMP_SYS(times),
    SCMP_SYS(uname),
    SCMP_SYS(sysinfo),
    SCMP_SYS(getpid),
    SCMP_SYS(gettid),
    SCMP_SYS(rt_sigaction),
    SCMP_SYS(rt_sigprocmask),
    SCMP_SYS(rt_sigreturn),
    SCMP_SYS(sigaltstack),
    SCMP_SYS(restart_syscall),
    SCMP_SYS(exit),
    SCMP_SYS(exit_group),
};

/** Never with PROT_EXEC. */
constexpr int kAllowedWithoutExec[] = {SCMP_SYS(mmap), SCMP_SYS(mprotect)};

/** Libraries try these, for settings, character sets or threads, and continue without. */
constexpr int kRefused[] = {
    SCMP_SYS(open),
    SCMP_SYS(openat),
    SCMP_SYS(openat2),
    SCMP_SYS(creat),
    SCMP_SYS(stat),
    SCMP_SYS(lstat),
    SCMP_SYS(newfstatat),
    SCMP_SYS(statx),
    SCMP_SYS(access),
    SCMP_SYS(faccessat),
    SCMP_SYS(faccessat2),
    SCMP_SYS(readlink),
    SCMP_SYS(readlinkat),
    SCMP_SYS(getcwd),
    SCMP_SYS(socket),
    SCMP_SYS(socketpair),
    SCMP_SYS(connect),
    SCMP_SYS(clone),
    SCMP_SYS(clone3),
    SCMP_SYS(fork),
    SCMP_SYS(vfork),
    SCMP_SYS(pipe),
    SCMP_SYS(pipe2),
    SCMP_SYS(eventfd2),
    SCMP_SYS(memfd_create),
    SCMP_SYS(dup),
    SCMP_SYS(fcntl),
    SCMP_SYS(ioctl),
    SCMP_SYS(prctl),
    SCMP_SYS(prlimit64),
    SCMP_SYS(getrlimit),
    SCMP_SYS(sched_getparam),
    SCMP_SYS(sched_getscheduler),
    SCMP_SYS(sched_setaffinity),
};

bool add_rules(scmp_filter_ctx filter) {
  const auto allow = [filter](int call) { return seccomp_rule_add(filter, SCMP_ACT_ALLOW, call, 0) == 0; };
  const auto allowWithoutExec = [filter](int call) {
    const scmp_arg_cmp isNotExecutable{2, SCMP_CMP_MASKED_EQ, PROT_EXEC, 0};
    return seccomp_rule_add_array(filter, SCMP_ACT_ALLOW, call, 1, &isNotExecutable) == 0;
  };
  const auto refuse = [filter](int call) { return seccomp_rule_add(filter, SCMP_ACT_ERRNO(EACCES), call, 0) == 0; };
  // Standard error, which stays open, may be a log file.
  const scmp_arg_cmp isNoLog{0, SCMP_CMP_NE, STDERR_FILENO, 0};
  return std::all_of(std::begin(kAllowed), std::end(kAllowed), allow) &&
         seccomp_rule_add_array(filter, SCMP_ACT_ALLOW, SCMP_SYS(ftruncate), 1, &isNoLog) == 0 &&
         std::all_of(std::begin(kAllowedWithoutExec), std::end(kAllowedWithoutExec), allowWithoutExec) &&
         std::all_of(std::begin(kRefused), std::end(kRefused), refuse);
}

/** With a null filter the call always fails; EFAULT shows that the kernel supports it. */
bool kernel_can_filter() {
  return syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER, 0, nullptr) < 0 && errno == EFAULT;
}

/** The rules as a BPF program; empty on failure. */
TFilterProgram compiled(scmp_filter_ctx filter) {
  const UniqueFd file(memfd_create("filter", MFD_CLOEXEC));
  if (!file || seccomp_export_bpf(filter, file.Get()) != 0) return {};
  TFilterProgram program(static_cast<size_t>(lseek(file.Get(), 0, SEEK_END)) / sizeof(sock_filter));
  const size_t bytes = program.size() * sizeof(sock_filter);
  return pread(file.Get(), program.data(), bytes, 0) == static_cast<ssize_t>(bytes) ? program : TFilterProgram();
}

} // namespace

std::optional<TFilterProgram> computing_only() {
  if (!kernel_can_filter()) {
    std::fprintf(stderr, "%s: no system call filter available here; reading songs without it\n",
                 program_invocation_short_name);
    return std::nullopt;
  }
  const scmp_filter_ctx filter = seccomp_init(SCMP_ACT_KILL_PROCESS);
  TFilterProgram program = filter && add_rules(filter) ? compiled(filter) : TFilterProgram();
  seccomp_release(filter);
  return program;
}

bool filter_system_calls(const TFilterProgram& program) {
  // The kernel does not write to it.
  const sock_fprog lines{static_cast<unsigned short>(program.size()), const_cast<sock_filter*>(program.data())};
  return !program.empty() && syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER, 0, &lines) == 0;
}
