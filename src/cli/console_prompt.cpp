#include "cli/console_prompt.h"

#include "cli/console.h"

namespace lokari {

Answer ConsolePrompt::ask(const QString& text, Buttons buttons, Icon, const QString&) {
  switch (buttons) {
    case Buttons::Ok:
      console_.message(text);
      return Answer::Ok;
    case Buttons::OkCancel:
      console_.message(text + (yes_ ? QStringLiteral(" [OK]") : QStringLiteral(" [Abbruch]")));
      return yes_ ? Answer::Ok : Answer::Cancel;
    case Buttons::YesNoCancel:
      console_.message(text + (yes_ ? QStringLiteral(" [Ja]") : QStringLiteral(" [Abbruch]")));
      return yes_ ? Answer::Yes : Answer::Cancel;
    case Buttons::YesNo:
      break;
  }
  console_.message(text + (yes_ ? QStringLiteral(" [Ja]") : QStringLiteral(" [Nein]")));
  return yes_ ? Answer::Yes : Answer::No;
}

QString ConsolePrompt::openFile(const FileQuestion&) {
  return {};
}

QString ConsolePrompt::saveFile(const FileQuestion&) {
  return {};
}

}  // namespace lokari
