#include "fuzz_session.h"

#include <cstdio>
#include <cstdlib>

#include "base/bytes.h"
#include "support/memory_can.h"
#include "support/memory_socket.h"
#include "support/scripted_prompt.h"
#include "support/virtual_clock.h"

namespace lokari::fuzz {
namespace {

/// Longer than any message keeps the program waiting.
constexpr Millis kMostPerMessage = 100'000;

/// What the first byte of the input chooses; the address is a long one.
struct Operation {
  CommJob job;
  int address;
};
constexpr Operation kOperations[] = {
    {CommJob::ReadProgTrack, 3},
    {CommJob::WriteProgTrack, 3},
    {CommJob::WriteMain, 3},
    {CommJob::WriteMain, 1000},
};

}  // namespace

void require(bool holds, const char* text) {
  if (holds) return;
  std::fprintf(stderr, "%s\n", text);
  std::abort();
}

void FuzzLine::onWrite(const QByteArray&) {
  if (answers_.isEmpty()) return;
  const int size = byteAt(answers_, 0);
  const QByteArray answer = answers_.mid(1, size);
  answers_.remove(0, 1 + size);
  const qsizetype cut = size % 2 != 0 ? size / 2 : size;
  clock().schedule(10, [this, first = answer.left(cut)] { arrive(first); });
  clock().schedule(1700, [this, rest = answer.mid(cut)] { arrive(rest); });
}

void runCvSession(StationKind kind, const QByteArray& input,
                  const std::function<bool(int)>& allowed, std::optional<Millis> cancelAfter) {
  if (input.isEmpty()) return;
  const Operation& operation = kOperations[byteAt(input, 0) % 4];

  test::VirtualClock clock;
  Settings settings;
  settings.baseUnit = kind;
  settings.timeoutVal = 2;
  settings.delayFlag = false;
  test::ScriptedPrompt prompt;
  FuzzLine line(clock, input.mid(1));
  test::MemorySocket socket(clock);
  test::MemoryCan can;
  StationLink link(settings, clock, prompt, {line, socket, can});

  link.commJob = operation.job;
  if (cancelAfter) clock.schedule(*cancelAfter, [&link] { link.cancelRequested = true; });
  require(link.initComm(true, true, true).isEmpty(), "the session does not open");
  link.pomAddr = link.getAddrIndex(operation.address);
  if (link.pomAddr >= 0) {
    for (int i = 0; i < 2; ++i) {
      const int result = operation.job == CommJob::ReadProgTrack
                             ? link.ReadCV(29, operation.address)
                             : link.WriteCV(29, 6, operation.address, 0);
      const bool cancelled = link.cancelRequested && result == cv_result::kCancelled;
      require((result >= 0 && result <= 255) || cancelled || allowed(result),
              "a result that is none");
    }
  }
  link.endcomm(true, true);
  require(!line.isOpen(), "the session does not close");
  require(clock.now() < (line.writes.size() + 1) * kMostPerMessage, "the session takes too long");
}

}  // namespace lokari::fuzz
