// INI files: the settings file and the port table. Three operations with the semantics their users
// rely on; everything that a write does not touch stays as it is, comments included.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace lokari {

/// What an INI file held at one moment: values that belong together are taken from the same file.
class IniState {
 public:
  IniState() = default;
  explicit IniState(QStringList lines) : lines_(std::move(lines)) {}

  /// The text of a key. Section and key are compared without regard to case, the first match
  /// counts. Blanks around the value and one pair of quotes (single or double) around it go. The
  /// result has at most `size` - 1 characters, since the limit includes a terminator. A missing
  /// key or file gives `fallback` as it stands.
  QString getString(const QString& section, const QString& key, const QString& fallback,
                    int size) const;

  /// The number that the value's leading digits make, 0 when it has none; a missing key or file
  /// gives `fallback`. A number above 2147483647 is cut to it.
  int getInt(const QString& section, const QString& key, int fallback) const;

 private:
  std::optional<QString> valueOf(const QString& section, const QString& key) const;

  QStringList lines_;
};

struct IniEntry {
  QString key;
  QString value;
};

class IniFile {
 public:
  /// Names a file; it need not exist. It is read anew by every operation, since the user may edit
  /// it while the program runs. A pipe or a device is no such file.
  explicit IniFile(QString path);

  const QString& path() const { return path_; }

  /// Reads the file once.
  IniState read() const;

  /// One value of read().
  QString getString(const QString& section, const QString& key, const QString& fallback,
                    int size) const {
    return read().getString(section, key, fallback, size);
  }
  int getInt(const QString& section, const QString& key, int fallback) const {
    return read().getInt(section, key, fallback);
  }

  /// Sets keys in their order, each in its place if it exists, else at the end of its section,
  /// which is made if need be. Line ends in a value become blanks. The file is replaced once and as
  /// a whole: it holds all of them or none. It keeps every other byte and its encoding; a new one
  /// is windows-1252 with CR LF. A value that windows-1252 cannot hold turns the file into UTF-8
  /// with a byte-order mark. False when it could not be written; the old file then stands.
  bool writeAll(const QString& section, const QList<IniEntry>& entries);
  /// The same for one key.
  bool writeString(const QString& section, const QString& key, const QString& value) {
    return writeAll(section, {{key, value}});
  }

 private:
  QString path_;
};

}  // namespace lokari
