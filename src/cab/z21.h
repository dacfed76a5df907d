// Cabs and panels on a Z21.
#pragma once

#include "cab/cab_protocol.h"
#include "cab/panel_protocol.h"
#include "cab/z21_codec.h"

namespace lokari {

class Z21Protocol;

namespace z21 {
struct Coding;
}

class Z21Cab final : public CabProtocol {
 public:
  /// What sendZ21() sends when no speed is meant.
  static constexpr int kNoSpeed = -1;
  /// What it sends when no function is meant either: stop or go.
  static constexpr int kNoFunction = -1;

  using CabProtocol::CabProtocol;

  std::optional<FunctionMask> readState() override;
  FunctionMask toldFunctions() const override { return told_; }
  bool sendSpeed() override;
  void sendDirection() override { sendSpeed(); }
  void sendFunction(int n) override;
  void sendStopped() override;
  /// The poll: readZ21State() that is over before the next one is due.
  void tick() override;

  /// A driving message for a `speed` from 0 on, a function message for a `function` from 0 to 28,
  /// else stop or go by the state; then the vehicle's state is asked for.
  void sendZ21(int address, int speed, int function, bool backward);
  /// Asks for the vehicle's state and tells it by CabHooks::stateArrived. An answer for another
  /// address changes nothing; without an answer the functions are told as off. True for a good one.
  /// The waiting gives way to a command that comes meanwhile: a lost datagram must not hold up
  /// what the user does.
  bool readZ21State(int address);

 private:
  enum class Patience { TimeOut, Command, Poll };

  Z21Protocol& station() const;
  const z21::Coding& coding() const;
  void ask(int address, Patience patience);
  /// What has come; nothing when it is too short.
  std::optional<z21::VehicleState> reply() const;
  void take(const z21::VehicleState& vehicle);
  bool tell(int address);
  void tellLayout(bool drives);

  int silentPolls_ = 0;  // in a row
  FunctionMask told_ = 0;
};

std::unique_ptr<CabProtocol> makeZ21Cab(CabLine& line, CabState& state, CabHooks hooks);
std::unique_ptr<PanelProtocol> makeZ21Panel(CabLine& line, PanelState& state);

}  // namespace lokari
