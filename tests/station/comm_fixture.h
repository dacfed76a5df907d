// The communication test on a scripted line, in virtual time.
#pragma once

#include "base/bytes.h"
#include "station/comm_test.h"
#include "support/link_fixture.h"

namespace lokari::test {

class CommFixture : public LinkFixture {
 protected:
  explicit CommFixture(StationKind kind) : LinkFixture(kind) { link.commJob = CommJob::TestComm; }

  static QByteArray fromHex(const char* text) { return QByteArray::fromHex(text); }

  ScriptedLine& expect(const char* hex) { return line.expect(fromHex(hex)); }
  void cancel() { link.cancelRequested = true; }

  CommTestResult run() {
    const CommTestResult result = TestComm(link, settings);
    // However a run ends: the session is closed and the next job is not cancelled.
    EXPECT_EQ(link.commUseCount, 0);
    EXPECT_FALSE(line.isOpen());
    EXPECT_FALSE(link.cancelRequested);
    EXPECT_EQ(view.captions.first(), "Abbruch");
    EXPECT_EQ(view.captions.last(), "OK");
    EXPECT_EQ(view.statuses.first(), "Beginne Kommunikation ...");
    EXPECT_EQ(view.statuses.last(), result.lines.join(QStringLiteral("\r\n")));
    return result;
  }

  using Outcome = CommTestResult::Outcome;
};

}  // namespace lokari::test
