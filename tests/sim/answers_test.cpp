// What answers a question, on all thirteen kinds: whatever comes late, unasked or with a byte that
// came wrong, a CV either has its own value or fails.
#include <gtest/gtest.h>

#include "link/station_link.h"
#include "link/system_can.h"
#include "sim/decoder_file.h"
#include "sim/station_table.h"
#include "support/scripted_prompt.h"
#include "support/sim_line.h"
#include "support/sim_socket.h"

namespace lokari {
namespace {

/// One link and one station; a fresh one for every fault, in no time.
class Bench {
 public:
  explicit Bench(StationKind kind) {
    settings_.baseUnit = kind;
    settings_.ipAddr = QStringLiteral("127.000.000.001");
    settings_.timeoutVal = 2;
    settings_.delayFlag = false;
    EXPECT_EQ(sim::readDecoders(sim::builtInDecoders(), layout_), "");
    for (const int cv : kCvs) layout_.onProgrammingTrack()->store(cv, valueOf(cv));
    layout_.onProgrammingTrack()->sticky = {kSticky};
    const sim::StationRow& row = *sim::stationByName(QStringView(stationKind(kind).name));
    station_ = row.make({clock_, layout_, faults_, 20});
    if (row.wire == sim::Wire::Serial) {
      line_ = std::make_unique<test::SimLine>(clock_, *station_);
      socket_ = std::make_unique<test::MemorySocket>(clock_);
    } else {
      line_ = std::make_unique<test::MemoryLine>(clock_);
      socket_ = std::make_unique<test::SimSocket>(clock_, *station_);
    }
    can_ = std::make_unique<SystemCan>(clock_, *line_, *socket_, std::vector<CanInterface>{});
    link_ = std::make_unique<StationLink>(settings_, clock_, prompt_,
                                          Transports{*line_, *socket_, *can_});
    EXPECT_EQ(link_->initComm(true, true, true), QString());
    // A station that falls silent in a Lenz write keeps it going for ever.
    stop_ = clock_.after(kLongest, [this] { link_->cancelRequested = true; });
  }

  /// Reads a batch, writes a CV that does not stick, and gives what was told wrongly.
  QStringList untruths(const QString& fault) {
    faults_.add(*sim::faultFromText(fault));
    QStringList wrong;
    for (const int cv : kCvs) {
      const int told = link_->ReadCV(cv, 3);
      if (told >= 0 && told != valueOf(cv)) {
        wrong << QStringLiteral("CV %1 was read as %2 for %3").arg(cv).arg(told).arg(valueOf(cv));
      }
      if (told >= 0) ++values_;
    }
    link_->commJob = CommJob::WriteProgTrack;
    if (readsBack_ &&
        link_->WriteCV(kSticky, valueOf(kSticky) ^ 1, 3, 0) == (valueOf(kSticky) ^ 1)) {
      wrong << QStringLiteral("CV %1 was told as written").arg(kSticky);
    }
    return wrong;
  }

  int values() const { return values_; }
  void doesNotReadBack() { readsBack_ = false; }

  static constexpr std::array kCvs{1, 8, 29, 5, 2, 62};

 private:
  static constexpr int kSticky = 62;
  static constexpr Millis kLongest = 3'600'000;

  /// No two alike, and none its own number.
  static int valueOf(int cv) { return cv == 29 ? 14 : (cv * 7 + 40) % 128; }

