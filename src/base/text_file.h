// Text files of this system are windows-1252; one with a UTF-8 byte-order mark is UTF-8.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace lokari {

/// The text of a file's bytes. Data that begins with the UTF-8 byte-order mark and is valid UTF-8
/// is read as such (the mark dropped), everything else as windows-1252.
QString decodeText(const QByteArray& data);

/// Whether decodeText() takes the data for UTF-8.
bool isMarkedUtf8(const QByteArray& data);

/// windows-1252; a character it lacks becomes "?".
QByteArray encodeWindows1252(const QString& text);

/// UTF-8 with its byte-order mark.
QByteArray encodeMarkedUtf8(const QString& text);

/// Lines without their ends; LF, CR LF and a lone CR end a line. A final line end adds no line.
QStringList splitLines(const QString& text);

/// The whole file, or nothing when it cannot be read. Pipes and devices are not read.
std::optional<QByteArray> readPlainFile(const QString& path);

/// The whole decoded file, or nothing when it cannot be read. Pipes and devices are not read.
std::optional<QString> readTextFile(const QString& path);

/// Replaces the file as writeFileAtomically() does, and says in German what kept it from doing so;
/// empty on success.
QString replaceFile(const QString& path, const QByteArray& data);

/// Replaces the file only after the new one is complete on disk. False when that failed; the old
/// file then stands as it was.
bool writeFileAtomically(const QString& path, const QByteArray& data);

}  // namespace lokari
