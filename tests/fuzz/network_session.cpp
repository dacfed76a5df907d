#include "network_session.h"

#include "base/bytes.h"
#include "fuzz_session.h"
#include "link/system_can.h"
#include "support/scripted_prompt.h"

namespace lokari::fuzz {
namespace {

/// Longer than any message keeps the program waiting.
constexpr Millis kMostPerMessage = 100'000;

class AnsweredLine final : public test::MemoryLine {
 public:
  AnsweredLine(test::VirtualClock& clock, FuzzAnswers& answers)
      : MemoryLine(clock), answers_(answers) {}

 protected:
  void onWrite(const QByteArray&) override {
    answers_.next([this](const QByteArray& data) { arrive(data); });
  }

 private:
  FuzzAnswers& answers_;
};

class AnsweredSocket final : public test::MemorySocket {
 public:
  AnsweredSocket(test::VirtualClock& clock, FuzzAnswers& answers)
      : MemorySocket(clock), answers_(answers) {}

 protected:
  void onSend(const QByteArray&) override {
    answers_.next([this](const QByteArray& data) { arrive(data); });
  }

 private:
  FuzzAnswers& answers_;
};

}  // namespace

void FuzzAnswers::next(const std::function<void(const QByteArray&)>& arrive) {
  if (input_.isEmpty()) return;
  const int size = byteAt(input_, 0);
  const QByteArray answer = input_.mid(1, size);
  input_.remove(0, 1 + size);
  const qsizetype cut = size % 2 != 0 ? size / 2 : size;
  clock_.schedule(10, [arrive, first = answer.left(cut)] { arrive(first); });
  if (cut < size) clock_.schedule(1700, [arrive, rest = answer.mid(cut)] { arrive(rest); });
}

void runNetworkSession(StationKind kind, const QByteArray& input,
                       const std::function<bool(int)>& allowed) {
  if (input.isEmpty()) return;
  const int choice = byteAt(input, 0);
  const bool writes = choice % 2 != 0;
  const bool progOn = choice / 2 % 2 == 0;

  test::VirtualClock clock;
  Settings settings;
  settings.baseUnit = kind;
  settings.ipAddr = QStringLiteral("127.000.000.001");
  settings.timeoutVal = 2;
  settings.delayFlag = false;
  test::ScriptedPrompt prompt;
  FuzzAnswers answers(clock, input.mid(1));
  AnsweredLine line(clock, answers);
  AnsweredSocket socket(clock, answers);
  SystemCan can(clock, line, socket, {});
  StationLink link(settings, clock, prompt, {line, socket, can});

  if (link.initComm(true, true, progOn).isEmpty()) {
    for (int i = 0; i < 2; ++i) {
      const int result = writes ? link.WriteCV(29, 6, 3, 0) : link.ReadCV(29, 3);
      require((result >= 0 && result <= 255) || allowed(result), "a result that is none");
    }
    link.endcomm(true, progOn);
  } else {
    link.FinishComm();
  }
  require(!line.isOpen() && socket.state() != UdpSocket::kOpen, "the transport does not close");
  const qsizetype messages = line.writes.size() + socket.sent.size();
  require(clock.now() < (messages + 1) * kMostPerMessage, "the session takes too long");
}

}  // namespace lokari::fuzz
