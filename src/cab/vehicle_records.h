// What cabs read from the vehicle database, and the one thing they write there: CVs that were
// changed while the vehicle was running.
#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>

#include "db/cv_record.h"

namespace lokari {

class DatabaseSession;
class Prompt;

/// The record that a cab was opened for.
struct CabRecord {
  QString database;         ///< path of the database it is in
  qint64 recNo = 0;         ///< `dc_recno`; 0 for a record that is not stored yet
  QString shortName;        ///< `st_sname`
  QString collection = {};  ///< `dc_coll`
  QString maker;            ///< `DC_MANUF_TEXT` of its manufacturer, empty for none
  CvRecord cvs;
  QByteArray picture;  ///< as an encoded file, empty for none
};

/// A CV as its record holds it.
struct StoredCV {
  int value = 0;        ///< 0 to 255
  char mark = kNoMark;  ///< what is known of the value

  static constexpr char kNoMark = '\0';

  friend bool operator==(const StoredCV&, const StoredCV&) = default;
};

/// What became of storing a CV.
struct StoredChange {
  enum class Outcome {
    Stored,
    NoRecord,  ///< there is none that could say anything wrong
    Failed,    ///< `fault` says why
  };

  Outcome outcome = Outcome::NoRecord;
  StoredCV before = {};  ///< what stood there, when it was stored
  QString fault = {};    ///< for the user
};

class VehicleRecords {
 public:
  /// Without a session there are no records. Both must outlive the object.
  VehicleRecords(DatabaseSession* session, Prompt& prompt) : session_(session), prompt_(prompt) {}

  /// The record on show. Its CV arrays are filled when they were not yet.
  CabRecord onShow() const;
  /// `ST_SNAME` of the first record with that address; empty without one.
  QString nameOf(int address) const;
  /// Runs `work` now, or behind the change of the whole database that is being made.
  void whenFree(const std::function<void()>& work);
  /// Waits until no other program holds the file of the record any more; what `beside` gives lives
  /// while the box is open. False when the user gave up.
  bool awaitFree(const CabRecord& record, const std::function<std::shared_ptr<void>()>& beside);
  /// Puts CV `number`, from 1, into set `set`, 1 to 5, of the record, and, when it is the one on
  /// show, into what the main window keeps of it. Shows no box: it may be called in an exchange.
  StoredChange storeCV(const CabRecord& record, int set, int number, const StoredCV& cv);

 private:
  /// The record's database is the one that is open.
  bool isOpen(const CabRecord& record) const;
  StoredChange store(const CabRecord& record, int set, int number, const StoredCV& cv);
  bool isOnShow(const CabRecord& record) const;

  DatabaseSession* session_;
  Prompt& prompt_;
};

}  // namespace lokari
