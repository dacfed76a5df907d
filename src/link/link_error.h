// The failure of a transport: a port that cannot be opened or has vanished, a socket error.
#pragma once

#include <QString>

#include <stdexcept>

namespace lokari {

class LinkError : public std::runtime_error {
 public:
  /// `message` is German, a whole sentence for the user.
  explicit LinkError(QString message)
      : std::runtime_error(message.toStdString()), message_(std::move(message)) {}

  const QString& message() const { return message_; }

 private:
  QString message_;
};

}  // namespace lokari
