// The catalogue on disk: below the data folder each maker has a folder, and in it each decoder type
// its description file, "<type>.dec".
//
// Nothing here fails: what cannot be made or removed stays as it is, since the rows of the database
// count. A name that would lead out of its folder names no file at all.
#pragma once

#include <QString>

namespace lokari {

class CatalogueFiles {
 public:
  explicit CatalogueFiles(QString appPath) : appPath_(std::move(appPath)) {}

  void makeFolder(const QString& maker) const;
  /// Only an empty folder goes.
  void removeFolder(const QString& maker) const;
  /// True when description files of `maker` would not be found under the name `other`.
  bool folderStaysBehind(const QString& maker, const QString& other) const;

  /// Gives a type without a description file a copy of the maker's default file or, without that,
  /// of the common one.
  void addDescription(const QString& maker, const QString& type) const;
  void removeDescription(const QString& maker, const QString& type) const;
  /// True when the description file of `type` would not be found under the name `other`.
  bool descriptionStaysBehind(const QString& maker, const QString& type,
                              const QString& other) const;

 private:
  QString place(const QStringList& names) const;

  QString appPath_;
};

}  // namespace lokari
