// What a storage operation throws: a number and a German text that the user can read.
#pragma once

#include <QString>

#include <stdexcept>

namespace lokari {

/// Numbers of storage errors. Only `kDuplicateKey` has a text of its own on the form.
namespace storage_error {
inline constexpr int kSyntax = 3075;         ///< a condition or order that is not understood
inline constexpr int kUnknownName = 3061;    ///< no such table or column
inline constexpr int kTypeMismatch = 3464;   ///< text compared with a number or the reverse
inline constexpr int kNotEditing = 3020;     ///< Update or a new value without AddNew or Edit
inline constexpr int kNoRecord = 3021;       ///< there is no current record
inline constexpr int kDuplicateKey = 3022;   ///< a unique index refuses the record
inline constexpr int kTooLong = 3163;        ///< the text is longer than its column
inline constexpr int kNullField = 3314;      ///< a field that must have a value has none
inline constexpr int kNotNumeric = 3421;     ///< the text is no number, or too large for its column
inline constexpr int kRecordDeleted = 3167;  ///< the record is gone
inline constexpr int kRecordChanged =
    3197;                               ///< somebody else changed the record, see RecordChanged
inline constexpr int kReadOnly = 3027;  ///< the file cannot be written
inline constexpr int kBusy = 3008;    ///< a transaction of this program runs, see joinTransaction()
inline constexpr int kLocked = 3260;  ///< another program holds the file
inline constexpr int kDiskFull = 3183;      ///< no room for the change
inline constexpr int kMediumFailed = 3043;  ///< the disk or network fails to read or write
inline constexpr int kFileMoved = 3024;     ///< the open file was deleted, renamed or replaced
inline constexpr int kNoDatabase = 3343;    ///< the file is no database of this program
inline constexpr int kAccessFile = 3345;    ///< the file is a database of Access
inline constexpr int kNewerFormat = 3344;   ///< the file comes from a newer version
inline constexpr int kDamaged = 3049;       ///< the file is damaged
inline constexpr int kOther = 3000;         ///< everything else, with the engine's own words
}  // namespace storage_error

class StorageError : public std::runtime_error {
 public:
  StorageError(int code, const QString& text)
      : std::runtime_error(text.toStdString()), code_(code), text_(text) {}

  int code() const { return code_; }
  const QString& text() const { return text_; }

 private:
  int code_;
  QString text_;
};

/// A row that is looked for is not in the file any more.
inline StorageError recordDeleted() {
  return {storage_error::kRecordDeleted, QStringLiteral("Der Datensatz wurde gelöscht.")};
}

}  // namespace lokari
