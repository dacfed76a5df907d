#include "sim/decoder_file.h"

#include <QHash>

#include <functional>

#include "base/text_file.h"

namespace lokari::sim {
namespace {

/// A fault in the line at hand.
struct Fault {
  QString text;
};

int numberIn(const QString& text, int first, int last) {
  bool valid = false;
  const int number = text.trimmed().toInt(&valid);
  if (!valid || number < first || number > last) {
    throw Fault{QStringLiteral("\"%1\" ist keine Zahl von %2 bis %3")
                    .arg(text.trimmed())
                    .arg(first)
                    .arg(last)};
  }
  return number;
}

int cvIn(const QString& text) {
  return numberIn(text, 1, Decoder::kLastCv);
}

CvRange rangeIn(const QString& text) {
  const qsizetype dash = text.indexOf(QLatin1Char('-'));
  if (dash < 0) return {cvIn(text), cvIn(text)};
  return {cvIn(text.left(dash)), cvIn(text.mid(dash + 1))};
}

std::vector<CvRange> rangesIn(const QString& text) {
  std::vector<CvRange> ranges;
  if (text.isEmpty()) return ranges;
  const QStringList parts = text.split(QLatin1Char(','));
  for (const QString& part : parts) ranges.push_back(rangeIn(part));
  return ranges;
}

std::set<int> cvsIn(const QString& text) {
  std::set<int> cvs;
  for (const CvRange& range : rangesIn(text)) {
    for (int cv = range.first; cv <= range.last; ++cv) cvs.insert(cv);
  }
  return cvs;
}

template <class Value>
Value nameIn(const QString& text, const QHash<QString, Value>& names) {
  const auto found = names.find(text.trimmed().toLower());
  if (found == names.end()) throw Fault{QStringLiteral("\"%1\" ist unbekannt").arg(text)};
  return *found;
}

class Reader {
 public:
  explicit Reader(Layout& layout) : layout_(layout) {}

  void line(const QString& line) {
    if (line.startsWith(QLatin1Char('[')) && line.endsWith(QLatin1Char(']'))) {
      begin(line.mid(1, line.size() - 2).trimmed());
      return;
    }
    const qsizetype equals = line.indexOf(QLatin1Char('='));
    if (equals < 0) throw Fault{QStringLiteral("weder \"[Name]\" noch \"Schlüssel=Wert\"")};
    if (vehicle_ == nullptr) throw Fault{QStringLiteral("vor der ersten Zeile \"[Name]\"")};
    set(line.left(equals).trimmed().toLower(), line.mid(equals + 1).trimmed());
  }

 private:
  void begin(const QString& name) {
    vehicle_ = &layout_.add({});
    vehicle_->decoder.name = name;
    bank_ = -1;
  }

  void set(const QString& key, const QString& value) {
    static const QHash<QString, void (Reader::*)(const QString&)> kKeys{
        {QStringLiteral("address"), &Reader::setAddress},
        {QStringLiteral("manufacturer"), &Reader::setManufacturer},
        {QStringLiteral("track"), &Reader::setTrack},
        {QStringLiteral("cvs"), &Reader::setCvs},
        {QStringLiteral("readonly"), &Reader::setReadOnly},
        {QStringLiteral("sticky"), &Reader::setSticky},
        {QStringLiteral("lock"), &Reader::setLock},
        {QStringLiteral("methods"), &Reader::setMethods},
        {QStringLiteral("index"), &Reader::setIndex},
        {QStringLiteral("banked"), &Reader::setBanked},
        {QStringLiteral("bank"), &Reader::setBank},
    };
    const auto known = kKeys.find(key);
    if (known != kKeys.end()) {
      (this->**known)(value);
    } else if (key.startsWith(QLatin1String("cv"))) {
      setCv(cvIn(key.mid(2)), numberIn(value, 0, 255));
    } else {
      throw Fault{QStringLiteral("Schlüssel \"%1\" ist unbekannt").arg(key)};
    }
  }

  Decoder& decoder() { return vehicle_->decoder; }

