// A disk that is full.
#pragma once

#include <QtGlobal>

#include <csignal>
#include <sys/resource.h>

namespace lokari::test {

/// While it lives, every write behind `bytes` of a file fails, as on a medium that goes away.
class NoLargerFiles {
 public:
  explicit NoLargerFiles(qint64 bytes) : handler_(signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &kept_);
    rlimit limit = kept_;
    limit.rlim_cur = static_cast<rlim_t>(bytes);
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~NoLargerFiles() {
    setrlimit(RLIMIT_FSIZE, &kept_);
    signal(SIGXFSZ, handler_);
  }
  NoLargerFiles(const NoLargerFiles&) = delete;
  NoLargerFiles& operator=(const NoLargerFiles&) = delete;

 private:
  rlimit kept_{};
  void (*handler_)(int);
};

}  // namespace lokari::test
