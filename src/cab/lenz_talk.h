// What cabs and panels say to a Lenz interface: messages with their check byte, and the questions.
#pragma once

#include <QByteArray>

#include "link/lenz_framing.h"

namespace lokari {

class CabLine;
class StationLink;

/// Every operation throws LinkError when the line is gone.
class LenzTalk {
 public:
  /// `line` must outlive it. The interface is the one that the settings name.
  explicit LenzTalk(CabLine& line);

  const LenzInterface& type() const;

  /// Sends a message that has its check byte. What waits until it is out is dropped, since it
  /// cannot be the reply; unless it belongs to the question around a stop.
  /// `lost` as in LenzFraming::lnzSend().
  void send(const QByteArray& message, std::function<void()> lost = {});

  /// Sends `message` and its check byte and gives the reply, at least `size` bytes of it; empty
  /// when it does not come whole within `timeoutVal`, and at a cancel.
  /// A reply whose check byte says that something came wrong is asked for once more, and taken when
  /// the same comes twice.
  /// `lingers`: a pause of 100 ms lets a longer reply come in whole.
  QByteArray ask(const QByteArray& message, int size, bool lingers = false);

 private:
  QByteArray askOnce(const QByteArray& message, int size, bool lingers);
  StationLink& link() const;
  /// The one of the session, which knows whose message waits for the line.
  LenzFraming& framing() const;

  CabLine& line_;
  StationKind kind_;
};

}  // namespace lokari
