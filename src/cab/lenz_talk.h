// What cabs and panels say to a Lenz interface: messages with their check byte, and the questions.
#pragma once

#include <QByteArray>

#include "link/lenz_framing.h"

namespace lokari {

class CabLine;
class StationLink;

class LenzTalk {
 public:
  /// `line` must outlive it. The interface is the one that the settings name.
  explicit LenzTalk(CabLine& line);

  const LenzInterface& type() const { return framing_.type(); }

  /// Sends a message that has its check byte. What waits until it is out is dropped, since it
  /// cannot be the reply; unless it belongs to the question around a stop. A failure is not told.
  void send(const QByteArray& message);

  /// Sends `message` and its check byte and gives the reply, at least `size` bytes of it; empty
  /// when it does not come whole within `timeoutVal`, at a cancel, and when the line is gone.
  /// `lingers`: a pause of 100 ms lets a longer reply come in whole.
  QByteArray ask(const QByteArray& message, int size, bool lingers = false);

 private:
  StationLink& link() const;
  void write(const QByteArray& message);

  CabLine& line_;
  LenzFraming framing_;
};

}  // namespace lokari
