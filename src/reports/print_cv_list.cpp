#include "reports/print_cv_list.h"

#include <QFileInfo>

#include <algorithm>
#include <array>

#include "base/numbers.h"
#include "base/paths.h"
#include "base/text_file.h"
#include "decoder/dec_fields.h"
#include "decoder/dec_loader.h"

namespace lokari {
namespace {

/// Characters that the name of a manufacturer's folder has in the decoder window.
constexpr int kFolderNameLength = 8;
constexpr int kBanks = 16;
constexpr int kTablePoints = 28;
constexpr int kShortTablePoints = 15;

/// A CV that every decoder has, and that no description names.
struct FixedCv {
  int number;
  const char16_t* name;
  bool onlyWithConsist;
};
constexpr std::array kFixedCvs{
    FixedCv{7, u"Versionsnummer", false},
    FixedCv{19, u"Verbundadresse", true},
    FixedCv{29, u"Grundeinstellungen", false},
};

bool isTaken(int number) {
  constexpr std::array kNot{0, 1, 7, 8, 17, 18, 19, 29};
  return std::find(kNot.begin(), kNot.end(), number) == kNot.end() && number < kHighestCvIndex &&
         !cv::inTable(CvIndex(number));
}

struct Statement {
  QString key;  ///< in upper case
  QString value;

  bool namesCv() const { return key.startsWith(u"CV_"); }
};

/// The statements of a description in their order, lines that go on joined.
std::vector<Statement> statementsOf(const QString& text) {
  std::vector<Statement> result;
  const QStringList lines = splitLines(text);
  for (qsizetype i = 0; i < lines.size(); ++i) {
    QString line = lines[i];
    if (line.endsWith(u'-')) {
      line.chop(1);
      if (i + 1 < lines.size()) line += trimLeadingBlanks(lines[++i]);
    }
    const qsizetype equals = line.indexOf(u'=');
    if (equals < 0) continue;
    result.push_back({.key = trimBlanks(line.left(equals)).toUpper(),
                      .value = trimLeadingBlanks(line.mid(equals + 1))});
  }
  return result;
}

/// A number where one is needed; 0 for any other text.
int numberOrZero(const QString& text) {
  try {
    return isNumeric(text) ? toInt16(text) : 0;
  } catch (const NumberError&) {
    return 0;
  }
}

class Reader {
 public:
  /// The description tells where the CVs of the banks lie.
  explicit Reader(const QString& text) { loadDescription(text, description_); }

  void takeKeyword(const Statement& statement) {
    const auto& [key, value] = statement;
    const int number = numberOrZero(value);
    if (key == u"SPEEDTABLE") {
      speedTable_ = isYes(value);
    } else if (key == u"CONSADDRESS") {
      consAddress_ = isYes(value);
    } else if (key == u"FAMILY") {
      if (number >= 0 && number <= 2) family_ = number;
    } else if (key == u"INTERNALSTEPS") {
      if (number >= 1 && number <= 255) internalSteps_ = number;
    } else if (key == u"SPEEDTABVALUES") {
      speedTabValues_ = numberList(value, internalSteps_);
    }
  }

  void takeCv(const Statement& statement) {
    const auto& [key, value] = statement;
    const double told = numericPrefix(QStringView(key).mid(3));
    if (told < 0 || told > kHighestCvIndex) return;
    PrintCv entry;
    entry.number = toInt16(told);
    if (!isTaken(entry.number)) return;
    entry.bank = bankOf(key);
    entry.index = description_.getCvIndex(entry.numberText());
    // A bank that is nowhere described has no place of its own.
    if (!entry.index.inRange()) entry.index = CvIndex(entry.number);
    StrParts parts(value);
    entry.name = parts.next();
    if (entry.name.isEmpty()) entry.name = QStringLiteral("CV%1").arg(entry.number);
    entry.range = parts.next();
    if (entry.range.isEmpty()) entry.range = QStringLiteral("0-255");
    entry.standard = numberOrZero(parts.next());
    placeUpTo(entry.number);
    add(entry);
  }

