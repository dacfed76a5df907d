// What every station has to do, each once, whatever its kind and form. A new kind gets all of it by
// its row in the table of kinds.
#pragma once

#include <QString>

#include <functional>
#include <span>

#include "station_bench.h"

namespace lokari::conformance {

struct Outcome {
  enum class Kind {
    Proved,      ///< seen at the station or its vehicles
    NotOffered,  ///< the program does not offer it on this kind
    NotTold,     ///< the documents that the station was made from say nothing of it
    Failed,
  };
  Kind kind = Kind::Proved;
  QString reason = {};  ///< of a failure
  QString limit = {};   ///< where it is proved in part, such as "to F7"

  static Outcome failed(const QString& reason) { return {Kind::Failed, reason}; }
  static Outcome notOffered() { return {Kind::NotOffered, {}}; }
};

/// How an operation finds the station.
enum class Opening {
  Alone,   ///< it opens the session itself
  Beside,  ///< a cab holds the session open
};

struct Operation {
  const char* name;     ///< of the test
  const char* caption;  ///< of the column in the page of stations
  Outcome (*run)(StationBench& bench);
};

/// In the order of the columns.
std::span<const Operation> operations();

/// Runs an operation on a fresh station; `prepare` may spoil it first.
Outcome run(const Operation& operation, const Pairing& pairing, Opening opening,
            const std::function<void(StationBench& bench)>& prepare = {});

}  // namespace lokari::conformance
