#include "decoder/dec_loader.h"

#include <algorithm>

#include "base/numbers.h"
#include "decoder/dec_fields.h"

namespace lokari {
namespace {

using D = DecoderDescription;

struct NumberKey {
  const char16_t* key;
  int D::*member;
  int low;
  int high;
};
constexpr NumberKey kNumberKeys[] = {
    {u"MAXADDRESS", &D::MAXADDRESS, 1, 10239},
    {u"TYPE", &D::TYPE, 0, 3},
    {u"PROGMODE", &D::PROGMODE, 0, 2},
    {u"FAMILY", &D::FAMILY, 0, 2},
    {u"INTERNALSTEPS", &D::INTERNALSTEPS, 1, 255},
    {u"FUNCTIONS", &D::FUNCTIONS, 1, 12},
    {u"FUNCSHIFT", &D::FUNCSHIFT, 1, 4},
    {u"FUNCCOUNT", &D::FUNCCOUNT, 1, 8},
    {u"MAXTABS", &D::MAXTABS, 1, 28},
    {u"MAPCVA", &D::MAPCVA, 1, 255},
};

struct FlagKey {
  const char16_t* key;
  bool D::*member;
};
constexpr FlagKey kFlagKeys[] = {
    {u"DIRECTION", &D::DIRECTION},     {u"ANALOGMODE", &D::ANALOGMODE},
    {u"SPEEDTABLE", &D::SPEEDTABLE},   {u"EXTADDRESS", &D::EXTADDRESS},
    {u"CONSADDRESS", &D::CONSADDRESS}, {u"DETECTPULSE", &D::DETECTPULSE},
    {u"MANBIT", &D::MANBIT},           {u"RAILCOM", &D::RAILCOM},
    {u"PROGMAIN", &D::PROGMAIN},       {u"FUNCMAP", &D::FUNCMAP},
};

constexpr int kBanks = 16;

/// The CVs with fixed places in the program.
bool hasFixedPlace(int index) {
  constexpr int kFixed[] = {7, 8, 17, 18, 19, 29};
  return index < 2 || index >= kHighestCvIndex ||
         std::find(std::begin(kFixed), std::end(kFixed), index) != std::end(kFixed);
}

class Loader {
 public:
  Loader(DecoderDescription& description, DecFaults* faults) : d_(description), faults_(faults) {}

  bool load(const std::vector<DecStatement>& statements) {
    for (const DecStatement& statement : statements) {
      line_ = statement.line;
      try {
        take(statement);
      } catch (const NumberError&) {
        note(QStringLiteral("Eine Zahl ist zu groß; hier endet das Lesen der Datei."));
        return false;
      }
    }
    return true;
  }

 private:
  void note(const QString& text) {
    if (faults_) faults_->push_back({line_, text});
  }

  void take(const DecStatement& statement) {
    key_ = statement.key;
    value_ = statement.value;
    // Every value is taken as a number first, whatever its key makes of it; one that does not fit
    // ends the reading.
    numeric_ = isNumeric(value_);
    number_ = numeric_ ? toInt16(value_) : 0;
    if (takeNumberKey() || takeFlagKey() || takeSpecialKey()) return;
    if (key_.startsWith(u"MAPVALA_") || key_.startsWith(u"MAPVALB_")) return takeBankValue();
    const bool cvLine = key_.startsWith(u"CV_");
    if (cvLine) {
      takeCvNumber();
      ++d_.lineCount;
    } else {
      noteUnknownKey();
    }
    if (!mayDescribe(cvLine)) return;
    // An unknown key comes here too, as a second description of the CV of the line before.
    takeEntry(d_.info(CvIndex(cv_)));
  }

  bool takeNumberKey() {
    for (const NumberKey& known : kNumberKeys) {
      if (key_ != QStringView(known.key)) continue;
      if (number_ >= known.low && number_ <= known.high) {
        d_.*known.member = number_;
        // The number of a text is 0, which some keys accept.
        if (!numeric_) noteNoNumber();
      } else {
        note(QStringLiteral("%1: Der Wert \"%2\" liegt nicht zwischen %3 und %4.")
                 .arg(key_, value_)
                 .arg(known.low)
                 .arg(known.high));
      }
      return true;
    }
    return false;
  }

