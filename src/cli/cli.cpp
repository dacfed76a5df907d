#include "cli/cli.h"

#include <QFileInfo>

#include <algorithm>
#include <optional>

#include "app/installation.h"
#include "base/ini_file.h"
#include "base/paths.h"
#include "base/plain_file.h"
#include "cli/command.h"
#include "cli/console.h"
#include "cli/console_prompt.h"
#include "cli/console_view.h"
#include "cli/help.h"
#include "link/link_error.h"
#include "link/trace.h"

namespace lokari {
namespace {

struct Found {
  const Command* command = nullptr;
  QStringList arguments;
};

/// The command whose words the arguments begin with.
Found findCommand(const QStringList& arguments) {
  for (const Command& command : commandTable()) {
    const QStringList words = QString::fromUtf16(command.words).split(QLatin1Char(' '));
    if (arguments.mid(0, words.size()) == words) return {&command, arguments.mid(words.size())};
  }
  return {};
}

/// The options that count in front of the command only.
struct FrontOptions {
  QString stem;                  ///< `--settings STEM`
  std::optional<QString> trace;  ///< `--trace [FILE]`; empty without a file
};

/// Whether a command begins with that word.
bool beginsCommand(const QString& word) {
  const auto rows = commandTable();
  return std::any_of(rows.begin(), rows.end(), [&word](const Command& command) {
    return QString::fromUtf16(command.words).section(QLatin1Char(' '), 0, 0) == word;
  });
}

FrontOptions takeFrontOptions(QStringList& arguments) {
  FrontOptions options;
  while (!arguments.isEmpty()) {
    const QString word = arguments.front();
    if (word == QLatin1String("--settings")) {
      if (arguments.size() < 2) {
        throw WrongCall(QStringLiteral("Hinter --settings fehlt der Stamm!"));
      }
      options.stem = arguments[1];
      arguments = arguments.mid(2);
    } else if (word == QLatin1String("--trace")) {
      const QString next = arguments.value(1);
      const bool named =
          !next.isEmpty() && !next.startsWith(QLatin1Char('-')) && !beginsCommand(next);
      options.trace = named ? next : QString();
      arguments = arguments.mid(named ? 2 : 1);
    } else {
      break;
    }
  }
  return options;
}

/// Says on the console where the trace stands and why it ends, for as long as a command runs.
class TraceOnConsole {
 public:
  TraceOnConsole(Trace* trace, Console& console) : trace_(trace), console_(console) {
    if (trace_ == nullptr) return;
    trace_->onFailure = [this](const QString& text) { console_.message(text); };
  }
  ~TraceOnConsole() {
    if (trace_ != nullptr) trace_->onFailure = nullptr;
  }
  TraceOnConsole(const TraceOnConsole&) = delete;
  TraceOnConsole& operator=(const TraceOnConsole&) = delete;

  void request(const std::optional<QString>& file) {
    if (trace_ != nullptr && file) trace_->request(*file);
  }
  void tellPlace() {
    if (trace_ == nullptr || !trace_->isOn()) return;
    console_.message(QStringLiteral("Die Verbindung wird mitgeschrieben: ") + trace_->path());
  }

 private:
  Trace* trace_;
  Console& console_;
};

/// Settings that were asked for but are not there must not send anything to another station.
void checkSettings(const Command& command, const QString& stem, const AppPaths& paths,
                   Console& console) {
  if (!stem.isEmpty() && !QFileInfo::exists(findFile(paths.iniFile))) {
    const QString text =
        QStringLiteral("Die Einstellungsdatei %1 gibt es nicht!").arg(paths.iniFile);
    if (command.usesStation) throw WrongCall(text);
    console.message(text + QStringLiteral(" Es gelten die Vorgaben."));
  }
  const QString special = specialFileFault(
      findFile(paths.iniFile), QStringLiteral("Die Einstellungsdatei %1").arg(paths.iniFile));
  if (!special.isEmpty() && command.usesStation) throw WrongCall(special);
  if (!special.isEmpty()) console.message(special + QStringLiteral(" Es gelten die Vorgaben."));
  if (!command.usesStation) return;
  const auto unknown = unknownStation(IniFile(paths.iniFile));
  if (!unknown) return;
  throw WrongCall(
      QStringLiteral("%1: Die Zentrale \"%2\" gibt es nicht! Möglich sind %3.")
          .arg(fileNameOf(paths.iniFile), *unknown, stationNames().join(QStringLiteral(", "))));
}

/// Makes Ctrl-C the button Abbruch of whatever the link does meanwhile.
class CancelByInterrupt {
 public:
  CancelByInterrupt(Interrupt& interrupt, StationLink& link) : interrupt_(interrupt) {
    interrupt_.action = [&link] {
      link.cancelRequested = true;
      link.cancelStays = true;
      link.hurryFarewell();
    };
    if (interrupt_.raised) interrupt_.action();
  }
  ~CancelByInterrupt() { interrupt_.action = nullptr; }
  CancelByInterrupt(const CancelByInterrupt&) = delete;
  CancelByInterrupt& operator=(const CancelByInterrupt&) = delete;