  std::vector<PrintCv> finish() {
    placeUpTo(kCvArraySize);
    return std::move(list_);
  }

 private:
  static bool isYes(const QString& value) {
    const QChar first = value.isEmpty() ? QChar() : value.front().toUpper();
    return first == u'Y' || first == u'J';
  }

  static int bankOf(const QString& key) {
    const qsizetype separator = key.indexOf(u'_', 3);
    if (separator < 0) return 0;
    const double bank = numericPrefix(QStringView(key).mid(separator + 1));
    return bank >= 1 && bank <= kBanks ? toInt16(bank) : 0;
  }

  /// Places what the program knows by itself ahead of the CV of that number.
  void placeUpTo(int number) {
    for (; nextFixed_ < kFixedCvs.size() && kFixedCvs[nextFixed_].number < number; ++nextFixed_) {
      const FixedCv& fixed = kFixedCvs[nextFixed_];
      if (fixed.onlyWithConsist && !consAddress_) continue;
      addOwn(fixed.number, QString::fromUtf16(fixed.name), 0);
    }
    if (number > cv::kLastTable && !tablePlaced_) placeTable();
  }

  void placeTable() {
    tablePlaced_ = true;
    if (!speedTable_) return;
    const int points = family_ == 1 ? kShortTablePoints : kTablePoints;
    for (int point = 1; point <= points; ++point) {
      const auto item = static_cast<size_t>(point) - 1;
      addOwn(cv::kFirstTable + point - 1, QStringLiteral("Geschw.-Tabelle Wert") + printed(point),
             item < speedTabValues_.size() ? speedTabValues_[item] : 0);
    }
  }

  void addOwn(int number, const QString& name, int standard) {
    add({.number = number,
         .index = CvIndex(number),
         .name = name,
         .range = QStringLiteral("0-255"),
         .standard = standard});
  }

  void add(const PrintCv& entry) {
    if (list_.size() < kPrintCvLimit) list_.push_back(entry);
  }

  DecoderDescription description_;
  bool speedTable_ = true;
  bool consAddress_ = true;
  int family_ = 0;
  int internalSteps_ = 255;
  std::vector<int> speedTabValues_;
  size_t nextFixed_ = 0;
  bool tablePlaced_ = false;
  std::vector<PrintCv> list_;
};

QString descriptionFile(const QStringList& folders, const QString& manufacturer,
                        const QString& decoder) {
  for (const QString& folder : folders) {
    for (const QString& maker : {manufacturer, manufacturer.left(kFolderNameLength)}) {
      QString file = findFile(insideFolder(folder, {maker, decoder + QStringLiteral(".dec")}));
      if (!file.isEmpty() && QFileInfo(file).isFile()) return file;
    }
  }
  return {};
}

}  // namespace

QString PrintCv::numberText() const {
  return bank > 0 ? QStringLiteral("%1 (%2)").arg(number).arg(bank) : QString::number(number);
}

std::vector<PrintCv> printCvList(const QString& description) {
  Reader reader(description);
  const std::vector<Statement> statements = statementsOf(description);
  // What the decoder can do holds for the whole description, wherever in it that is told.
  for (const Statement& each : statements) {
    if (!each.namesCv()) reader.takeKeyword(each);
  }
  for (const Statement& each : statements) {
    if (each.namesCv()) reader.takeCv(each);
  }
  return reader.finish();
}

std::vector<PrintCv> loadPrintCvList(const QStringList& folders, const QString& manufacturer,
                                     const QString& decoder) {
  const QString file = descriptionFile(folders, manufacturer, decoder);
  if (file.isEmpty()) return {};
  const auto text = readTextFile(file);
  return text ? printCvList(*text) : std::vector<PrintCv>();
}

}  // namespace lokari
