// Byte strings: the form of every wire message. One element is one byte, never a character.
#pragma once

#include <QByteArray>

#include <initializer_list>

namespace lokari {

/// A byte string from its values, each 0 to 255: bytes({0x21, 0x81, 0xA0}).
QByteArray bytes(std::initializer_list<int> values);

/// The byte at `index`, or -1 when the string ends before it. Parsers read through it, so that a
/// short message can never be over-read.
int byteAt(const QByteArray& data, qsizetype index);

/// Appends the low eight bits of `value`, which must be 0 to 255.
void appendByte(QByteArray& data, int value);

/// Blank-separated hexadecimal digits, upper case: what logs and failure texts show.
QString hexDump(const QByteArray& data);

/// The last two of the eight hexadecimal digits of `n`.
quint8 byteLow(qint32 n);
/// Digits 5 and 6 of the eight hexadecimal digits of `n`.
quint8 byteSecond(qint32 n);
/// The last four of the eight hexadecimal digits of `n`, signed.
qint16 wordLow(qint32 n);
/// The first four of the eight hexadecimal digits of `n`, signed.
qint16 wordHigh(qint32 n);

}  // namespace lokari
