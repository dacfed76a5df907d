// Files of speed tables, `.spd`: one line of numbers separated by ",".
#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace lokari {

/// What a file holds, or why it cannot be used.
struct SpdFile {
  std::vector<int> values;
  QString fault;  ///< a German sentence that begins with "Datei "; empty for a good file
};

/// Reads the first line. Characters other than digits and "," are dropped, a number above `highest`
/// is cut to it, and any number of values is welcome. At fault is a file that cannot be read, whose
/// first line is no text, or has no number.
SpdFile readSpdFile(const QString& path, int highest);

/// The line of a file: the numbers without blanks, ended by CR LF.
QByteArray spdLine(const std::vector<int>& values);

/// The first of "Tab1.spd", "Tab2.spd" and so on that the folder does not have.
QString freeSpdName(const QString& folder);

/// The path with ".spd" behind it when the file's name has no ".".
QString withSpdExtension(const QString& path);

}  // namespace lokari
