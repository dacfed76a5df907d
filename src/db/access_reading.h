// One run of lokari-access-reader: its stream, taken apart and trusted in nothing.
#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QVariant>

#include "db/access_stream.h"

namespace lokari {

/// The reader as a program.
struct AccessReader {
  QString program;         ///< full path
  int silenceMs = 15'000;  ///< what it may keep silent before it counts as hung
};

/// The reader that stands beside this program, in the folder `programs`.
AccessReader accessReaderIn(const QString& programs);

class AccessReading {
 public:
  /// Starts the reader with a command of db/access_stream.h on a file. Throws StorageError:
  /// kMediumFailed when the reader cannot be started or is none.
  AccessReading(const AccessReader& reader, const QString& path, const QString& command,
                const QStringList& arguments = {});
  AccessReading(const AccessReading&) = delete;
  AccessReading& operator=(const AccessReading&) = delete;

  /// What follows in the stream. Each throws StorageError with kDamaged when the reader dies, hangs
  /// or tells what cannot be, or more than the file can hold.
  AccessRecord record();
  AccessFailure failure() { return static_cast<AccessFailure>(number(1)); }
  QString text();
  /// Not more than the file has bytes.
  int count();
  QVariant value();

  [[noreturn]] static void throwDamaged();

 private:
  bool beginsWithMagic();
  quint64 number(int bytes);
  QByteArray counted();
  QByteArray take(qint64 bytes);

  /// Ends the reader, which may hang, on every road.
  class Process : public QProcess {
   public:
    ~Process() override;
  };

  Process process_;
  int silenceMs_;
  qint64 fileSize_;
  qint64 rest_;  ///< bytes that may still come
  QByteArray block_;
  qsizetype position_ = 0;  ///< in the block
};

}  // namespace lokari
