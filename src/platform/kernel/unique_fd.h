#pragma once

#include <unistd.h>

#include <utility>

/** Owns a file descriptor; -1 means none. */
class UniqueFd {
public:
  UniqueFd() = default;
  explicit UniqueFd(int fd) : fFd(fd) {}
  UniqueFd(UniqueFd&& other) noexcept : fFd(std::exchange(other.fFd, -1)) {}
  UniqueFd& operator=(UniqueFd&& other) noexcept {
    std::swap(fFd, other.fFd);
    return *this;
  }
  ~UniqueFd() {
    if (fFd >= 0) close(fFd);
  }

  int Get() const { return fFd; }
  explicit operator bool() const { return fFd >= 0; }

private:
  int fFd = -1;
};
