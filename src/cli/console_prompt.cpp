#include "cli/console_prompt.h"

#include "base/clock.h"
#include "cli/console.h"
#include "cli/interrupt.h"

namespace lokari {

namespace {

constexpr Millis kPatience = 30000;
constexpr Millis kAskAgain = 300;

/// On a terminal a carriage return would write one line over another.
QString terminalText(const QString& text, const QString& more) {
  QString shown = more.isEmpty() ? text : text + u' ' + more;
  return shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u' ');
}

}  // namespace

Answer ConsolePrompt::ask(const Box& box) {
  const QString text = terminalText(box.text, box.more);
  switch (box.buttons) {
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

int ConsolePrompt::choose(const Choice& choice) {
  const int answer = yes_ ? 0 : choice.safe;
  QString caption = choice.answers.value(answer);
  console_.message(
      QStringLiteral("%1 [%2]").arg(terminalText(choice.text, choice.more), caption.remove(u'&')));
  return answer;
}

bool ConsolePrompt::waitUntil(const QString& text, const std::function<bool()>& done) {
  console_.message(terminalText(text, {}));
  const Millis limit = clock_.now() + kPatience;
  while (clock_.now() < limit) {
    if (done()) return true;
    if (clock_.waitUntil([this] { return interrupt_.raised; }, clock_.now() + kAskAgain)) break;
  }
  return false;
}

QString ConsolePrompt::openFile(const FileQuestion&) {
  return {};
}

QString ConsolePrompt::saveFile(const FileQuestion&) {
  return {};
}

}  // namespace lokari
