// Merging the database's vehicles into a vehicle file: what the file has under an address stays,
// and only addresses that are new to it are added.
#pragma once

#include <functional>
#include <optional>

#include "reports/rzk_record.h"

namespace lokari {

/// One pass over both sides, with one record of each in memory.
class RzkMerge {
 public:
  /// The old file's next record behind its head; nothing at its end. A record that is cut short
  /// counts as the end.
  using NextRecord = std::function<std::optional<QByteArray>()>;
  using Write = std::function<void(const QByteArray& record)>;

  /// Writes the head. `nextOld` is empty for a new file. Exceptions of `write` pass through.
  RzkMerge(NextRecord nextOld, Write write);

  /// The next vehicle; addresses ascend. One whose address the old file has, or that came before,
  /// as two collections allow, is left out.
  void add(const RzkVehicle& vehicle);

  /// Copies the rest of the old file and gives the number of vehicles that were added.
  int finish();

 private:
  void writeOld();

  NextRecord nextOld_;
  Write write_;
  std::optional<QByteArray> old_;
  std::optional<qint16> lastAddress_;
  int count_ = 0;
};

}  // namespace lokari
