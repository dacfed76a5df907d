// A session with a Lenz interface on a scripted line. The clock stands at 2000 ms when it is open;
// time-outs count whole seconds.
#pragma once

#include "support/link_fixture.h"

namespace lokari::test {

class LenzFixture : public LinkFixture {
 protected:
  explicit LenzFixture(StationKind kind) : LinkFixture(kind) {
    link.commJob = CommJob::ReadProgTrack;
    EXPECT_EQ(link.initComm(true, true, true), "");
    clock.advance(2000 - clock.now());
  }

  static QByteArray fromHex(const char* text) { return QByteArray::fromHex(text); }

  ScriptedLine& expect(const char* message) { return line.expect(fromHex(message)); }
  /// `answer` must be well below the time-out; 10 ms unless given.
  void expect(const char* message, const char* answer, Millis delay = 10) {
    expect(message).answer(fromHex(answer), delay);
  }
  /// Any action when `message` has come.
  void expectAnd(const char* message, std::function<void()> action, Millis delay) {
    expect(message).then(std::move(action), delay);
  }
  void expectTimes(int times, const char* message) {
    for (int i = 0; i < times; ++i) expect(message);
  }
  void cancelAt(Millis delay) {
    clock.schedule(delay, [this] { link.cancelRequested = true; });
  }

  int write(int cv, int value, int mode = 0) { return link.WriteCV(cv, value, 3, mode); }
  int writeMain(int cv, int value, int address) {
    link.commJob = CommJob::WriteMain;
    link.pomAddr = link.getAddrIndex(address);
    return link.WriteCV(cv, value, address, 0);
  }

  const QString kNoOrWrong = QStringLiteral("Keine / falsche Antwort vom Basisgerät!");
};

/// The second interface, whose bytes are plain and whose confirmations are short.
class Li100V3Fixture : public LenzFixture {
 protected:
  Li100V3Fixture() : LenzFixture(StationKind::Li100V3) {}

  static constexpr const char* kResume = "21 81 A0";
  static constexpr const char* kResumed = "01 04 05 61 01 60";
  static constexpr const char* kAsk = "21 10 31";
  static constexpr const char* kInServiceMode = "61 02 63";
  static constexpr const char* kRead29 = "22 15 1D 2A";
  static constexpr const char* kReadBegun = "01 04 05 61 02 63";
  static constexpr const char* kWrite29 = "23 16 1D 06 2E";
  static constexpr const char* kWriteDone = "01 04 05 01 04 05";
  static constexpr const char* kResult = "63 14 1D 06 6C";

  /// The epilogue of an operation.
  void expectEpilogue() { expect(kResume, kResumed); }
  /// The repeat of a message from the second chance on.
  ScriptedLine& expectRepeat(const char* message) {
    expect(kResume, kResumed);
    return expect(message);
  }
  /// A read of CV 29 up to the first question for its result.
  ScriptedLine& expectReadAndAsk() {
    expect(kRead29, kReadBegun);
    return expect(kAsk);
  }
  int read29() { return link.ReadCV(29, 3); }
};

}  // namespace lokari::test
