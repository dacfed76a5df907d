// What goes wrong, by script.
#pragma once

#include <QString>

#include <optional>
#include <vector>

namespace lokari::sim {

enum class FaultKind {
  // on the wire, one per answer
  Silence,    ///< the answer never comes
  Late,       ///< `amount` ms later, 5000 unless given
  Garbage,    ///< as many bytes of something else
  Short,      ///< only the first `amount` bytes, half of it unless given
  Flip,       ///< one bit came wrong: that of number `amount`, counted from the first byte's lowest
  Stray,      ///< with a message nobody asked for: `amount` 0 ahead, 1 in its middle, 2 behind it
  Split,      ///< byte by byte, `amount` ms apart, 20 unless given
  Unplugged,  ///< instead of answering the station vanishes
  // on the track, one per programming operation
  Busy,  ///< also where a station has no time to drive, switch or tell
  ShortCircuit,
  NoDecoder,
  NoAck,
  WrongValue,  ///< reads back one more than it is
  // in the boot loader, one per block
  BlockError,  ///< the block came wrong
  BankLost,    ///< the bank's contents are lost
};

struct Fault {
  static constexpr int kAlways = -1;

  FaultKind kind = FaultKind::Silence;
  int count = 1;  ///< times it strikes, or kAlways
  std::optional<int> amount = {};
  int skip = 0;  ///< occasions that pass unharmed before it
};

/// "name[:count[:amount]][@skip]", such as "late:2:1500" or "unplugged@10"; a count of "immer" is
/// always. Nothing for a text that is none. The names are the kinds in lower case.
std::optional<Fault> faultFromText(const QString& text);

class FaultPlan {
 public:
  void add(const Fault& fault) { faults_.push_back(fault); }

  /// An occasion for `kind`: the fault that strikes, used up by one, or nothing.
  std::optional<Fault> strike(FaultKind kind);

 private:
  std::vector<Fault> faults_;
};

}  // namespace lokari::sim
