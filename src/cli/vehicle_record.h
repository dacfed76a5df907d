// The vehicle of a command in the database, and the way back into it.
#pragma once

#include <QString>

#include <functional>
#include <optional>

#include "db/cv_record.h"
#include "db/database.h"
#include "db/record_set.h"

namespace lokari {

class Prompt;

class VehicleRecord {
 public:
  /// Throws WrongCall where there is no such vehicle, or none that has CVs.
  VehicleRecord(const QString& dbPath, const QString& collection, int address);

  const Database& database() const { return database_; }
  QString address() const { return records_.text(QStringLiteral("DC_ADR")); }

  enum class Stored {
    Done,
    NotTheSameDecoder,  ///< others have given the vehicle another address or type: nothing stored
  };
  /// Stores what `take` makes of the sets as they are in the file by now: others may have changed
  /// the vehicle during a long job. A file that is held is waited for. `address` is a new one, or
  /// nothing.
  Stored store(Prompt& prompt, const std::function<void(CvRecord&)>& take,
               const std::optional<QString>& address);

  CvRecord cvs;
  /// The sets as the command began, and as store() found them.
  const CvRecord& opened() const { return opened_; }
  const CvRecord& found() const { return found_; }

 private:
  void load();
  Stored storeOnce(const std::function<void(CvRecord&)>& take,
                   const std::optional<QString>& address);

  Database database_;
  RecordSet records_;
  CvRecord opened_;
  CvRecord found_;
  QString openedAddress_;
};

}  // namespace lokari