  bool takeFlagKey() {
    for (const FlagKey& known : kFlagKeys) {
      if (key_ != QStringView(known.key)) continue;
      const QChar first = value_.isEmpty() ? QChar() : value_.front().toUpper();
      d_.*known.member = first == u'Y' || first == u'J';
      if (first != u'Y' && first != u'J' && first != u'N') {
        note(QStringLiteral("%1: \"%2\" ist weder Ja noch Nein und gilt als Nein.")
                 .arg(key_, value_));
      }
      return true;
    }
    return false;
  }

  bool takeSpecialKey() {
    if (key_ == u"SPEEDSTEPS") {
      takeSpeedSteps();
    } else if (key_ == u"SPEEDTABVALUES") {
      takeSpeedTable();
    } else if (key_ == u"MAPCVB") {
      if (d_.MAPCVA < 1) {
        note(QStringLiteral("MAPCVB gilt nur hinter einem gültigen MAPCVA."));
      } else if (number_ < 1 || number_ > 255) {
        note(QStringLiteral("MAPCVB: Der Wert \"%1\" liegt nicht zwischen 1 und 255.").arg(value_));
      } else {
        d_.MAPCVB = number_;
      }
    } else {
      return false;
    }
    return true;
  }

  void takeSpeedSteps() {
    if (!numeric_) noteNoNumber();
    switch (number_) {
      case 0:
      case 14:
      case 28:
      case 128:
        d_.SPEEDSTEPS = number_;
        break;
      case 126:
        d_.SPEEDSTEPS = 128;
        break;
      default:
        note(QStringLiteral("SPEEDSTEPS: \"%1\" ist keine mögliche Zahl von Fahrstufen.")
                 .arg(value_));
    }
  }

  void takeSpeedTable() {
    d_.hasSpeedTabValues = true;
    int point = 0;
    for (const int value : numberList(value_, d_.INTERNALSTEPS)) {
      if (++point > d_.tablePoints()) {
        note(QStringLiteral("SPEEDTABVALUES: Werte hinter dem %1. werden nicht beachtet.")
                 .arg(d_.tablePoints()));
        return;
      }
      d_.speedTabValues.push_back({CvIndex(cv::kFirstTable - 1 + point), value});
    }
  }

  void takeBankValue() {
    cv_ = 0;
    const int bank = toInt16(numericPrefix(QStringView(key_).mid(8)));
    if (bank < 1 || bank > kBanks) {
      note(QStringLiteral("%1: Die Bank liegt nicht zwischen 1 und 16.").arg(key_));
      return;
    }
    if (!numeric_) noteNoNumber();
    CvBank& entry = d_.bankMap[static_cast<size_t>(bank)];
    (key_[6] == u'A' ? entry.selectA : entry.selectB) = number_;
    if (bank > 1) entry.bankBase = (bank - 2) * 256 + 1024;
  }

  /// The CV and the bank that a key CV_<number> or CV_<number>_<bank> names.
  void takeCvNumber() {
    bank_ = 0;
    cv_ = toInt16(numericPrefix(QStringView(key_).mid(3)));
    const qsizetype separator = key_.indexOf(u'_', 3);
    if (separator < 0 || separator == key_.size() - 1) return;
    bank_ = toInt16(numericPrefix(QStringView(key_).mid(separator + 1)));
    if (bank_ > kBanks) {
      note(QStringLiteral("%1: Die Bank liegt nicht zwischen 1 und 16.").arg(key_));
      bank_ = 0;
    }
    if (bank_ < 1) return;
    CvBank& entry = d_.bankMap[static_cast<size_t>(bank_)];
    if (bank_ == 1 && (entry.bankBase == 0 || entry.bankBase > cv_)) entry.bankBase = cv_;
    if (bank_ > 1 && entry.bankBase == 0) {
      note(QStringLiteral("%1: Vor der Bank fehlt ihr MAPVALA_%2; die Zeile ist wirkungslos.")
               .arg(key_)
               .arg(bank_));
    }
    if (entry.bankFirst > cv_) {
      note(QStringLiteral("%1: Die CVs einer Bank müssen aufsteigend stehen.").arg(key_));
    }
    if (entry.bankFirst == 0 || entry.bankFirst > cv_) entry.bankFirst = cv_;
    cv_ = toInt16(static_cast<double>(cv_) - entry.bankFirst + entry.bankBase);
  }