  test::VirtualClock clock_;
  sim::Layout layout_;
  sim::FaultPlan faults_;
  Settings settings_;
  test::ScriptedPrompt prompt_;
  std::unique_ptr<sim::Station> station_;
  std::unique_ptr<test::MemoryLine> line_;
  std::unique_ptr<test::MemorySocket> socket_;
  std::unique_ptr<SystemCan> can_;
  std::unique_ptr<StationLink> link_;
  std::unique_ptr<Clock::Alarm> stop_;
  bool readsBack_ = true;
  int values_ = 0;
};

/// What a kind's messages have for telling an answer from what is none.
struct Kind {
  StationKind kind;
  bool readsBack;  ///< a write is answered with what the decoder holds
  bool hasCheck;   ///< a reply carries a checksum by a known rule; that of long frames has none
  bool namesCv;    ///< a reply names what it answers
  bool talks;      ///< it sends messages that nobody asked for
};

constexpr std::array kKinds{
    Kind{StationKind::Mx1, true, false, true, true},
    Kind{StationKind::Li100, true, true, true, true},
    Kind{StationKind::Li100V3, true, true, true, true},
    Kind{StationKind::Ibx, false, false, false, false},
    Kind{StationKind::Mx1V25, true, false, true, true},
    Kind{StationKind::LiUsb, true, true, true, true},
    Kind{StationKind::TamsMc, false, false, false, false},
    Kind{StationKind::Mx1Bin, true, true, true, true},
    Kind{StationKind::Mx1Ulf, true, false, true, true},
    Kind{StationKind::LiDp, false, false, false, false},
    Kind{StationKind::Mx10, false, false, true, true},
    Kind{StationKind::Mx10Ip, false, false, true, true},
    Kind{StationKind::Z21Ip, true, true, true, true},
};
static_assert(kKinds.size() == kStationKinds.size());

class Answers : public ::testing::TestWithParam<Kind> {
 protected:
  /// The untruths with a fault, each named with it.
  QStringList with(const QString& fault) {
    Bench bench(GetParam().kind);
    if (!GetParam().readsBack) bench.doesNotReadBack();
    QStringList wrong = bench.untruths(fault);
    for (QString& each : wrong) each += QStringLiteral(" with ") + fault;
    values_ += bench.values();
    return wrong;
  }

  int values_ = 0;
};

std::string nameOf(const ::testing::TestParamInfo<Kind>& kind) {
  return QString::fromUtf16(stationKind(kind.param.kind).name).toStdString();
}

/// The kinds that have a property.
std::vector<Kind> kindsThat(bool Kind::*property) {
  std::vector<Kind> found;
  for (const Kind& each : kKinds) {
    if (each.*property) found.push_back(each);
  }
  return found;
}

class LateAnswers : public Answers {};
INSTANTIATE_TEST_SUITE_P(Naming, LateAnswers, ::testing::ValuesIn(kindsThat(&Kind::namesCv)),
                         nameOf);
class StrayMessages : public Answers {};
INSTANTIATE_TEST_SUITE_P(Talking, StrayMessages, ::testing::ValuesIn(kindsThat(&Kind::talks)),
                         nameOf);
class FlippedBits : public Answers {};
INSTANTIATE_TEST_SUITE_P(Checked, FlippedBits, ::testing::ValuesIn(kindsThat(&Kind::hasCheck)),
                         nameOf);

/// Answers that a fault may meet: those of the session's opening are over.
constexpr int kAnswers = 8;

TEST_P(LateAnswers, ALateReplyIsNeverTakenForAnotherCv) {
  for (int answer = 0; answer < kAnswers; ++answer) {
    for (const int late : {500, 1200, 2900, 3300, 4500, 6500, 9000, 20'000, 65'000}) {
      EXPECT_EQ(with(QStringLiteral("late:1:%1@%2").arg(late).arg(answer)), QStringList());
    }
  }
  EXPECT_GT(values_, 0);
}

TEST_P(StrayMessages, WhatNobodyAskedForIsNeverTakenForAnAnswer) {
  for (int answer = 0; answer < kAnswers; ++answer) {
    for (const int place : {0, 1, 2}) {
      EXPECT_EQ(with(QStringLiteral("stray:1:%1@%2").arg(place).arg(answer)), QStringList());
    }
  }
  EXPECT_GT(values_, kAnswers * 3 * 3) << "most are read all the same";
}

TEST_P(FlippedBits, AnAnswerWithAByteThatCameWrongIsNeverBelieved) {
  for (int answer = 0; answer < kAnswers; ++answer) {
    for (int bit = 0; bit < 16 * 8; ++bit) {
      EXPECT_EQ(with(QStringLiteral("flip:1:%1@%2").arg(bit).arg(answer)), QStringList());
    }
  }
  EXPECT_GT(values_, 0);
}

}  // namespace
}  // namespace lokari
