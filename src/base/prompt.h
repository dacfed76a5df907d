// Every box that the user sees. The windows show them, the command line answers them, tests script
// them.
#pragma once

#include <QString>

namespace lokari {

enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel };
enum class Answer { Ok, Cancel, Yes, No };
enum class Icon { None, Information, Warning, Question };

/// A file dialog. `filter` is a list "text|pattern|text|pattern", a pattern being one or more
/// masks separated by ";". `folder` is where the dialog starts.
struct FileQuestion {
  QString title;
  QString filter;
  QString folder;
  QString presetName;
};

class Prompt {
 public:
  virtual ~Prompt() = default;

  /// Shows a modal box and gives the button. Closing the box counts as Cancel, else as
  /// No, or, with the one button, Ok.
  virtual Answer ask(const QString& text, Buttons buttons, Icon icon = Icon::Question,
                     const QString& title = {}) = 0;

  /// A box with the one button "OK".
  void message(const QString& text, Icon icon = Icon::Warning) { ask(text, Buttons::Ok, icon); }

  /// The chosen file's full path, or an empty text when the user cancelled.
  virtual QString openFile(const FileQuestion& question) = 0;
  virtual QString saveFile(const FileQuestion& question) = 0;

  /// Sounds the speaker once.
  virtual void beep() = 0;
};

}  // namespace lokari