  bool mayDescribe(bool cvLine) {
    if (hasFixedPlace(cv_)) {
      if (cvLine) note(QStringLiteral("%1 kann nicht beschrieben werden.").arg(key_));
      return false;
    }
    if (d_.SPEEDTABLE && d_.TYPE != D::kTypeWithoutDrive && cv::inTable(CvIndex(cv_))) {
      if (cvLine) {
        note(QStringLiteral("%1 gehört zur Geschwindigkeitstabelle und wird nicht beachtet.")
                 .arg(key_));
      }
      return false;
    }
    return true;
  }

  void takeEntry(CvDescriptor& entry) {
    if (entry.exists()) {
      note(QStringLiteral("%1 ist schon beschrieben; die letzte Zeile gilt.")
               .arg(d_.cvText(CvIndex(cv_))));
    }
    StrParts parts(value_);
    entry.cvName = parts.next();
    if (entry.cvName.isEmpty()) entry.cvName = madeName();
    entry.cvRange = parts.next();
    if (entry.cvRange.isEmpty()) entry.cvRange = QStringLiteral("0-255");
    entry.cvBank = bank_;
    const bool limited = cv_ == 2 || cv_ == 5 || cv_ == 6;
    entry.cvMin = limited ? GetMinMax(entry.cvRange, false) : 0;
    entry.cvMax = limited ? GetMinMax(entry.cvRange, true) : 0;
    const QString standard = parts.next();
    entry.cvDefault = isNumeric(standard) ? toInt16(standard) : 0;
    takePage(entry, parts.next());
    entry.cvTip = parts.next();
    entry.cvBits = parts.next();
  }

  QString madeName() const {
    const QString name = QStringLiteral("CV") + printed(cv_);
    return bank_ >= 1 ? QStringLiteral("%1 (%2)").arg(name).arg(bank_) : name;
  }

  void takePage(CvDescriptor& entry, const QString& text) {
    entry.cvPage = 0;
    const auto number = parseNumber(text);
    if (!number || !(*number > 0 && *number < page::kLast + 1)) return;
    const int rounded = toInt16(*number);
    // "6.7" is below 7 and yet no page: there is nothing to count it in.
    if (rounded > page::kLast) throw NumberError("page beyond the last one");
    entry.cvPage = rounded;
    // A page that rounds to 0 is counted for the first page of rows.
    ++d_.pageCount[static_cast<size_t>(rounded == 0 ? page::kFirstRows : rounded)];
  }

  void noteNoNumber() { note(QStringLiteral("%1: \"%2\" ist keine Zahl.").arg(key_, value_)); }

  void noteUnknownKey() {
    // Read by the import of the catalogue, and harmless ahead of the first CV.
    if (key_ == u"MANUFACTURER" && cv_ == 0) return;
    note(hasFixedPlace(cv_)
             ? QStringLiteral("Der Schlüssel \"%1\" ist unbekannt.").arg(key_)
             : QStringLiteral("Der Schlüssel \"%1\" ist unbekannt und überschreibt %2.")
                   .arg(key_, d_.cvText(CvIndex(cv_))));
  }

  DecoderDescription& d_;
  DecFaults* faults_;
  int line_ = 0;
  QString key_;
  QString value_;
  bool numeric_ = false;
  int number_ = 0;
  int cv_ = 0;  // internal index of the line before, 0 for none
  int bank_ = 0;
};

}  // namespace

bool loadDescription(const QString& text, DecoderDescription& description, DecFaults* faults) {
  return Loader(description, faults).load(readStatements(text, faults));
}

}  // namespace lokari