 private:
  Interrupt& interrupt_;
};

/// Nobody is asked here: the owner of a layout that stands reads at least what happens to it.
void tellSwitchingOn(const Command& command, const StationKindRow& kind, Console& console) {
  if (!command.use || !switchesOn(kind, *command.use, false)) return;
  console.message(
      QStringLiteral("Achtung: %1 schaltet an %2 die Anlage ein, auch eine angehaltene.")
          .arg(QString::fromUtf16(command.words), QString::fromUtf16(kind.name)));
}

ExitStatus runCommand(QStringList arguments, const CliWorld& world) {
  const bool yes = arguments.removeAll(QStringLiteral("--yes")) > 0;
  const FrontOptions options = takeFrontOptions(arguments);
  const QString& stem = options.stem;
  const Found found = findCommand(arguments);
  if (found.command == nullptr) {
    throw WrongCall(arguments.isEmpty() ? QStringLiteral("Es fehlt der Befehl!")
                                        : QStringLiteral("Den Befehl \"%1\" gibt es nicht!")
                                              .arg(arguments.join(QLatin1Char(' '))));
  }
  const Command& command = *found.command;
  const Call call(QString::fromUtf16(command.words), command.arguments, found.arguments);
  AppPaths paths = appPathsFor(world.appPath, stem);
  if (!world.programs.isEmpty()) paths.installed = installedData(world.programs);
  checkSettings(command, stem, paths, world.console);
  Settings settings = loadSettings(IniFile(paths.iniFile), paths.appPath);
  ConsolePrompt prompt(world.console, yes, world.clock, world.interrupt);
  ConsoleView view(world.console);
  TraceOnConsole trace(world.transports.trace, world.console);
  trace.request(options.trace);
  StationLink link(settings, world.clock, prompt, world.transports);
  trace.tellPlace();
  link.setView(&view);
  const CancelByInterrupt cancel(world.interrupt, link);
  CliContext context{paths,  settings,        world.clock,
                     prompt, world.console,   Results(world.console, call.has(u"--json")),
                     link,   world.interrupt, world.programs};
  // Whatever is wrong with a call is found ahead of its first session.
  link.onSessionOpening = [&] {
    tellSwitchingOn(command, settings.station(), world.console);
    link.onSessionOpening = nullptr;
  };
  return command.run(call, context);
}

bool asksForHelp(const QStringList& arguments) {
  return arguments.contains(QLatin1String("--help")) || arguments.contains(QLatin1String("-h")) ||
         arguments.value(0) == QLatin1String("help");
}

ExitStatus tellHelp(QStringList arguments, Console& console) {
  for (const char* word : {"--help", "-h", "help"}) arguments.removeAll(QLatin1String(word));
  const Found found = findCommand(arguments);
  const QStringList lines = found.command == nullptr ? helpLines() : helpLines(*found.command);
  for (const QString& line : lines) console.result(line);
  return ExitStatus::Done;
}

}  // namespace

ExitStatus runCli(const QStringList& arguments, const CliWorld& world) {
  if (asksForHelp(arguments)) return tellHelp(arguments, world.console);
  if (arguments == QStringList{QStringLiteral("--version")}) {
    world.console.result(QString::fromUtf16(kTitle));
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
