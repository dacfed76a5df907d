#include "cli/results.h"

#include <QJsonDocument>
#include <QJsonObject>

#include "cli/console.h"

namespace lokari {
namespace {

QString textOf(const ResultField& field) {
  if (!field.shown.isEmpty()) return field.shown;
  if (field.value.isDouble()) return QString::number(field.value.toInt());
  if (field.value.isBool()) return onOff(field.value.toBool());
  return field.value.toString();
}

}  // namespace

void Results::line(const QList<ResultField>& fields) {
  if (json_) return object(fields);
  QStringList texts;
  // One line and one tab between two fields, whatever the texts hold.
  for (const ResultField& field : fields) {
    texts << textOf(field).replace(u'\t', u' ').replace(u'\r', u' ').replace(u'\n', u' ');
  }
  console_.result(texts.join(u'\t'));
}

void Results::record(const QList<ResultField>& fields) {
  if (json_) return object(fields);
  for (const ResultField& field : fields) {
    if (!field.label.isEmpty()) console_.result(field.label + u'\t' + textOf(field));
  }
}

void Results::object(const QList<ResultField>& fields) {
  QJsonObject object;
  for (const ResultField& field : fields) object.insert(field.name, field.value);
  console_.result(QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)));
}

QString onOff(bool on) {
  return on ? QStringLiteral("ein") : QStringLiteral("aus");
}

}  // namespace lokari
