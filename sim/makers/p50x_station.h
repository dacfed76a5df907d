// Stations with the P50Xb protocol as public documents describe it: an Intellibox and a Tams MC.
//
// p50x_reader.h has the wire, p50x_driving.h vehicles and turnouts, p50x_programming.h the CVs.
//
//   98 m             contacts: 00 and two bytes       99   all contacts anew: 00
//   A0               versions, each behind its length, closed by 00
//   A2               state: 10 halt, 08 power on, 04 too hot
//   A5, A6, A7       halt, power off, power on: 00; A7 gives 06 when the track is overloaded
//   C8               events: 00, or 80 80 01 while the result of programming waits for CE
//   C9, CA, CB       vehicles, turnouts, contacts changed elsewhere: 80, 00, 00
//   CE               result of programming
//   E0, E1, E2       programming's status, on, off: 00
//
// Other commands are answered 01, text is not answered.
#pragma once

#include <span>

#include "sim/makers/makers_options.h"
#include "sim/makers/p50x_driving.h"
#include "sim/makers/p50x_programming.h"
#include "sim/makers/p50x_reader.h"
#include "sim/station.h"

namespace lokari::sim::makers {

struct P50xModel {
  QByteArray versions;
  int dccFormat;
  bool newer;  ///< F9 and up, CVs read on the main track
};

class P50xStation : public Station {
 public:
  P50xStation(const Surroundings& surroundings, const MakersOptions& options, P50xModel model);

  void receive(const QByteArray& data) override;

  const Accessories& accessories() const { return driving_.accessories(); }

 private:
  enum class Since { First, Newer };
  struct Row {
    int code;
    qsizetype size;
    Since since;
    QByteArray (P50xDriving::*drive)(const QByteArray& command);
    QByteArray (P50xStation::*obey)();
    int full = 0;  ///< the code when the queue of the command's kind is
  };
  static std::span<const Row> rows();
  /// The row of a command that this model knows, or nullptr.
  const Row* rowOf(int operation) const;
  qsizetype sizeOf(int operation) const;
  bool knowsAccess(int operation) const;

  void obey(const QByteArray& command);
  int program(const QByteArray& command);

  QByteArray done();
  QByteArray noContacts();
  QByteArray tellVersions();
  QByteArray tellState();
  QByteArray halt();
  QByteArray powerOff();
  QByteArray powerOn();
  QByteArray tellEvents();
  QByteArray noVehicles();
  QByteArray tellResult();
  QByteArray endProgramming();

  MakersOptions options_;
  P50xModel model_;
  P50xReader reader_;
  P50xDriving driving_;
  Millis lastAt_ = 0;
  QByteArray result_;  ///< of programming, until it is fetched
  Millis resultAt_ = 0;
};

class IntelliboxStation final : public P50xStation {
 public:
  IntelliboxStation(const Surroundings& surroundings, const MakersOptions& options);
};

class TamsStation final : public P50xStation {
 public:
  TamsStation(const Surroundings& surroundings, const MakersOptions& options);
};

}  // namespace lokari::sim::makers
