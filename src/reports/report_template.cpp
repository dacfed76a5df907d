#include "reports/report_template.h"

#include <QDir>
#include <QRegularExpression>
#include <QStringConverter>

#include <kainjow/mustache.hpp>
#include <unordered_map>

#include "base/paths.h"
#include "base/text_file.h"
#include "reports/report_error.h"
#include "reports/template_check.h"

namespace lokari {
namespace {

namespace mustache = kainjow::mustache;

[[noreturn]] void refuse(const QString& path, const QString& reason) {
  throw ReportError(
      QStringLiteral("Die Vorlage\r%1\r%2").arg(QDir::toNativeSeparators(path), reason));
}

/// Names and the values behind them while a text is rendered.
class Values final : public mustache::basic_context<std::string> {
 public:
  Values(const ReportData& data, const QStringList& report, const QStringList& vehicle)
      : data_(data), vehicles_(mustache::data::type::list) {
    for (size_t i = 0; i < data.count; ++i) {
      vehicles_.push_back(mustache::data(mustache::data::type::bool_true));
    }
    for (qsizetype i = 0; i < report.size(); ++i) add(report.at(i), i, false);
    for (qsizetype i = 0; i < vehicle.size(); ++i) add(vehicle.at(i), i, true);
  }

  void push(const mustache::data* item) override {
    if (data_.count == 0) return;
    // Only the vehicles' section repeats, and its items stand side by side.
    const mustache::data* first = vehicles_.list_value().data();
    const std::less<> before;
    if (before(item, first) || !before(item, first + data_.count)) return;
    vehicle_ = data_.first + static_cast<size_t>(item - first);
    if (data_.next) data_.next(vehicle_);
  }

  void pop() override {}

  const mustache::data* get(const std::string& name) const override {
    static const std::string section = QString::fromUtf16(kVehicleSection).toStdString();
    if (name == section) return &vehicles_;
    const auto found = slots_.find(name);
    if (found == slots_.end()) return nullptr;
    const Slot& slot = found->second;
    const std::string& value =
        slot.isOfVehicle ? data_.value(vehicle_, slot.field) : data_.report.at(slot.field);
    slot.value = value.empty() ? mustache::data(false) : mustache::data(value);
    return &slot.value;
  }

  const mustache::data* get_partial(const std::string&) const override { return nullptr; }

 private:
  struct Slot {
    size_t field;
    bool isOfVehicle;
    mutable mustache::data value;  ///< what get() gave last
  };

  void add(const QString& name, qsizetype field, bool isOfVehicle) {
    slots_.emplace(name.toStdString(), Slot{static_cast<size_t>(field), isOfVehicle, {}});
  }

  const ReportData& data_;
  mustache::data vehicles_;
  std::unordered_map<std::string, Slot> slots_;
  size_t vehicle_ = 0;
};

/// UTF-8, with or without a mark: today's editors leave it out. What is no UTF-8 was written by an
/// older editor, in windows-1252.
QString decoded(const QByteArray& bytes) {
  QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  const QString text = utf8.decode(bytes);
  return utf8.hasError() ? decodeText(bytes) : text;
}

QString readTemplate(const QString& path, const QString& found) {
  const auto bytes = readPlainFile(found);
  if (!bytes) {
    refuse(path, QStringLiteral("fehlt oder lässt sich nicht lesen."));
  }
  const QString text = decoded(*bytes);
  // Earlier versions of such templates were no texts.
  if (text.contains(QChar(0))) {
    refuse(found, QStringLiteral("ist keine Textdatei und daher keine Vorlage dieses Programms."));
  }
  return text;
}

/// A tag that stands alone on its line leaves no line behind. The library keeps that rule only for
/// sections that are shown, and drops lines without a value as well, so the lines are taken out
/// ahead of it, and a character without a meaning holds those that are to stay.
constexpr char kHolder = '\x17';

QString withoutTagLines(QString text) {
  const auto alone = [](const char* kinds) {
    return QRegularExpression(
        QStringLiteral("^[ \\t]*(\\{\\{\\s*[%1](?:(?!\\}\\}).)*\\}\\})[ \\t]*(?:\\r?\\n|\\z)")
            .arg(QLatin1String(kinds)),
        QRegularExpression::MultilineOption | QRegularExpression::DotMatchesEverythingOption);
  };
  static const QRegularExpression remark = alone("!");
  static const QRegularExpression section = alone("#^/");
  text.remove(remark);
  return text.replace(section, QStringLiteral("\\1") + QLatin1Char(kHolder));
}

}  // namespace

struct ReportTemplate::Engine {
  mustache::mustache text;
};

QString templatePlace(const QString& file, const QString& installed) {
  if (installed.isEmpty() || !findFile(file).isEmpty()) return file;
  const QString shipped = findFile(installed + u'/' + fileNameOf(file));
  return shipped.isEmpty() ? file : shipped;
}

ReportTemplate::ReportTemplate(const QString& path, const ReportFields& fields)
    : path_(findFile(path)), reportFields_(fields.report) {
  const QString text = readTemplate(path, path_);
  const TemplateContents contents = checkTemplate(text, fields);
  const TemplateFault& fault = contents.fault;
  if (!fault.text.isEmpty()) fail(fault.line, fault.text);
  usedFields_ = contents.usedFields;
  vehicleText_ = contents.vehicleText;
  remarks_ = contents.remarks;
  vehicleLine_ = contents.vehicleLine;
  engine_ =
      std::make_unique<Engine>(Engine{mustache::mustache(withoutTagLines(text).toStdString())});
  if (!engine_->text.is_valid()) {
    fail(0, QString::fromStdString(engine_->text.error_message()));
  }
  engine_->text.set_custom_escape([](const std::string& value) { return value; });
}

ReportTemplate::~ReportTemplate() = default;

void ReportTemplate::fail(int line, const QString& fault) const {
  const QString where = line > 0 ? QStringLiteral("hat einen Fehler in Zeile %1:\r").arg(line)
                                 : QStringLiteral("hat einen Fehler:\r");
  refuse(path_, where + fault);
}

std::string ReportTemplate::render(const ReportData& data) const {
  Values values(data, reportFields_, usedFields_);
  std::string text = engine_->text.render(values);
  std::erase(text, kHolder);
  return text;
}

}  // namespace lokari
