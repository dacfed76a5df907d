#include "station_bench.h"

#include <gtest/gtest.h>

#include "sim/decoder_file.h"
#include "support/sim_line.h"
#include "support/sim_socket.h"

namespace lokari::conformance {
namespace {

const sim::StationRow& simulated(StationKind kind) {
  return *sim::stationByName(QStringView(stationKind(kind).name));
}

}  // namespace

bool exists(const Pairing& pairing) {
  const bool hasMakers = simulated(pairing.kind).makeMakers != nullptr;
  // A kind without documents is the same in both forms.
  return pairing.station == Reading::Makers ? hasMakers : !pairing.makerForm || !hasMakers;
}

std::vector<Pairing> allPairings() {
  std::vector<Pairing> all;
  for (const StationKindRow& kind : kStationKinds) {
    for (const bool makerForm : {false, true}) {
      for (const Reading station : {Reading::Ours, Reading::Makers}) {
        const Pairing pairing{kind.kind, makerForm, station};
        if (exists(pairing)) all.push_back(pairing);
      }
    }
  }
  return all;
}

QString nameOf(const Pairing& pairing) {
  return QString::fromUtf16(stationKind(pairing.kind).name) +
         (pairing.makerForm ? QStringLiteral("MakerForm") : QStringLiteral("AsBefore")) +
         (pairing.station == Reading::Makers ? QStringLiteral("OnMakers")
                                             : QStringLiteral("OnOurs"));
}

StationBench::StationBench(const Pairing& pairing) : pairing_(pairing) {
  settings_.baseUnit = pairing.kind;
  settings_.makerForm = pairing.makerForm;
  settings_.ipAddr = QStringLiteral("127.000.000.001");
  settings_.timeoutVal = 2;
  settings_.delayFlag = false;
  EXPECT_EQ(sim::readDecoders(sim::builtInDecoders(), layout_), "");
  const sim::StationRow& row = simulated(pairing.kind);
  const sim::Surroundings surroundings{clock_, layout_, faults_, 20};
  station_ = pairing.station == Reading::Makers
                 ? row.makeMakers(surroundings, {.subscribersOnly = pairing.makerForm})
                 : row.make(surroundings);
  if (row.wire == sim::Wire::Serial) {
    serial_ = std::make_unique<test::SimLine>(clock_, *station_);
    socket_ = std::make_unique<test::MemorySocket>(clock_);
  } else {
    serial_ = std::make_unique<test::MemoryLine>(clock_);
    socket_ = std::make_unique<test::SimSocket>(clock_, *station_);
  }
  can_ = std::make_unique<SystemCan>(clock_, *serial_, *socket_, std::vector<CanInterface>{});
  link_ = std::make_unique<StationLink>(settings_, clock_, prompt_,
                                        Transports{*serial_, *socket_, *can_});
  line_ = std::make_unique<CabLine>(*link_);
  end_ = clock_.after(kLongest, [this] {
    link_->cancelStays = true;
    link_->cancelRequested = true;
  });
}

StationBench::~StationBench() = default;

void StationBench::fault(const QString& text) {
  faults_.add(*sim::faultFromText(text));
}

void StationBench::cutAnswers(int length, Millis pause) {
  station_->onAnswer = [this, length, pause, deliver = station_->onAnswer](const QByteArray& data) {
    for (qsizetype at = 0; at < data.size(); at += length) {
      lastPieceAt_ = std::max(lastPieceAt_ + pause, clock_.now());
      pieces_.push_back(clock_.after(lastPieceAt_ - clock_.now(),
                                     [deliver, piece = data.mid(at, length)] { deliver(piece); }));
    }
  };
}

void StationBench::openBeside() {
  EXPECT_EQ(link_->initComm(true, false, false), QString());
}

}  // namespace lokari::conformance
