// The arguments of a command: the rows of a table say what they are called, what they may be and
// what they are for. From the same rows come the checks here, the help, and the test of the manual.
#pragma once

#include <QHash>
#include <QStringList>

#include <optional>
#include <span>
#include <stdexcept>
#include <vector>

namespace lokari {

/// A wrong call: exit status 2, nothing was done. The text is German.
class WrongCall : public std::runtime_error {
 public:
  explicit WrongCall(QString text)
      : std::runtime_error(text.toStdString()), text_(std::move(text)) {}
  const QString& text() const { return text_; }

 private:
  QString text_;
};

/// What an argument looks like. The numbers of a row are its `first` to its `last`.
enum class Form {
  Flag,       ///< an option without a value
  Text,       ///<
  Number,     ///<
  Numbers,    ///< a number, or a span of them as in "1-28"
  Choice,     ///< one of the words that `value` separates by "|"
  Setting,    ///< "CV=WERT", a number and a byte
  Switching,  ///< "N=on" or "N=off"
};

/// One option or operand of a command.
struct ArgumentRow {
  const char16_t* name;   ///< "--speed" of an option, "ADRESSE" of an operand
  const char16_t* value;  ///< what the help writes behind an option's name; empty for operands
  Form form;
  const char16_t* help;  ///< German
  int first = 0;
  int last = 0;
  bool many = false;              ///< may stand more than once
  int exclusive = 0;              ///< of rows with one number above 0 only one may stand
  const char16_t* missing = u"";  ///< German: what is told when the operand is not there

  bool isOption() const { return name[0] == u'-'; }
  bool isNumber() const { return last > first; }
};

using ArgumentRows = std::span<const ArgumentRow>;

/// "5=on": output or function 5 is to be on.
struct Switching {
  int number = 0;
  bool on = false;
};

/// "5=200": CV 5 is to be 200.
struct Setting {
  int cv = 0;
  int value = 0;
};

/// The arguments behind a command's words, checked by its rows. Options may stand anywhere.
class Call {
 public:
  /// Throws WrongCall for whatever the rows do not allow. `command` is for the message.
  Call(const QString& command, ArgumentRows rows, const QStringList& arguments);

  // What a row has got; nothing or false for one that did not stand there.
  bool has(QStringView name) const { return values_.contains(name.toString()); }
  std::optional<QString> text(QStringView name) const;
  std::optional<int> number(QStringView name) const;
  /// All numbers of Form::Numbers, in their order.
  std::vector<int> numbers(QStringView name) const;
  std::vector<Switching> switchings(QStringView name) const;
  std::vector<Setting> settings(QStringView name) const;

 private:
  QHash<QString, QStringList> values_;
};

/// The decimal number that the whole text is; `what` names it in the message. Throws WrongCall.
int numberArgument(const QString& text, int first, int last, const QString& what);

}  // namespace lokari
