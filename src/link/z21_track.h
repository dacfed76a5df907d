// What a Z21 has told of its track, by its status or by broadcasts.
#pragma once

#include <QByteArray>

namespace lokari {

class Z21Track {
 public:
  enum class State {
    Unknown,
    On,
    Halted,        ///< all vehicles are stopped
    WithoutPower,  ///< it is off, or short-circuited
  };

  /// Nothing has been told yet.
  void clear() { state_ = State::Unknown; }
  /// Any message. Programming mode changes nothing: it ends with what was before.
  void hear(const QByteArray& message);

  State state() const { return state_; }
  bool isStanding() const { return state_ == State::Halted || state_ == State::WithoutPower; }

 private:
  State state_ = State::Unknown;
};

}  // namespace lokari
