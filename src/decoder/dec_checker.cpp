#include "decoder/dec_checker.h"

#include <QRegularExpression>

#include <algorithm>

#include "base/numbers.h"
#include "decoder/bit_description.h"
#include "decoder/dec_fields.h"
#include "decoder/dec_loader.h"
#include "decoder/func_map.h"

namespace lokari {
namespace {

constexpr int kHighestValue = 255;
constexpr int kBitsOfCv = 8;
constexpr int kMostChoices = 16;

/// A whole number of plain digits, or -1.
int plainNumber(const QString& text) {
  static const QRegularExpression digits(QStringLiteral("^[0-9]{1,5}$"));
  return digits.match(text).hasMatch() ? text.toInt() : -1;
}

QString widthFault(const QString& group, int width, const QStringList& items) {
  const qsizetype choices = items.size() - 2;
  if (width > kBitsOfCv) return QStringLiteral("Bitgruppe \"%1\": mehr als 8 Bit.").arg(group);
  if (choices > kMostChoices) {
    return QStringLiteral("Bitgruppe \"%1\": mehr als 16 Auswahltexte.").arg(group);
  }
  if (choices > (1 << width)) {
    return QStringLiteral("Bitgruppe \"%1\": mehr Auswahltexte, als %2 Bit unterscheiden.")
        .arg(group)
        .arg(width);
  }
  return {};
}

/// What is wrong inside the fields of a CV line.
class LineChecker {
 public:
  LineChecker(const DecStatement& statement, DecFaults& faults)
      : statement_(statement), faults_(faults) {}

  void check() {
    StrParts parts(statement_.value);
    QStringList fields;
    for (int i = 0; i < 6; ++i) fields << parts.next();
    if (parts.lastWasOpen() || statement_.value.count(u'"') % 2 != 0) {
      note(QStringLiteral("Ein Anführungszeichen ist nicht geschlossen."));
    }
    if (!parts.atEnd()) note(QStringLiteral("Es stehen mehr als sechs Felder da."));
    const QString range = fields[1].isEmpty() ? QStringLiteral("0-255") : fields[1];
    const QString badRange = rangeFault(range);
    if (!badRange.isEmpty()) note(badRange);
    checkDefault(fields[2], range, badRange.isEmpty());
    checkPage(fields[3]);
    const QString badBits = fields[5].isEmpty() ? QString() : bitsFault(fields[5]);
    if (!badBits.isEmpty()) note(badBits);
  }

 private:
  void note(const QString& text) {
    faults_.push_back({statement_.line, QStringLiteral("%1: %2").arg(statement_.key, text)});
  }

  void checkDefault(const QString& text, const QString& range, bool rangeIsGood) {
    constexpr int kReadOnly = 256;
    if (text.isEmpty()) return;
    const int value = plainNumber(text);
    if (value < 0) {
      note(QStringLiteral("Der Vorgabewert \"%1\" ist keine ganze Zahl.").arg(text));
    } else if (value != kReadOnly && rangeIsGood && !rangeHolds(range, value)) {
      note(QStringLiteral("Der Vorgabewert %1 liegt nicht im Bereich \"%2\".")
               .arg(value)
               .arg(range));
    }
  }

  void checkPage(const QString& text) {
    constexpr int kLastPage = 6;
    if (text.isEmpty()) return;
    const int page = plainNumber(text);
    if (page < 0 || page > kLastPage) {
      note(QStringLiteral("Die Seite \"%1\" liegt nicht zwischen 0 und 6.").arg(text));
    }
  }

  const DecStatement& statement_;
  DecFaults& faults_;
};

/// What is wrong with the description as a whole: the lines of its CVs seen together.
class WholeChecker {
 public:
  WholeChecker(const DecoderDescription& description, const std::vector<DecStatement>& statements,
               DecFaults& faults)
      : description_(description), statements_(statements), faults_(faults) {}

  void check() {
    for (int i = 2; i <= kHighestCvIndex; ++i) {
      const CvIndex cv(i);
      if (!description_.info(cv).exists() || description_.reachable(cv)) continue;
      // A CV without a page is meant to be in the grid and nowhere else.
      if (const QString key = barringKey(cv); !key.isEmpty()) {
        note(cv,
             QStringLiteral("Mit %1 kann die CV weder gelesen noch geschrieben werden.").arg(key));
      }
    }
    if (!description_.FUNCMAP) return;
    for (const FuncMapRow& row : funcMapRows(description_, QByteArray(kCvArraySize, '\0'))) {
      checkOutputs(row);
    }
  }

