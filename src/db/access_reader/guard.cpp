#include "db/access_reader/guard.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <initializer_list>
#include <sys/resource.h>
#include <unistd.h>

namespace lokari {
namespace {

constexpr rlim_t kMemory = 512UL << 20U;
/// Files of Access end at 2 GB: reading a table of one takes far less.
constexpr rlim_t kProcessorSeconds = 120;

void limit(decltype(RLIMIT_CPU) resource, rlim_t value) {
  const rlimit both{value, value};
  setrlimit(resource, &both);
}

}  // namespace

void guardProcess() {
  // A program that ignores the signal hands that on; here the reader's end is the reason to stop.
  std::signal(SIGPIPE, SIG_DFL);
#ifndef __SANITIZE_ADDRESS__
  // The address sanitizer reserves more at its start.
  limit(RLIMIT_AS, kMemory);
#endif
  limit(RLIMIT_CPU, kProcessorSeconds);
  limit(RLIMIT_FSIZE, 0);
  limit(RLIMIT_CORE, 0);
  for (const char* name : {"MDBICONV", "MDB_JET3_CHARSET", "MDBOPTS", "MDBPATH"}) unsetenv(name);
}

int takeStandardOutput() {
  const int stream = dup(STDOUT_FILENO);
  const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
  dup2(nowhere, STDOUT_FILENO);
  dup2(nowhere, STDERR_FILENO);
  close(nowhere);
  return stream;
}

}  // namespace lokari
