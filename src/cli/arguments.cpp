#include "cli/arguments.h"

#include "cli/command.h"

namespace lokari {

bool Arguments::takeFlag(const QString& name) {
  return rest_.removeAll(name) > 0;
}

std::optional<QString> Arguments::takeValue(const QString& name) {
  const QStringList values = takeValues(name);
  if (values.size() > 1) throw WrongCall(QStringLiteral("%1 steht mehrmals!").arg(name));
  return values.isEmpty() ? std::nullopt : std::optional(values.front());
}

QStringList Arguments::takeValues(const QString& name) {
  QStringList values;
  for (qsizetype at = rest_.indexOf(name); at >= 0; at = rest_.indexOf(name)) {
    if (at + 1 == rest_.size()) {
      throw WrongCall(QStringLiteral("Hinter %1 fehlt der Wert!").arg(name));
    }
    values << rest_.takeAt(at + 1);
    rest_.removeAt(at);
  }
  return values;
}

std::optional<int> Arguments::takeNumber(const QString& name, int first, int last) {
  const std::optional<QString> value = takeValue(name);
  if (!value) return {};
  return numberArgument(*value, first, last, name);
}

QStringList Arguments::takeRest() {
  for (const QString& argument : std::as_const(rest_)) {
    if (argument.startsWith(QLatin1String("--"))) {
      throw WrongCall(QStringLiteral("Die Option \"%1\" gibt es nicht!").arg(argument));
    }
  }
  return std::move(rest_);
}

int numberArgument(const QString& text, int first, int last, const QString& what) {
  bool valid = !text.isEmpty() && text.front().isDigit();
  const int number = valid ? text.toInt(&valid) : 0;
  if (!valid || number < first || number > last) {
    throw WrongCall(QStringLiteral("%1: \"%2\" ist keine Zahl von %3 bis %4!")
                        .arg(what, text)
                        .arg(first)
                        .arg(last));
  }
  return number;
}

}  // namespace lokari
