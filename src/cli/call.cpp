#include "cli/call.h"

#include <algorithm>

namespace lokari {
namespace {

constexpr int kHighestByte = 255;

struct Span {
  int first = 0;
  int last = 0;
};

Span spanOf(const QString& text, int first, int last, const QString& what) {
  const QStringList ends = text.split(u'-');
  if (ends.size() > 2)
    throw WrongCall(QStringLiteral("%1: \"%2\" ist kein Bereich!").arg(what, text));
  const Span span{numberArgument(ends.first(), first, last, what),
                  numberArgument(ends.last(), first, last, what)};
  if (span.last < span.first) {
    throw WrongCall(QStringLiteral("%1: \"%2\" läuft rückwärts!").arg(what, text));
  }
  return span;
}

Switching switchingOf(const QString& text, int first, int last, const QString& what) {
  const QStringList halves = text.split(u'=');
  const bool on = halves.size() == 2 && halves[1] == QLatin1String("on");
  if (!on && (halves.size() != 2 || halves[1] != QLatin1String("off"))) {
    throw WrongCall(QStringLiteral("\"%1\" ist weder N=on noch N=off!").arg(text));
  }
  return {numberArgument(halves[0], first, last, what), on};
}

Setting settingOf(const QString& text, int first, int last) {
  const QStringList halves = text.split(u'=');
  if (halves.size() != 2) throw WrongCall(QStringLiteral("\"%1\" ist nicht CV=Wert!").arg(text));
  return {numberArgument(halves[0], first, last, QStringLiteral("CV-Nummer")),
          numberArgument(halves[1], 0, kHighestByte, QStringLiteral("Wert"))};
}

QString nameOf(const ArgumentRow& row) {
  return QString::fromUtf16(row.name);
}

void checkChoice(const ArgumentRow& row, const QString& text) {
  const QStringList words = QString::fromUtf16(row.value).split(u'|');
  if (words.contains(text)) return;
  throw WrongCall(QStringLiteral("%1: \"%2\" ist weder %3!")
                      .arg(nameOf(row), text, words.join(QStringLiteral(" noch "))));
}

void check(const ArgumentRow& row, const QString& text) {
  const QString name = nameOf(row);
  switch (row.form) {
    case Form::Flag:
    case Form::Text:
      return;
    case Form::Number:
      numberArgument(text, row.first, row.last, name);
      return;
    case Form::Numbers:
      spanOf(text, row.first, row.last, name);
      return;
    case Form::Choice:
      checkChoice(row, text);
      return;
    case Form::Setting:
      settingOf(text, row.first, row.last);
      return;
    case Form::Switching:
      switchingOf(text, row.first, row.last, name);
      return;
  }
}

/// Takes an option out each time it stands there, with its values in their order.
QStringList takeOption(const ArgumentRow& row, QStringList& rest) {
  const QString name = nameOf(row);
  if (row.form == Form::Flag) return QStringList(rest.removeAll(name) > 0 ? 1 : 0, QString());
  QStringList values;
  for (qsizetype at = rest.indexOf(name); at >= 0; at = rest.indexOf(name)) {
    if (at + 1 == rest.size()) {
      throw WrongCall(QStringLiteral("Hinter %1 fehlt der Wert!").arg(name));
    }
    values << rest.takeAt(at + 1);
    rest.removeAt(at);
  }
  if (values.size() > 1 && !row.many) {
    throw WrongCall(QStringLiteral("%1 steht mehrmals!").arg(name));
  }
  return values;
}

QStringList takeOperand(const ArgumentRow& row, QStringList& rest) {
  if (rest.isEmpty()) throw WrongCall(QString::fromUtf16(row.missing));
  if (row.many) return std::exchange(rest, {});
  return {rest.takeFirst()};
}

void checkRest(const QString& command, ArgumentRows rows, const QStringList& rest) {
  if (rest.isEmpty()) return;
  const bool hasOperands =
      std::any_of(rows.begin(), rows.end(), [](const ArgumentRow& row) { return !row.isOption(); });
  throw WrongCall(hasOperands
                      ? QStringLiteral("\"%1\" gehört nicht zum Befehl!").arg(rest.join(u' '))
                      : QStringLiteral("%1 hat keine Argumente!").arg(command));
}

}  // namespace

Call::Call(const QString& command, ArgumentRows rows, const QStringList& arguments) {
  QStringList rest = arguments;
  QHash<int, QString> chosen;
  for (const ArgumentRow& row : rows) {
    if (!row.isOption()) continue;
    const QStringList values = takeOption(row, rest);
    if (values.isEmpty()) continue;
    values_.insert(nameOf(row), values);
    if (row.exclusive == 0) continue;
    if (chosen.contains(row.exclusive)) {
      throw WrongCall(
          QStringLiteral("%1 und %2 schließen sich aus!").arg(chosen[row.exclusive], nameOf(row)));
    }
    chosen.insert(row.exclusive, nameOf(row));
  }
  for (const QString& text : std::as_const(rest)) {
    if (text.startsWith(QLatin1String("--"))) {
      throw WrongCall(QStringLiteral("Die Option \"%1\" gibt es nicht!").arg(text));
    }
  }
  for (const ArgumentRow& row : rows) {
    if (!row.isOption()) values_.insert(nameOf(row), takeOperand(row, rest));
  }
  checkRest(command, rows, rest);
  for (const ArgumentRow& row : rows) {
    for (const QString& text : values_.value(nameOf(row))) check(row, text);
  }
}

std::optional<QString> Call::text(QStringView name) const {
  const QStringList texts = values_.value(name.toString());
  return texts.isEmpty() ? std::nullopt : std::optional(texts.first());
}

std::optional<int> Call::number(QStringView name) const {
  const auto shown = text(name);
  return shown ? std::optional(shown->toInt()) : std::nullopt;
}

std::vector<int> Call::numbers(QStringView name) const {
  std::vector<int> all;
  for (const QString& text : values_.value(name.toString())) {
    const QStringList ends = text.split(u'-');
    for (int each = ends.first().toInt(); each <= ends.last().toInt(); ++each) all.push_back(each);
  }
  return all;
}

std::vector<Switching> Call::switchings(QStringView name) const {
  std::vector<Switching> all;
  for (const QString& text : values_.value(name.toString())) {
    all.push_back({text.section(u'=', 0, 0).toInt(), text.endsWith(QLatin1String("=on"))});
  }
  return all;
}

std::vector<Setting> Call::settings(QStringView name) const {
  std::vector<Setting> all;
  for (const QString& text : values_.value(name.toString())) {
    all.push_back({text.section(u'=', 0, 0).toInt(), text.section(u'=', 1, 1).toInt()});
  }
  return all;
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