  void setCv(int cv, int value) {
    if (bank_ < 0) {
      decoder().store(cv, value);
    } else {
      if (!decoder().banked.has(cv)) throw Fault{QStringLiteral("CV liegt in keiner Bank")};
      decoder().banks[static_cast<size_t>(bank_)].values[cv] = value;
    }
  }

  void setAddress(const QString& value) { decoder().setAddress(numberIn(value, 1, 10239)); }
  void setManufacturer(const QString& value) { decoder().store(8, numberIn(value, 0, 255)); }

  void setTrack(const QString& value) {
    vehicle_->place = nameIn<Place>(value, {{QStringLiteral("both"), Place::Both},
                                            {QStringLiteral("prog"), Place::ProgrammingTrack},
                                            {QStringLiteral("main"), Place::MainTrack}});
  }

  void setCvs(const QString& value) { decoder().present = rangesIn(value); }
  void setReadOnly(const QString& value) { decoder().readOnly = cvsIn(value); }
  void setSticky(const QString& value) { decoder().sticky = cvsIn(value); }

  void setLock(const QString& value) {
    const QStringList parts = value.split(QLatin1Char(','));
    if (parts.size() != 2) throw Fault{QStringLiteral("zwei CV-Nummern erwartet")};
    decoder().lock = {cvIn(parts[0]), cvIn(parts[1])};
  }

  void setMethods(const QString& value) {
    decoder().methods.clear();
    const QStringList parts = value.split(QLatin1Char(','));
    for (const QString& part : parts) {
      decoder().methods.insert(
          nameIn<Method>(part, {{QStringLiteral("direct"), Method::Direct},
                                {QStringLiteral("paged"), Method::Paged},
                                {QStringLiteral("register"), Method::Register}}));
    }
  }

  void setIndex(const QString& value) {
    decoder().indexRegisters.clear();
    const QStringList parts = value.split(QLatin1Char(','));
    for (const QString& part : parts) decoder().indexRegisters.push_back(cvIn(part));
  }

  void setBanked(const QString& value) { decoder().banked = rangeIn(value); }

  void setBank(const QString& value) {
    bank_ = -1;
    if (value.isEmpty()) return;
    CvBankContents bank;
    const QStringList parts = value.split(QLatin1Char(','));
    for (const QString& part : parts) bank.select.push_back(numberIn(part, 0, 255));
    if (bank.select.size() != decoder().indexRegisters.size()) {
      throw Fault{QStringLiteral("je Indexregister ein Wert erwartet")};
    }
    decoder().banks.push_back(std::move(bank));
    bank_ = static_cast<int>(decoder().banks.size()) - 1;
  }

  Layout& layout_;
  Vehicle* vehicle_ = nullptr;
  int bank_ = -1;  ///< of `banks`, -1 for the plain CVs
};

}  // namespace

QString readDecoders(const QString& text, Layout& layout) {
  Reader reader(layout);
  int number = 0;
  const QStringList lines = splitLines(text);
  for (const QString& each : lines) {
    ++number;
    const QString line = each.trimmed();
    if (line.isEmpty() || line.startsWith(QLatin1Char('#')) || line.startsWith(QLatin1Char(';'))) {
      continue;
    }
    try {
      reader.line(line);
    } catch (const Fault& fault) {
      return QStringLiteral("Zeile %1: %2!").arg(number).arg(fault.text);
    }
  }
  return {};
}

QString builtInDecoders() {
  return QStringLiteral(R"(
[Sounddecoder]
CV2=4
CV3=12
CV4=10
CV5=180
CV6=90
CV7=21
CV29=14
address=3
manufacturer=97
cvs=1-600
bank=16,0
CV257=11
CV258=12
bank=16,1
CV257=21
CV258=22

[Lokdecoder]
track=main
CV2=3
CV29=6
address=1000
manufacturer=145
sticky=57
lock=15,16

[Altbau]
track=main
CV29=0
address=24
manufacturer=158
cvs=1-8,29
methods=register
)");
}

}  // namespace lokari::sim
