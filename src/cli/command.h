// The commands of lokari-cli: one row and one source each.
#pragma once

#include <QStringList>

#include <span>
#include <stdexcept>

#include "cli/cli.h"

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

struct Command {
  const char16_t* words;      ///< "cv read": what calls it
  const char16_t* arguments;  ///< German, for the help
  const char16_t* purpose;    ///< German, for the help
  /// Gets what stands behind the words. May throw WrongCall, and LinkError, which ends the program
  /// with its message and status 1.
  ExitStatus (*run)(const QStringList& arguments, CliContext& context);
};

std::span<const Command> commandTable();

}  // namespace lokari
