// INI files: the settings file and the port table. Three operations with the semantics their users
// rely on; everything that a write does not touch stays as it is, comments included.
#pragma once

#include <QString>

namespace lokari {

class IniFile {
 public:
  /// Names a file; it need not exist. It is read anew by every operation, since the user may edit
  /// it while the program runs.
  explicit IniFile(QString path);

  const QString& path() const { return path_; }

  /// The text of a key. Section and key are compared without regard to case, the first match
  /// counts. Blanks around the value and one pair of quotes (single or double) around it go. The
  /// result has at most `size` - 1 characters, since the limit includes a terminator. A missing
  /// key or file gives `fallback` as it stands.
  QString getString(const QString& section, const QString& key, const QString& fallback,
                    int size) const;

  /// The number that the value's leading digits make, 0 when it has none; a missing key or file
  /// gives `fallback`. A number above 2147483647 is cut to it.
  int getInt(const QString& section, const QString& key, int fallback) const;

  /// Sets a key, in its place if it exists, else at the end of its section, which is made if need
  /// be. Line ends in `value` become blanks. The file is replaced atomically and keeps every other
  /// byte and its encoding; a new one is windows-1252 with CR LF. A value that windows-1252 cannot
  /// hold turns the file into UTF-8 with a byte-order mark. False when it could not be written;
  /// the old file then stands.
  bool writeString(const QString& section, const QString& key, const QString& value);

 private:
  QString path_;
};

}  // namespace lokari
