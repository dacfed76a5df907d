#include "db/kept_files.h"

#include <QDir>

#include "base/text_file.h"
#include "db/storage_error.h"

namespace lokari {

QString KeptFiles::keep(const QString& what, const QString& extension, const QByteArray& data) {
  const QString name = QStringLiteral("%1 %2.%3").arg(what).arg(count_ + 1).arg(extension);
  keepAs(name, data);
  return name;
}

void KeptFiles::keepAs(const QString& name, const QByteArray& data) {
  const QDir folder(folder_);
  if (!folder.mkpath(QStringLiteral(".")) || !writeFileAtomically(folder.filePath(name), data)) {
    throw StorageError(
        storage_error::kMediumFailed,
        QStringLiteral("Die Datei %1 kann nicht geschrieben werden.").arg(folder.filePath(name)));
  }
  ++count_;
}

}  // namespace lokari
