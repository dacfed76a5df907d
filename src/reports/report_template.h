// A template of the list or of the CSV file: a text with tags in double braces.
//
//   {{name}}                        a value
//   {{#fahrzeuge}} … {{/fahrzeuge}} once for each vehicle
//   {{#name}} … {{/name}}           only where the value is there; {{^name}} only where it is not
//   {{! … }}                        a remark
//
// The fields of a vehicle, named like their columns, stand inside of `fahrzeuge`, those of the
// report anywhere. A value comes out as it was handed over, whichever kind of braces holds it: who
// hands values over makes them safe for what the template writes.
#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "reports/template_check.h"

namespace lokari {

/// What one text is made of, all texts in UTF-8. An empty value counts as one that is not there.
struct ReportData {
  /// A value for each of the names `ReportFields::report`.
  std::vector<std::string> report;
  size_t first = 0;  ///< number of the first vehicle, from 0
  size_t count = 0;  ///< how many there are from `first` on
  /// The value of a vehicle's field; `field` counts in usedFields().
  std::function<const std::string&(size_t vehicle, size_t field)> value;
  /// Told ahead of each vehicle; may be empty. What it throws ends the rendering.
  std::function<void(size_t vehicle)> next;
};

/// The template `file`; where it is missing and `installed`, the folder of what the installation
/// carries, has one of that name, that one: a data folder that an older version has made holds no
/// templates.
QString templatePlace(const QString& file, const QString& installed);

class ReportTemplate {
 public:
  /// Reads a template; neither case nor the kind of separator of the path counts. Throws
  /// ReportError when it is missing or broken, with the line of the fault.
  ReportTemplate(const QString& path, const ReportFields& fields);
  ~ReportTemplate();
  ReportTemplate(const ReportTemplate&) = delete;
  ReportTemplate& operator=(const ReportTemplate&) = delete;

  /// The file, with the case it has on disk.
  const QString& path() const { return path_; }
  /// The fields of a vehicle that the template shows, each once.
  const QStringList& usedFields() const { return usedFields_; }
  /// The template's own text inside of `fahrzeuge`, tags left out.
  const QString& vehicleText() const { return vehicleText_; }

  /// What its remarks say.
  const QStringList& remarks() const { return remarks_; }
  /// The line of `{{#fahrzeuge}}`, from 1.
  int vehicleLine() const { return vehicleLine_; }

  /// Throws the ReportError of a fault in that line, 0 for none.
  [[noreturn]] void fail(int line, const QString& fault) const;

  /// The text of a report, in UTF-8.
  std::string render(const ReportData& data) const;

 private:
  struct Engine;

  QString path_;
  QStringList reportFields_;
  QStringList usedFields_;
  QString vehicleText_;
  QStringList remarks_;
  int vehicleLine_ = 0;
  std::unique_ptr<Engine> engine_;
};

}  // namespace lokari
