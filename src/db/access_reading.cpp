#include "db/access_reading.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <bit>

#include "db/storage_error.h"

namespace lokari {
namespace {

constexpr int kStartMs = 10'000;
constexpr int kEndMs = 2'000;
constexpr double kAmountPlaces = 10000.0;
// A row of empty columns and a text that compression halves take more room in the stream than in
// the file, but never so much. Values that several rows share, which Access does not make, would.
constexpr qint64 kLargestGrowth = 16;
constexpr qint64 kSmallFile = 1 << 20;

}  // namespace

AccessReader accessReaderIn(const QString& programs) {
  return {programs + QStringLiteral("/lokari-access-reader")};
}

AccessReading::AccessReading(const AccessReader& reader, const QString& path,
                             const QString& command, const QStringList& arguments)
    : silenceMs_(reader.silenceMs),
      fileSize_(QFileInfo(path).size()),
      rest_(std::max(fileSize_, kSmallFile) * kLargestGrowth) {
  process_.setStandardErrorFile(QProcess::nullDevice());
  process_.start(reader.program,
                 QStringList{command, QFileInfo(path).absoluteFilePath()} + arguments,
                 QIODevice::ReadOnly);
  if (!process_.waitForStarted(kStartMs) || !beginsWithMagic()) {
    throw StorageError(storage_error::kMediumFailed,
                       QStringLiteral("Access-Dateien liest das Programm %1.\n"
                                      "Es fehlt oder kann nicht gestartet werden, "
                                      "Programmneuinstallation kann erforderlich sein.")
                           .arg(QDir::toNativeSeparators(reader.program)));
  }
}

// It comes before the reader looks at the file, which therefore cannot be to blame.
bool AccessReading::beginsWithMagic() {
  try {
    return take(sizeof kAccessMagic) == QByteArray(kAccessMagic, sizeof kAccessMagic);
  } catch (const StorageError&) {
    return false;
  }
}

AccessReading::Process::~Process() {
  kill();
  waitForFinished(kEndMs);
}

AccessRecord AccessReading::record() {
  const auto record = static_cast<AccessRecord>(number(1));
  if (record != AccessRecord::Failure) return record;
  if (failure() == AccessFailure::NoTable) return record;
  throwDamaged();
}

QString AccessReading::text() {
  return QString::fromUtf8(counted());
}

int AccessReading::count() {
  const quint64 count = number(4);
  if (count > static_cast<quint64>(fileSize_)) throwDamaged();
  return static_cast<int>(count);
}

QVariant AccessReading::value() {
  switch (static_cast<AccessValue>(number(1))) {
    case AccessValue::Null:
      return {};
    case AccessValue::Number:
      return static_cast<int>(static_cast<qint32>(number(4)));
    case AccessValue::Amount:
      return static_cast<double>(static_cast<qint64>(number(8))) / kAmountPlaces;
    case AccessValue::Real:
      return std::bit_cast<double>(number(8));
    case AccessValue::Text: {
      // A null QString would count as Null, which an empty text is not.
      const QString value = text();
      return value.isNull() ? QStringLiteral("") : value;
    }
    case AccessValue::Bytes:
      return counted();
  }
  throwDamaged();
}

void AccessReading::throwDamaged() {
  throw StorageError(storage_error::kDamaged,
                     QStringLiteral("Die Access-Datei ist beschädigt oder nicht lesbar."));
}

quint64 AccessReading::number(int bytes) {
  const QByteArray data = take(bytes);
  quint64 number = 0;
  for (int i = bytes; i-- > 0;) number = number << 8U | static_cast<quint8>(data[i]);
  return number;
}

QByteArray AccessReading::counted() {
  return take(static_cast<qint64>(number(4)));
}

QByteArray AccessReading::take(qint64 bytes) {
  rest_ -= bytes;
  if (rest_ < 0) throwDamaged();
  QByteArray data("");
  while (true) {
    const qsizetype piece = std::min<qsizetype>(bytes - data.size(), block_.size() - position_);
    data.append(block_.constData() + position_, piece);
    position_ += piece;
    if (data.size() == bytes) return data;
    if (process_.bytesAvailable() == 0 && !process_.waitForReadyRead(silenceMs_)) throwDamaged();
    block_ = process_.readAllStandardOutput();
    position_ = 0;
  }
}

}  // namespace lokari
