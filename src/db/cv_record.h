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

/// A stored array at full size: Null gives zeros, a shorter field keeps its bytes and has zeros
/// behind them, a longer one stays as it is.
QByteArray chkCVVar(const QVariant& field);

/// The stored arrays of one CV set.
struct CvArrays {
  QByteArray values;
  QByteArray marks;
};

class RecordSet;

/// The columns that loadCvRecord() reads.
QStringList cvRecordColumns();

/// Reads the working copy from the current record. Throws StorageError; `record` is then as it was.
void loadCvRecord(RecordSet& records, CvRecord& record);

/// Assigns the fifteen CV columns in their order, then DC_MANUF, DC_DECODER and DC_DEC_VER. The
/// record set must be in an edit. Throws StorageError.
void assignCvRecord(RecordSet& records, const CvRecord& record);

}  // namespace lokari
