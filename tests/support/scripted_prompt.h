// Boxes that answer themselves: scripted answers, and a record of every text shown.
#pragma once

#include <QStringList>

#include <deque>

#include "base/prompt.h"

namespace lokari::test {

class ScriptedPrompt final : public Prompt {
 public:
  using Prompt::ask;
  Answer ask(const Box& box) override;
  int choose(const Choice& choice) override;
  bool waitUntil(const QString& text, const std::function<bool()>& done) override;
  QString openFile(const FileQuestion& question) override;
  QString saveFile(const FileQuestion& question) override;
  void beep() override { ++beeps; }

  /// Answers for the next questions, in their order. Questions beyond them get the safe answer:
  /// Cancel or No. A box with the one button takes none.
  std::deque<Answer> answers;
  /// Indexes for the next choices, in their order. Choices beyond them get their safe answer.
  std::deque<int> choices;
  /// Happens while a question or a choice is open.
  std::function<void()> whileAsked;
  /// Happens while a box without a question is open.
  std::function<void()> whileShown;
  /// How often a wait asks before the user gives it up; what happens ahead of each asking.
  int patience = 0;
  std::function<void()> meanwhile;
  /// File names for the next file dialogs; beyond them the user cancels.
  std::deque<QString> fileNames;

  QStringList shown;    ///< text of every box, questions included
  QStringList below;    ///< what stood below the text of every box, empty texts included
  QList<Choice> asked;  ///< every choice
  QList<FileQuestion> fileQuestions;
  int beeps = 0;
  bool boxInBox = false;  ///< a box came up while a wait was open

 private:
  void show(const QString& text, const QString& more);

  bool waiting_ = false;

  QString nextFile(const FileQuestion& question);
};

}  // namespace lokari::test
