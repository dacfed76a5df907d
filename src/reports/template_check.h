// What a report template holds, and what is wrong with it.
#pragma once

#include <QString>
#include <QStringList>

namespace lokari {

/// The names that a template may use.
struct ReportFields {
  QStringList report;
  QStringList vehicle;
};

/// Name of the section that is repeated for each vehicle.
inline constexpr char16_t kVehicleSection[] = u"fahrzeuge";

struct TemplateFault {
  int line = 0;  ///< from 1; 0 for the template as a whole
  QString text;  ///< German; empty when there is no fault
};

struct TemplateContents {
  QStringList usedFields;  ///< fields of a vehicle, each once
  QString vehicleText;     ///< text inside of the vehicles' section, without tags
  QStringList remarks;     ///< what they say, trimmed
  int vehicleLine = 0;     ///< where the vehicles' section begins, from 1
  TemplateFault fault;     ///< the first one
};

TemplateContents checkTemplate(const QString& text, const ReportFields& fields);

}  // namespace lokari
