// What keeps a report from being made: a German text that the user can read.
#pragma once

#include <QString>

#include <stdexcept>

namespace lokari {

class ReportError : public std::runtime_error {
 public:
  explicit ReportError(const QString& text) : std::runtime_error(text.toStdString()), text_(text) {}

  const QString& text() const { return text_; }

 private:
  QString text_;
};

}  // namespace lokari
