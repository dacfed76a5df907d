// What cabs read from the vehicle database, and the one thing they write there: CVs that were
// changed while the vehicle was running.
#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

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

/// A CV with its new value.
struct ChangedCV {
  int number = 0;  ///< from 1
  int value = 0;   ///< 0 to 255
};

class VehicleRecords {
 public:
  /// Without a session there are no records. Both must outlive the object.
  VehicleRecords(DatabaseSession* session, Prompt& prompt) : session_(session), prompt_(prompt) {}

  /// The record on show. Its CV arrays are filled when they were not yet.
  CabRecord onShow() const;
  /// `ST_SNAME` of the first record with that address; empty without one.
  QString nameOf(int address) const;
  /// Puts changed CVs into set `set`, 1 to 5, of the record, and, when it is the one on show, into
  /// what the main window keeps of it. Nothing happens when the record is gone; a failure of the
  /// storage is told. While the whole database is being changed they wait for its end.
  void storeCVs(const CabRecord& record, int set, const std::vector<ChangedCV>& changes);

 private:
  void store(const CabRecord& record, int set, const std::vector<ChangedCV>& changes);
  bool isOnShow(const CabRecord& record) const;

  DatabaseSession* session_;
  Prompt& prompt_;
};

}  // namespace lokari
