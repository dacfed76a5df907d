#include "support/scripted_prompt.h"

#include <QScopedValueRollback>

namespace lokari::test {

void ScriptedPrompt::show(const QString& text, const QString& more) {
  boxInBox = boxInBox || waiting_;
  shown << text;
  below << more;
}

Answer ScriptedPrompt::ask(const Box& box) {
  show(box.text, box.more);
  if (box.buttons == Buttons::Ok) {
    if (whileShown) whileShown();
    return Answer::Ok;
  }
  if (whileAsked) whileAsked();
  if (answers.empty()) return box.buttons == Buttons::YesNo ? Answer::No : Answer::Cancel;
  const Answer answer = answers.front();
  answers.pop_front();
  return answer;
}

int ScriptedPrompt::choose(const Choice& choice) {
  show(choice.text, choice.more);
  asked << choice;
  if (whileAsked) whileAsked();
  if (choices.empty()) return choice.safe;
  const int answer = choices.front();
  choices.pop_front();
  return answer;
}

bool ScriptedPrompt::waitUntil(const QString& text, const std::function<bool()>& done) {
  show(text, {});
  const QScopedValueRollback waiting(waiting_, true);
  for (int times = 0; times < patience; ++times) {
    if (meanwhile) meanwhile();
    if (done()) return true;
  }
  return false;
}

QString ScriptedPrompt::nextFile(const FileQuestion& question) {
  fileQuestions << question;
  if (fileNames.empty()) return {};
  const QString name = fileNames.front();
  fileNames.pop_front();
  return name;
}

QString ScriptedPrompt::openFile(const FileQuestion& question) {
  return nextFile(question);
}

QString ScriptedPrompt::saveFile(const FileQuestion& question) {
  return nextFile(question);
}

}  // namespace lokari::test
