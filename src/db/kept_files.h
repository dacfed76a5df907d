// What a new database has no place for, kept in files beside it.
#pragma once

#include <QByteArray>
#include <QString>

namespace lokari {

class KeptFiles {
 public:
  /// `folder` is made with the first file.
  explicit KeptFiles(QString folder) : folder_(std::move(folder)) {}

  const QString& folder() const { return folder_; }

  /// Keeps the data in a file "<what> <n>.<extension>" and gives its name. Throws StorageError.
  QString keep(const QString& what, const QString& extension, const QByteArray& data);
  /// The same under a name of its own.
  void keepAs(const QString& name, const QByteArray& data);

 private:
  QString folder_;
  int count_ = 0;
};

}  // namespace lokari
