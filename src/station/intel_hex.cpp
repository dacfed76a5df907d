#include "station/intel_hex.h"

#include <QIODevice>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "base/numbers.h"

namespace lokari {
namespace {

constexpr qsizetype kHeadLength = 10;
/// Start, count, address, type and checksum: a record without data.
constexpr qsizetype kFrameLength = 11;
/// A record of 255 bytes. What stands behind it in its line is read past, however much it is.
constexpr qsizetype kLongestRecord = kFrameLength + qsizetype{255} * 2;
constexpr int kBlockSize = 16;

QString endLine() {
  return QStringLiteral(":00000001FF");
}

/// The next line without its end; nothing at the end of the file.
std::optional<QString> nextLine(QIODevice& file) {
  QByteArray line;
  bool any = false;
  char c = 0;
  while (file.getChar(&c)) {
    any = true;
    if (c == '\n') break;
    if (c == '\r') {
      if (file.getChar(&c) && c != '\n') file.ungetChar(c);
      break;
    }
    if (line.size() < kLongestRecord) line.append(c);
  }
  if (!any) return std::nullopt;
  return QString::fromLatin1(line);
}

/// The numbers in a record. Where a character is no digit the number counts as 0, so that the
/// checks keep their order; good() then says that the record cannot be believed.
class Digits {
 public:
  explicit Digits(QStringView line) : line_(line) {}

  int number(qsizetype at, qsizetype length) {
    const auto value = parseHex(line_.mid(at, length));
    if (!value) good_ = false;
    return static_cast<int>(value.value_or(0));
  }
  int byte(qsizetype at) { return number(at, 2); }
  bool good() const { return good_; }

 private:
  QStringView line_;
  bool good_ = true;
};

/// Reads one record into the image and counts its data bytes.
std::optional<HexError> takeRecord(QStringView line, QByteArray& image, int& dataBytes) {
  if (!line.startsWith(u':')) return HexError::LineStart;
  if (line.size() < kHeadLength) return HexError::LineTooShort;
  Digits digits(line);
  const int count = digits.byte(1);
  const int address = digits.number(3, 4);
  if (line.mid(7, 2) != QLatin1String("00")) return HexError::LineType;
  if (line.size() < qsizetype{count} * 2 + kFrameLength) return HexError::LineTooShort;
  if (address + count > firmSize) return HexError::Address;
  int sum = count + address / 256 + address % 256;
  for (int i = 0; i < count; ++i) {
    const int value = digits.byte(9 + qsizetype{2} * i);
    image[address + i] = static_cast<char>(value);
    sum += value;
  }
  dataBytes += count;
  sum += digits.byte(9 + qsizetype{2} * count);
  if (sum % 256 != 0 || !digits.good()) return HexError::Checksum;
  return std::nullopt;
}

}  // namespace

QString hexErrorText(HexError error) {
  static constexpr std::array kTexts{
      u"Unerwartetes Ende",     u"Unerwarteter Zeilenanfang", u"Zu kurze Zeile",
      u"Ungültiger Zeiltentyp", u"Ungültige Adresse (>64K)",  u"Prüfsummen-Fehler",
  };
  return QStringView(kTexts[static_cast<size_t>(error) - 1]).toString();
}

std::variant<Firmware, HexFault> readIntelHex(QIODevice& file) {
  Firmware firmware;
  int dataBytes = 0;
  for (int number = 1;; ++number) {
    const std::optional<QString> line = nextLine(file);
    if (!line) return HexFault{HexError::UnexpectedEnd, number};
    if (*line == endLine()) break;
    if (const auto error = takeRecord(*line, firmware.firmImage, dataBytes)) {
      return HexFault{*error, number};
    }
  }
  firmware.firmBlocks =
      std::max(1, static_cast<int>(std::nearbyint(dataBytes / double{kBlockSize})));
  return firmware;
}

}  // namespace lokari