 private:
  /// The faults stand at the line that describes the CV.
  void note(CvIndex cv, const QString& text) {
    QString key = QStringLiteral("CV_%1").arg(description_.realNumber(cv).value());
    const CvDescriptor& entry = description_.info(cv);
    if (entry.inBank()) key += QStringLiteral("_%1").arg(entry.cvBank);
    int line = 0;
    for (const DecStatement& statement : statements_) {
      if (statement.key == key) line = statement.line;
    }
    faults_.push_back({line, QStringLiteral("%1: %2").arg(key, text)});
  }

  /// The setting that bars a CV from every job.
  QString barringKey(CvIndex cv) const {
    if (description_.PROGMODE != 0) return QStringLiteral("PROGMODE=%1").arg(description_.PROGMODE);
    return cv::inTable(cv) ? QStringLiteral("FAMILY=1") : QString();
  }

  /// The bit text of an output must not give it another number than the function mapping does.
  void checkOutputs(const FuncMapRow& row) {
    static const QRegularExpression output(QStringLiteral("Ausgang ([0-9]+)"));
    const BitDescription bits(description_.info(row.cv).cvBits);
    for (const BitGroup& group : bits.groups()) {
      const auto match = output.match(group.title);
      const int number = group.position + 1 + row.offset;
      if (!match.hasMatch() || group.type != 1 || match.captured(1).toInt() == number) continue;
      note(row.cv, QStringLiteral("\"%1\" ist in der Funktionszuordnung Ausgang %2.")
                       .arg(group.title)
                       .arg(number));
    }
  }

  const DecoderDescription& description_;
  const std::vector<DecStatement>& statements_;
  DecFaults& faults_;
};

}  // namespace

QString rangeFault(const QString& range) {
  static const QRegularExpression item(QStringLiteral("^([0-9]{1,5})(-([0-9]{1,5}))?$"));
  for (const QString& text : range.split(u',')) {
    const auto match = item.match(trimBlanks(text));
    if (!match.hasMatch()) {
      return QStringLiteral("Der Bereich \"%1\" ist keine Liste von Zahlen und Spannen.")
          .arg(range);
    }
    const int from = match.captured(1).toInt();
    const int to = match.captured(3).isEmpty() ? from : match.captured(3).toInt();
    if (to > kHighestValue || from > kHighestValue) {
      return QStringLiteral("Der Bereich \"%1\" geht über 255.").arg(range);
    }
    if (from > to) return QStringLiteral("Der Bereich \"%1\" läuft rückwärts.").arg(range);
  }
  return {};
}

QString bitsFault(const QString& bits) {
  int position = 0;
  for (const QString& group : bits.split(u'|')) {
    const QStringList items = group.split(u',');
    const QString first = trimBlanks(items.first());
    if (first == u"A" || first == u"#") {
      if (items.size() > 2) {
        return QStringLiteral("Bitgruppe \"%1\": eine Zahl hat keine Auswahltexte.").arg(group);
      }
      if (items.size() == 1 && bits != u"A") {
        return QStringLiteral("Bitgruppe \"%1\" wird ohne Titel nicht angezeigt.").arg(group);
      }
      continue;
    }
    const int width = plainNumber(first);
    if (width < 0) {
      return QStringLiteral("Bitgruppe \"%1\" beginnt weder mit einer Zahl noch mit A oder #.")
          .arg(group);
    }
    if (const QString fault = widthFault(group, width, items); !fault.isEmpty()) return fault;
    position += width;
  }
  if (position > kBitsOfCv) return QStringLiteral("Die Bitgruppen haben zusammen mehr als 8 Bit.");
  if (const BitDescription shown(bits); shown.groups().empty()) {
    return QStringLiteral("Die Bitgruppen \"%1\" zeigen nichts an.").arg(bits);
  }
  return {};
}

DecFaults checkDescription(const QString& text) {
  DecFaults faults;
  DecoderDescription description;
  loadDescription(text, description, &faults);
  const std::vector<DecStatement> statements = readStatements(text);
  for (const DecStatement& statement : statements) {
    if (statement.key.startsWith(u"CV_")) LineChecker(statement, faults).check();
  }
  WholeChecker(description, statements, faults).check();
  std::stable_sort(faults.begin(), faults.end(),
                   [](const DecFault& a, const DecFault& b) { return a.line < b.line; });
  return faults;
}

}  // namespace lokari
