#include "sim/mx1_text_lines.h"

namespace lokari::sim {
namespace {

constexpr int kLongAddressBase = 192;

/// Takes digits from the front of a line; once something does not fit, nothing does any more.
class Digits {
 public:
  explicit Digits(QByteArray text) : text_(std::move(text)) {}

  /// The number of the next `count` digits.
  int take(qsizetype count) {
    const QByteArray part = text_.left(count);
    text_.remove(0, count);
    int number = 0;
    for (const char c : part) {
      const bool digit = c >= '0' && c <= '9';
      const bool letter = c >= 'A' && c <= 'F';
      if (!digit && !letter) good_ = false;
      number = number * 16 + (digit ? c - '0' : c - 'A' + 10);
    }
    if (part.size() != count) good_ = false;
    return good_ ? number : 0;
  }

  void expect(const QByteArray& text) {
    if (!text_.startsWith(text)) good_ = false;
    text_.remove(0, text.size());
  }

  /// A CV number: all that stands before the last `behind` characters, two to four digits.
  int takeCv(qsizetype behind) {
    const qsizetype count = text_.size() - behind;
    if (count < 2 || count > 4) good_ = false;
    return good_ ? take(count) : 0;
  }

  /// True when everything fitted and the line is used up.
  bool good() const { return good_ && text_.isEmpty(); }

 private:
  QByteArray text_;
  bool good_ = true;
};

QByteArray twoDigits(int number) {
  return QByteArray::number(number, 16).toUpper().rightJustified(2, '0');
}

std::optional<Mx1Command> ifGood(const Digits& digits, const Mx1Command& command) {
  if (!digits.good()) return {};
  return command;
}

std::optional<Mx1Command> writeMainFrom(const QByteArray& line) {
  Mx1Command command{.kind = Mx1Command::Kind::WriteMain};
  Digits digits(line.mid(1));
  command.index = digits.take(2);
  const bool isLong = digits.take(2) == 0x15;
  if (isLong) {
    const int high = digits.take(2);
    command.address = (high - kLongAddressBase) * 256 + digits.take(2);
    if (high < kLongAddressBase) return {};
  } else {
    if (line.mid(3, 2) != "14" || digits.take(2) != command.index) return {};
    command.address = command.index;
  }
  digits.expect("EC");
  command.cv = digits.takeCv(2) + 1;
  command.value = digits.take(2);
  return ifGood(digits, command);
}

}  // namespace

std::optional<Mx1Command> mx1CommandFrom(const QByteArray& line) {
  using Kind = Mx1Command::Kind;
  if (line.isEmpty()) return Mx1Command{.kind = Kind::WakeUp};
  if (line == "Download") return Mx1Command{.kind = Kind::Download};
  if (line == "REN" || line == "RE") return Mx1Command{.kind = Kind::Leave};
  if (line == "Z") return Mx1Command{.kind = Kind::AskState};
  Mx1Command command;
  if (line.startsWith("QN")) {
    command.kind = Kind::ReadCv;
    Digits digits(line.mid(2));
    command.cv = digits.takeCv(0);
    return ifGood(digits, command);
  }
  if (line.startsWith("RN")) {
    command.kind = Kind::WriteCv;
    Digits digits(line.mid(2));
    command.cv = digits.takeCv(2);
    command.value = digits.take(2);
    return ifGood(digits, command);
  }
  if (line.startsWith('E')) {
    command.kind = Kind::AskIndex;
    Digits digits(line.mid(1));
    command.address = digits.take(2) * 256;
    command.address += digits.take(2);
    return ifGood(digits, command);
  }
  if (line.startsWith('L')) return writeMainFrom(line);
  return {};
}

QByteArray mx1CvReply(int status, int cv, int value) {
  return "QN" + twoDigits(status) + twoDigits(cv % 256) + twoDigits(value) + "\r";
}

QByteArray mx1IndexReply(int index, int address) {
  return "E" + twoDigits(index) + twoDigits(address / 256) + twoDigits(address % 256) + "\r";
}

QByteArray mx1StateReply(int state) {
  return "Z" + twoDigits(state) + "\r";
}

QByteArray mx1Refusal() {
  return "??\r";
}

}  // namespace lokari::sim
