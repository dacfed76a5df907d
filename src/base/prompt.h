// Every box that the user sees. The windows show them, the command line answers them, tests script
// them.
#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace lokari {

enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel };
enum class Answer { Ok, Cancel, Yes, No };
enum class Icon { None, Information, Warning, Question };

/// A box with the usual buttons. Closing it counts as Cancel, else as No, or, with the one button,
/// Ok.
struct Box {
  QString text;  ///< stands first and whole
  Buttons buttons = Buttons::Ok;
  Icon icon = Icon::Question;
  QString title = {};  ///< empty is the program's name
  QString more = {};   ///< stands below the text, smaller; empty for nothing
  /// The answer of the Enter key; without it the first button's.
  std::optional<Answer> preset = {};
};

/// A question whose answers have captions of their own.
struct Choice {
  QString text;  ///< stands first and whole
  QString more;  ///< stands below the text, smaller; empty for nothing
  /// One button each. The first does what was asked for, and is what `--yes` answers.
  QStringList answers;
  /// The index of the answer that loses and changes nothing: of the Enter key, of a closed box, of
  /// the command line without `--yes`.
  int safe = 0;
  Icon icon = Icon::Question;
};

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

  /// Shows a modal box and returns the answer.
  virtual Answer ask(const Box& box) = 0;

  /// The same for a box of a text and its buttons.
  Answer ask(const QString& text, Buttons buttons, Icon icon = Icon::Question,
             const QString& title = {}) {
    return ask(Box{.text = text, .buttons = buttons, .icon = icon, .title = title});
  }

  /// A box with the one button "OK".
  void message(const QString& text, Icon icon = Icon::Warning, const QString& more = {}) {
    ask(Box{.text = text, .buttons = Buttons::Ok, .icon = icon, .more = more});
  }

  /// Shows a modal box and returns the index of the chosen answer.
  virtual int choose(const Choice& choice) = 0;

  /// Shows `text` with Abbruch until `done`, which is asked a few times a second, returns true.
  /// False when the user gave up. What `done` throws passes through, with the box closed.
  virtual bool waitUntil(const QString& text, const std::function<bool()>& done) = 0;

  /// The chosen file's full path, or an empty text when the user cancelled.
  virtual QString openFile(const FileQuestion& question) = 0;
  virtual QString saveFile(const FileQuestion& question) = 0;

  /// Sounds the speaker once.
  virtual void beep() = 0;
};

}  // namespace lokari
