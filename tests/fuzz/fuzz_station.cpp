#include "fuzz_station.h"

#include <cstdio>
#include <cstdlib>

#include "sim/decoder_file.h"
#include "sim/station_table.h"
#include "support/virtual_clock.h"

namespace lokari::fuzz {
namespace {

void demand(bool holds, const char* text) {
  if (holds) return;
  std::fprintf(stderr, "%s\n", text);
  std::abort();
}

class StationRun {
 public:
  explicit StationRun(QStringView name) {
    demand(sim::readDecoders(sim::builtInDecoders(), layout_).isEmpty(), "no vehicles");
    station_ = sim::stationByName(name)->make({clock_, layout_, faults_, 20});
    station_->onAnswer = [this](const QByteArray& data) {
      demand(!receiving_, "answered from inside the write");
      answers_ += data;
    };
  }

  void send(const QByteArray& data) {
    receiving_ = true;
    station_->receive(data);
    receiving_ = false;
  }
  void pause() { clock_.advance(5000); }
  const QByteArray& answers() const { return answers_; }

 private:
  test::VirtualClock clock_;
  sim::Layout layout_;
  sim::FaultPlan faults_;
  std::unique_ptr<sim::Station> station_;
  QByteArray answers_;
  bool receiving_ = false;
};

}  // namespace

void runStation(QStringView name, const QByteArray& input, const QByteArray& question,
                const QByteArray& answer) {
  StationRun whole(name);
  whole.send(input);
  StationRun single(name);
  for (const char byte : input) single.send(QByteArray(1, byte));
  for (StationRun* run : {&whole, &single}) {
    run->pause();
    run->send(question);
    run->pause();
  }
  demand(whole.answers() == single.answers(), "portions change the answers");
  demand(whole.answers().endsWith(answer), "the station is stuck");
}

}  // namespace lokari::fuzz
