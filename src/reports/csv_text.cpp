#include "reports/csv_text.h"

#include <string_view>

namespace lokari {
namespace {

// Characters with a meaning, and their stand-ins at the same place. No value holds one of these,
// since control characters become blanks.
constexpr std::string_view kMeaning = ";,\t\"\r\n";
constexpr std::string_view kStandIns = "\x11\x12\x13\x14\x15\x16";

/// Ahead of a value that is text.
constexpr char kTextSign = '\x18';
/// With one of these at its beginning a spreadsheet calculates a cell.
constexpr std::string_view kFormulaSigns = "=+-@";
constexpr std::string_view kInNumbers = "0123456789.,%eE+-";

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

/// "218", "007", "12,50", "1E5": in whatever country the spreadsheet is at home.
bool looksLikeNumber(const QByteArray& cell) {
  const std::string_view text(cell.constData(), static_cast<size_t>(cell.size()));
  if (text.find_first_not_of(kInNumbers) != std::string_view::npos) return false;
  const bool startsLikeOne = isDigit(text.front()) || (text.size() > 1 && isDigit(text[1]));
  return startsLikeOne && text.front() != 'e' && text.front() != 'E';
}

bool needsApostrophe(const QByteArray& cell) {
  if (cell.isEmpty()) return false;
  return kFormulaSigns.find(cell.front()) != std::string_view::npos || looksLikeNumber(cell);
}

bool isControl(char c) {
  return static_cast<unsigned char>(c) < 0x20;
}

/// Reads the rendered text character by character and writes the cells anew.
class Quoter {
 public:
  Quoter(const std::string& text, char separator) : text_(text), separator_(separator) {}

  QByteArray run() {
    // Few values need quotes.
    const auto size = static_cast<qsizetype>(text_.size());
    out_.reserve(size + size / 8);
    while (at_ < text_.size()) take(text_[at_++]);
    if (!cell_.isEmpty() || hasCells_) endLine();
    return out_;
  }

 private:
  void take(char c) {
    if (inQuotes_) {
      takeQuoted(c);
    } else if (c == '"' && cell_.isEmpty()) {
      inQuotes_ = true;
    } else if (c == separator_) {
      endCell();
      out_ += separator_;
      hasCells_ = true;
    } else if (c == '\n') {
      endLine();
    } else if (c != '\r') {
      takePlain(c);
    }
  }

  void takeQuoted(char c) {
    if (c != '"') return takePlain(c);
    const bool isDoubled = at_ < text_.size() && text_[at_] == '"';
    if (!isDoubled) {
      inQuotes_ = false;
      return;
    }
    ++at_;
    takePlain(c);
  }

  void takePlain(char c) {
    if (c == kTextSign) {
      beginsWithText_ = beginsWithText_ || cell_.isEmpty();
      return;
    }
    const size_t guarded = kStandIns.find(c);
    cell_ += guarded == std::string_view::npos ? c : kMeaning[guarded];
  }

  void endCell() {
    if (beginsWithText_ && needsApostrophe(cell_)) cell_.prepend('\'');
    beginsWithText_ = false;
    const bool needsQuotes = cell_.contains(separator_) || cell_.contains('"') ||
                             cell_.contains('\n') || cell_.contains('\r');
    out_ += needsQuotes ? '"' + cell_.replace("\"", "\"\"") + '"' : cell_;
    cell_.clear();
    inQuotes_ = false;
  }

  void endLine() {
    endCell();
    out_ += "\r\n";
    hasCells_ = false;
  }

  const std::string& text_;
  const char separator_;
  size_t at_ = 0;
  QByteArray cell_;
  QByteArray out_;
  bool inQuotes_ = false;
  bool beginsWithText_ = false;
  bool hasCells_ = false;  ///< on this line, ahead of the one being read
};

}  // namespace

std::string csvGuarded(const QString& value) {
  std::string text = value.toStdString();
  for (char& c : text) {
    const size_t meaning = kMeaning.find(c);
    if (meaning != std::string_view::npos) {
      c = kStandIns[meaning];
    } else if (isControl(c)) {
      c = ' ';
    }
  }
  return text;
}

std::string csvGuardedText(const QString& value) {
  // What is empty stays so: templates ask for it.
  return value.isEmpty() ? std::string() : kTextSign + csvGuarded(value);
}

char csvSeparator(const QString& text) {
  for (const QChar c : text) {
    if (c == u';' || c == u',' || c == u'\t') return c.toLatin1();
  }
  return ';';
}

QByteArray csvQuoted(const std::string& text, char separator) {
  return Quoter(text, separator).run();
}

}  // namespace lokari
