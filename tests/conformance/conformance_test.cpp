// Every operation on every kind of station, in both forms of messages, whoever opens the session
// and however the answers come apart.
#include <gtest/gtest.h>

#include <array>

#include "operations.h"

namespace lokari::conformance {
namespace {

struct Case {
  Operation operation;
  Pairing pairing;
  Opening opening;
};

void PrintTo(const Case& each, std::ostream* out) {
  *out << each.operation.name << " on " << nameOf(each.pairing).toStdString();
}

/// The program speaks as the station understands.
bool belongsTogether(const Pairing& pairing) {
  return pairing.makerForm == (pairing.station == Reading::Makers);
}

std::vector<Case> allCases() {
  std::vector<Case> all;
  for (const Pairing& pairing : allPairings()) {
    if (!belongsTogether(pairing)) continue;
    for (const Operation& operation : operations()) {
      for (const Opening opening : {Opening::Alone, Opening::Beside}) {
        all.push_back({operation, pairing, opening});
      }
    }
  }
  return all;
}

std::string nameOfCase(const ::testing::TestParamInfo<Case>& info) {
  return (nameOf(info.param.pairing) + u'_').toStdString() + info.param.operation.name +
         (info.param.opening == Opening::Beside ? "BesideACab" : "");
}

class Conformance : public ::testing::TestWithParam<Case> {
 protected:
  Outcome outcome(const std::function<void(StationBench&)>& prepare = {}) const {
    return run(GetParam().operation, GetParam().pairing, GetParam().opening, prepare);
  }
};

INSTANTIATE_TEST_SUITE_P(Every, Conformance, ::testing::ValuesIn(allCases()), nameOfCase);

TEST_P(Conformance, DoesWhatWasAskedFor) {
  const Outcome seen = outcome();
  EXPECT_FALSE(seen.kind == Outcome::Kind::Failed) << qPrintable(seen.reason);
}

/// An adapter hands on what has come in bursts. An LI100 says everything twice: its second answer
/// has to be over before the next question.
struct Cut {
  int length;
  Millis pause;
};
constexpr std::array kCuts{Cut{1, 1}, Cut{1, 2}, Cut{2, 20}, Cut{3, 1}, Cut{5, 5}, Cut{7, 20}};

TEST_P(Conformance, DoesItWhereverTheAnswersAreCut) {
  if (stationKind(GetParam().pairing.kind).transport != Transport::Serial) return;
  for (const Cut& cut : kCuts) {
    const Outcome seen =
        outcome([&cut](StationBench& bench) { bench.cutAnswers(cut.length, cut.pause); });
    EXPECT_FALSE(seen.kind == Outcome::Kind::Failed)
        << cut.length << " bytes, " << cut.pause << " ms: " << qPrintable(seen.reason);
  }
}

}  // namespace
}  // namespace lokari::conformance
