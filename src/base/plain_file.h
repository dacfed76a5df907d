// A file whose name came from outside, opened to be read: a plain file, or none.
#pragma once

#include <QFile>
#include <QString>

namespace lokari {

/// What stands there instead of a plain file: "Sie ist keine gewöhnliche Datei, sondern eine
/// Pipe.", `subject` being its beginning. Empty for a plain file and for nothing at all.
QString specialFileFault(const QString& path, const QString& subject = QStringLiteral("Sie"));

/// A pipe would be waited for and a device may never end, so neither of them is opened. Whoever
/// reads a file takes this class; a check of the sources sees to it.
class PlainFile final : public QFile {
 public:
  explicit PlainFile(const QString& path) : QFile(path), path_(path) {}

  QString fileName() const override { return path_; }

  /// For reading only. False with errorString().
  bool open();

 private:
  using QFile::open;

  QString path_;
};

/// Copies a plain file to a place where nothing is.
bool copyPlainFile(const QString& from, const QString& to);

}  // namespace lokari
