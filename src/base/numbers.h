// The number and text rules that every room leans on: what counts as a number, how a text becomes
// a 16-bit integer, and how a number is printed.
#pragma once

#include <QString>

#include <optional>
#include <stdexcept>

namespace lokari {

/// A text or number that does not fit the 16-bit signed integers the system calculates with,
/// or a text that is no number where one is needed.
class NumberError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The number that the whole text stands for, or nothing.
///
/// Blanks around it are allowed, then a sign, digits with one decimal separator ("," or "."), and
/// an exponent ("1e3"). Where both separators occur the later one is the decimal separator and the
/// earlier ones group thousands by three digits ("1.234,50"). A separator that occurs more than
/// once without the other makes a list, not a number.
std::optional<double> parseNumber(QStringView text);

/// True when parseNumber() finds a number.
bool isNumeric(QStringView text);

/// The number that the text begins with: leading blanks, a sign, digits and one ".". 0 when the
/// text begins with no number. Never fails.
double numericPrefix(QStringView text);

/// Rounds to the nearest integer, ties to the even one. Outside -32768 to 32767 it throws
/// NumberError.
qint16 toInt16(double value);

/// toInt16() of a numeric text. A text that is not numeric throws NumberError.
qint16 toInt16(QStringView text);

/// Rounds to the nearest integer, ties to the even one, cut to 0 to 255: how a computed value
/// enters a CV.
quint8 toCvByte(double value);

/// A number as the system prints it: a blank in front of a value of 0 or more, a "-" otherwise.
QString printed(qint64 value);

/// Upper-case hexadecimal without padding; a negative value is taken as 32 bits.
QString hex(qint64 value);

/// hex() with a leading "0" when it has one digit; longer numbers are not cut.
QString hexPadded(qint64 value);

/// The value of a text of hexadecimal digits, or nothing when one of its characters is none or the
/// text is empty or longer than 8 digits.
std::optional<quint32> parseHex(QStringView text);

}  // namespace lokari
