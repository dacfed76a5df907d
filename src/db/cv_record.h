// The working copy of a record's decoder data: five CV sets, the decoder's type, the set in use.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <array>

#include "db/cv_columns.h"

namespace lokari {

/// Bytes of a stored array of values or marks: byte k belongs to internal CV index k + 1.
inline constexpr qsizetype kCvFieldBytes = 4865;

struct CvRecord {
  std::array<QByteArray, kCvSetCount> recCvValues;
  std::array<QByteArray, kCvSetCount> recCvMarks;
  std::array<QString, kCvSetCount> recCvName;
  qint16 recManuf = 0;  ///< 0: none
  QString recDecoder;
  QString recSetName;  ///< name of the set that was current when the record was saved

  /// False until a record was shown or InitDcData() ran: the arrays are still empty.
  bool hasArrays() const { return !recCvValues[0].isEmpty(); }

  /// Another address was put in by hand: no set has read or written it, whichever CVs carry it.
  void clearAddressMarks();

  /// Empties everything: values and marks become kCvFieldBytes zeros, the names empty, no decoder.
  void InitDcData();
};

/// The same for a stored array of marks.
QByteArray withoutAddressMarks(QByteArray marks);

/// A stored array at full size: Null gives zeros, a shorter field keeps its bytes and has zeros
/// behind them, a longer one stays as it is.
QByteArray chkCVVar(const QVariant& field);

/// One CV of a set as its record holds it by now.
struct CvPlace {
  int set;     ///< 1 to 5
  int number;  ///< from 1
  int value;   ///< 0 to 255
  char mark;
};

/// A stored array of values with that CV's, at full size.
QByteArray withValue(const QVariant& values, const CvPlace& cv);
/// A stored array of marks with that CV's. One that says so already stays as it is: a record
/// without marks needs none for a CV of which nothing is known.
QVariant withMark(const QVariant& marks, const CvPlace& cv);

class RecordSet;

/// The columns that loadCvRecord() reads.
QStringList cvRecordColumns();

/// Reads the working copy from the current record. Throws StorageError; `record` is then as it was.
void loadCvRecord(RecordSet& records, CvRecord& record);

/// Assigns the fifteen CV columns in their order, then DC_MANUF, DC_DECODER and DC_DEC_VER. The
/// record set must be in an edit. Throws StorageError.
void assignCvRecord(RecordSet& records, const CvRecord& record);

}  // namespace lokari
