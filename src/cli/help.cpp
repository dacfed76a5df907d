#include "cli/help.h"

#include <algorithm>

#include "cli/command.h"

namespace lokari {
namespace {

QString wordsOf(const Command& command) {
  return QString::fromUtf16(command.words);
}

QStringList argumentLines(ArgumentRows rows) {
  qsizetype width = 0;
  for (const ArgumentRow& row : rows) width = std::max(width, headOf(row).size());
  QStringList lines;
  for (const ArgumentRow& row : rows) {
    lines << QStringLiteral("  %1  %2").arg(headOf(row).leftJustified(width), meaningOf(row));
  }
  return lines;
}

QStringList otherCommands(const Command& command) {
  QStringList words;
  for (const Command& each : commandTable()) {
    if (each.words != command.words) words << wordsOf(each);
  }
  return words;
}

}  // namespace

QString headOf(const ArgumentRow& row) {
  const QString name = QString::fromUtf16(row.name);
  const QString value = QString::fromUtf16(row.value);
  return value.isEmpty() ? name : name + u' ' + value;
}

QString meaningOf(const ArgumentRow& row) {
  const QString help = QString::fromUtf16(row.help);
  if (!row.isNumber()) return help;
  return QStringLiteral("%1 bis %2: %3").arg(row.first).arg(row.last).arg(help);
}

QString syntaxOf(const Command& command) {
  QString line = wordsOf(command);
  const ArgumentRows rows = command.arguments;
  for (size_t i = 0; i < rows.size(); ++i) {
    const ArgumentRow& row = rows[i];
    const bool joins = i > 0 && row.exclusive != 0 && rows[i - 1].exclusive == row.exclusive;
    QString head = headOf(row);
    if (joins) {
      line.chop(1);
      line += u'|' + head + u']';
    } else {
      line += u' ' + (row.isOption() ? u'[' + head + u']' : head);
    }
    if (row.many) line += u'…';
  }
  return line;
}

QStringList switchedOnBy(const Command& command) {
  QStringList names;
  if (!command.use) return names;
  for (const StationKindRow& kind : kStationKinds) {
    if (switchesOn(kind, *command.use, false)) names << QString::fromUtf16(kind.name);
  }
  return names;
}

QStringList helpLines() {
  QStringList lines{
      QStringLiteral(
          "Aufruf: lokari-cli [--settings STAMM] [--trace [DATEI]] BEFEHL [Argumente] [--yes]"),
      QString(),
      QStringLiteral("Befehle:"),
  };
  for (const Command& command : commandTable()) {
    lines << QStringLiteral("  ") + syntaxOf(command)
          << QStringLiteral("      ") + QString::fromUtf16(command.purpose);
  }
  lines
      << QString()
      << QStringLiteral("  --settings STAMM  andere Einstellungen als LOKARI: STAMM.INI")
      << QStringLiteral("  --trace [DATEI]   schreibt die Verbindung mit, ohne DATEI in TRACE.log")
      << QStringLiteral("  --yes             beantwortet alle Rückfragen mit OK oder Ja")
      << QStringLiteral("  -h, --help        diese Hilfe; hinter einem Befehl dessen Argumente")
      << QStringLiteral("  --version         die Version des Programms") << QString()
      << QStringLiteral("Ergebnisse stehen in der Standardausgabe, durch Tabulatoren getrennt; mit")
      << QStringLiteral("--json steht in jeder Zeile ein JSON-Objekt.")
      << QStringLiteral("Rückgabe: 0 alles erledigt, 1 etwas ist misslungen, 2 falscher Aufruf")
      << QStringLiteral("oder keine Verbindung. Strg-C ist die Schaltfläche Abbruch.") << QString()
      << QStringLiteral("Eine angehaltene Anlage schalten ohne Rückfrage wieder ein:");
  for (const Command& command : commandTable()) {
    const QStringList kinds = switchedOnBy(command);
    if (kinds.isEmpty()) continue;
    lines << QStringLiteral("  %1 an %2").arg(wordsOf(command), kinds.join(QStringLiteral(", ")));
  }
  return lines;
}

QStringList helpLines(const Command& command) {
  QStringList lines{QStringLiteral("Aufruf: lokari-cli ") + syntaxOf(command), QString(),
                    QString::fromUtf16(command.purpose), QString()};
  lines += argumentLines(command.arguments);
  if (!command.arguments.empty()) lines << QString();
  const QStringList kinds = switchedOnBy(command);
  if (!kinds.isEmpty()) {
    lines << QStringLiteral("Schaltet eine angehaltene Anlage wieder ein an ") +
                 kinds.join(QStringLiteral(", "))
          << QString();
  }
  lines << QStringLiteral("Weitere Befehle: ") + otherCommands(command).join(QStringLiteral(", "));
  return lines;
}

}  // namespace lokari
