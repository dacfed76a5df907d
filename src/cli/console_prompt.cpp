#include "cli/console_prompt.h"

#include "cli/console.h"

namespace lokari {

Answer ConsolePrompt::ask(const QString& boxText, Buttons buttons, Icon, const QString&) {
  // On a terminal the line ends of a box would write one line over another.
  const QString text = QString(boxText).replace(u'\r', u' ');
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
