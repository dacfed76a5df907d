#include "reports/ui/system_printer.h"

#include <QLocale>
#include <QRegularExpression>

#include "base/file_place.h"
#include "base/paths.h"
#include "base/prompt.h"
#include "reports/pdf_file.h"
#include "reports/report_error.h"
#include "reports/ui/print_command.h"

namespace lokari {
namespace {

QPageSize usualPageSize() {
  return QPageSize(QLocale::system().measurementSystem() == QLocale::ImperialUSSystem
                       ? QPageSize::Letter
                       : QPageSize::A4);
}

/// Why there is no printer but the PDF file.
QString remarkOn(PrintCommand::Outcome outcome) {
  switch (outcome) {
    case PrintCommand::Outcome::Missing:
      return QStringLiteral("Hier ist kein Drucksystem installiert.");
    case PrintCommand::Outcome::Silent:
      return QStringLiteral("Das Drucksystem antwortet nicht; PDF- und CSV-Dateien gehen ohne es.");
    case PrintCommand::Outcome::Refused:
    case PrintCommand::Outcome::Done:
      break;
  }
  return QStringLiteral("Es ist kein Drucker eingerichtet.");
}

}  // namespace

std::optional<QPageSize> markedPageSize(const QString& options) {
  static const QRegularExpression marked(QStringLiteral("^PageSize/[^:]*:.*?\\*(\\S+)"),
                                         QRegularExpression::MultilineOption);
  const QString key = marked.match(options).captured(1).section(u'.', 0, 0);
  if (key.isEmpty()) return {};
  for (int id = 0; id <= QPageSize::LastPageSize; ++id) {
    const auto each = static_cast<QPageSize::PageSizeId>(id);
    if (each != QPageSize::Custom && QPageSize::key(each) == key) return QPageSize(each);
  }
  return {};
}

SystemPrinter::SystemPrinter(SystemPrinterParts parts)
    : parts_(std::move(parts)), current_(pdfPrinterName()) {}

SystemPrinter::~SystemPrinter() = default;

void SystemPrinter::inquire(std::function<void()> known) {
  known_ = std::move(known);
  remark_ = QStringLiteral("Die Drucker werden gesucht …");
  const auto ask = [this](const char16_t* option, void (SystemPrinter::*take)()) {
    return std::make_unique<PrintCommand>(
        QStringLiteral("lpstat"), QStringList(QString::fromUtf16(option)),
        PrintCommand::Words::Plain, parts_.clock, [this, take] { (this->*take)(); });
  };
  nameList_ = ask(u"-e", &SystemPrinter::takeNames);
  defaultName_ = ask(u"-d", &SystemPrinter::takeDefault);
}

void SystemPrinter::takeNames() {
  names_ = nameList_->output().split(u'\n', Qt::SkipEmptyParts);
  if (names_.isEmpty()) {
    remark_ = remarkOn(nameList_->outcome());
    known_();
  } else {
    takeDefault();
  }
}

void SystemPrinter::takeDefault() {
  // One without the other says too little.
  if (!nameList_->hasEnded() || !defaultName_->hasEnded() || names_.isEmpty()) return;
  remark_.clear();
  const QString told = defaultName_->output().section(u':', 1).trimmed();
  if (!chosen_) current_ = names_.contains(told) ? told : names_.front();
  askPageSize(current_);
  known_();
}

void SystemPrinter::askPageSize(const QString& name) {
  if (name == pdfPrinterName() || sizeLists_.contains(name)) return;
  sizeLists_[name] = std::make_unique<PrintCommand>(
      QStringLiteral("lpoptions"), QStringList{QStringLiteral("-p"), name, QStringLiteral("-l")},
      PrintCommand::Words::Plain, parts_.clock, [this, name] { takePageSize(name); });
}

void SystemPrinter::takePageSize(const QString& name) {
  const auto size = markedPageSize(sizeLists_[name]->output());
  if (size) sizes_[name] = *size;
}

QStringList SystemPrinter::names() const {
  return names_ + QStringList(pdfPrinterName());
}

void SystemPrinter::choose(const QString& name) {
  if (!names().contains(name)) return;
  current_ = name;
  chosen_ = true;
  askPageSize(name);
}

QPageLayout SystemPrinter::layout() const {
  return printLayout(sizes_.value(current_, usualPageSize()));
}

std::unique_ptr<PrintJob> SystemPrinter::begin(const QString& title) {
  if (current_ == pdfPrinterName()) return beginFile(title);
  return spoolJob(current_, title, layout(), parts_.clock);
}

std::unique_ptr<PrintJob> SystemPrinter::beginFile(const QString& title) {
  for (;;) {
    QString name = parts_.prompt.saveFile(
        {.title = QStringLiteral("PDF-Datei speichern"),
         .filter = QStringLiteral("PDF-Dateien (*.pdf)|*.pdf|Alle Dateien (*.*)|*.*"),
         .folder = parts_.folder,
         .presetName = title + QStringLiteral(".pdf")});
    if (name.isEmpty()) return nullptr;
    if (!fileNameOf(name).contains(u'.')) name += QStringLiteral(".pdf");
    const auto place = FilePlace::chosen(name, kPdfFile, parts_.own, parts_.prompt);
    if (place) return pdfFileJob(*place, title, layout());
  }
}

}  // namespace lokari
