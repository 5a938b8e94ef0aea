#pragma once

#include <sys/resource.h>

#include <csignal>

namespace korvenal::test {

/// No file grows beyond so many bytes while this lives: a disk that runs full.
class FullDisk {
 public:
  explicit FullDisk(rlim_t bytes) {
    ::signal(SIGXFSZ, SIG_IGN);
    ::getrlimit(RLIMIT_FSIZE, &before_);
    const struct rlimit limit { bytes, before_.rlim_max };
    ::setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FullDisk() { ::setrlimit(RLIMIT_FSIZE, &before_); }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

 private:
  struct rlimit before_ {};
};

}  // namespace korvenal::test
