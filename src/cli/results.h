// The results of a command on standard output: one line each, its fields separated by tabs, or,
// with --json, one JSON object a line with the fields' names.
#pragma once

#include <QJsonValue>
#include <QList>
#include <QString>

namespace lokari {

class Console;

struct ResultField {
  QString name;  ///< in JSON
  QJsonValue value;
  /// The words for a person, where they differ from the value.
  QString shown{};
  /// Of a record: the word in front of the value.
  QString label{};
};

class Results {
 public:
  /// `console` must outlive it.
  Results(Console& console, bool json) : console_(console), json_(json) {}

  /// One line of several fields.
  void line(const QList<ResultField>& fields);
  /// One thing with many fields: a line each, "label⇥value", or one object.
  void record(const QList<ResultField>& fields);

 private:
  void object(const QList<ResultField>& fields);

  Console& console_;
  bool json_;
};

/// "ein" or "aus".
QString onOff(bool on);

}  // namespace lokari
