// Boxes that answer themselves: scripted answers, and a record of every text shown.
#pragma once

#include <QStringList>

#include <deque>

#include "base/prompt.h"

namespace lokari::test {

class ScriptedPrompt final : public Prompt {
 public:
  Answer ask(const QString& text, Buttons buttons, Icon icon, const QString& title) override;
  QString openFile(const FileQuestion& question) override;
  QString saveFile(const FileQuestion& question) override;
  void beep() override { ++beeps; }

  /// Answers for the next questions, in their order. Questions beyond them get the safe answer:
  /// Cancel or No. A box with the one button takes none.
  std::deque<Answer> answers;
  /// File names for the next file dialogs; beyond them the user cancels.
  std::deque<QString> fileNames;

  QStringList shown;  ///< text of every box, questions included
  QList<FileQuestion> fileQuestions;
  int beeps = 0;

 private:
  QString nextFile(const FileQuestion& question);
};

}  // namespace lokari::test
