#include "cli/cli.h"

#include "app/installation.h"
#include "base/ini_file.h"
#include "cli/arguments.h"
#include "cli/command.h"
#include "cli/console.h"
#include "cli/console_prompt.h"
#include "cli/console_view.h"
#include "link/link_error.h"

namespace lokari {
namespace {

QStringList helpLines() {
  QStringList lines{
      QStringLiteral("Aufruf: lokari-cli [--settings STAMM] BEFEHL [Argumente] [--yes]"),
      QString(),
      QStringLiteral("Befehle:"),
  };
  for (const Command& command : commandTable()) {
    lines << QStringLiteral("  %1 %2").arg(QString::fromUtf16(command.words),
                                           QString::fromUtf16(command.arguments));
    lines << QStringLiteral("      %1").arg(QString::fromUtf16(command.purpose));
  }
  lines << QString()
        << QStringLiteral("  --settings STAMM  andere Einstellungen als LOKARI: STAMM.INI")
        << QStringLiteral("  --yes             beantwortet alle Rückfragen mit OK oder Ja")
        << QStringLiteral("  --help            diese Hilfe") << QString()
        << QStringLiteral("Ergebnisse stehen in der Standardausgabe, durch Tabulatoren getrennt.")
        << QStringLiteral("Rückgabe: 0 alles erledigt, 1 etwas ist misslungen, 2 falscher Aufruf")
        << QStringLiteral("oder keine Verbindung. Strg-C ist die Schaltfläche Abbruch.");
  return lines;
}

struct Call {
  const Command* command = nullptr;
  QStringList arguments;
};

/// The command whose words the arguments begin with.
Call findCommand(const QStringList& arguments) {
  for (const Command& command : commandTable()) {
    const QStringList words = QString::fromUtf16(command.words).split(QLatin1Char(' '));
    if (arguments.mid(0, words.size()) == words) return {&command, arguments.mid(words.size())};
  }
  return {};
}

/// `--settings STEM`, which counts in front of the command only.
QString takeStem(QStringList& arguments) {
  if (arguments.isEmpty() || arguments.front() != QLatin1String("--settings")) return {};
  if (arguments.size() < 2) throw WrongCall(QStringLiteral("Hinter --settings fehlt der Stamm!"));
  const QString stem = arguments[1];
  arguments = arguments.mid(2);
  return stem;
}

ExitStatus runCommand(QStringList arguments, const CliWorld& world) {
  const bool yes = arguments.removeAll(QStringLiteral("--yes")) > 0;
  const QString stem = takeStem(arguments);
  const Call call = findCommand(arguments);
  if (call.command == nullptr) {
    throw WrongCall(arguments.isEmpty() ? QStringLiteral("Es fehlt der Befehl!")
                                        : QStringLiteral("Den Befehl \"%1\" gibt es nicht!")
                                              .arg(arguments.join(QLatin1Char(' '))));
  }
  AppPaths paths = appPathsFor(world.appPath, stem);
  if (!world.programs.isEmpty()) paths.installed = installedData(world.programs);
  Settings settings = loadSettings(IniFile(paths.iniFile), paths.appPath);
  ConsolePrompt prompt(world.console, yes);
  ConsoleView view(world.console);
  StationLink link(settings, world.clock, prompt, world.transports);
  link.setView(&view);
  CliContext context{paths,         settings, world.clock,     prompt,
                     world.console, link,     world.interrupt, world.programs};
  return call.command->run(call.arguments, context);
}

}  // namespace

ExitStatus runCli(const QStringList& arguments, const CliWorld& world) {
  if (arguments.contains(QLatin1String("--help")) || arguments == QStringList{"help"}) {
    const QStringList lines = helpLines();
    for (const QString& line : lines) world.console.result(line);
    return ExitStatus::Done;
  }
  try {
    return runCommand(arguments, world);
  } catch (const WrongCall& wrong) {
    world.console.message(wrong.text());
    world.console.message(QStringLiteral("Hilfe: lokari-cli --help"));
    return ExitStatus::WrongCall;
  } catch (const LinkError& error) {
    world.console.message(error.message());
    return ExitStatus::Failed;
  }
}

}  // namespace lokari
