#include "base/signal_watch.h"

#include <array>
#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace lokari {
namespace {

constexpr std::array kSignals{SIGINT, SIGTERM, SIGHUP};

// A signal handler may do little more than write into a socket, and it has no argument that could
// carry one: this is the one place where the process itself must remember something.
std::array<int, 2> sockets{-1, -1};

unsigned patienceSeconds = 0;
// The signal that the event loop has not heard yet; 0 for none.
volatile std::sig_atomic_t unheard = 0;

extern "C" void lokariOnAlarm(int) {
  if (unheard == 0) return;
  std::signal(unheard, SIG_DFL);
  std::raise(unheard);
}

extern "C" void lokariOnSignal(int signal) {
  if (patienceSeconds > 0) {
    if (unheard != 0) {
      lokariOnAlarm(0);
      return;
    }
    unheard = signal;
    ::alarm(patienceSeconds);
  }
  const char byte = 0;
  const ssize_t written = ::write(sockets[0], &byte, 1);
  static_cast<void>(written);
}

}  // namespace

void SignalWatch::heard() {
  if (patienceSeconds > 0) ::alarm(0);
  unheard = 0;
}

SignalWatch::SignalWatch(std::function<void()> action, unsigned patience)
    : action_(std::move(action)) {
  if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, sockets.data()) != 0) {
    return;
  }
  notifier_ = std::make_unique<QSocketNotifier>(sockets[1], QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] {
    std::array<char, 16> buffer{};
    const ssize_t count = ::read(sockets[1], buffer.data(), buffer.size());
    heard();
    if (count > 0) action_();
  });
  patienceSeconds = patience;
  struct sigaction reaction = {};
  reaction.sa_handler = lokariOnAlarm;
  if (patience > 0) ::sigaction(SIGALRM, &reaction, nullptr);
  reaction.sa_handler = lokariOnSignal;
  for (const int each : kSignals) ::sigaction(each, &reaction, nullptr);
}

SignalWatch::~SignalWatch() {
  for (const int each : kSignals) std::signal(each, SIG_DFL);
  heard();
  patienceSeconds = 0;
  notifier_.reset();
  for (int& socket : sockets) {
    if (socket >= 0) ::close(socket);
    socket = -1;
  }
}

}  // namespace lokari
