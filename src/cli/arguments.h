// Reading the arguments of a command. Every fault throws WrongCall.
#pragma once

#include <QStringList>

#include <optional>

namespace lokari {

class Arguments {
 public:
  explicit Arguments(QStringList arguments) : rest_(std::move(arguments)) {}

  /// Takes a switch out; false when it is not there.
  bool takeFlag(const QString& name);
  /// Takes an option and its value out.
  std::optional<QString> takeValue(const QString& name);
  /// Takes an option out each time it stands there, with its values in their order.
  QStringList takeValues(const QString& name);
  std::optional<int> takeNumber(const QString& name, int first, int last);

  /// What is left, once every option is taken: an option that nobody took is none.
  QStringList takeRest();

 private:
  QStringList rest_;
};

/// The decimal number that the whole text is; `what` names it in the message.
int numberArgument(const QString& text, int first, int last, const QString& what);

}  // namespace lokari
