// CAN drivers that tell the trace what they carry. They add nothing to the drivers' own behaviour
// and change no order.
#pragma once

#include "link/can_driver.h"
#include "link/message_trace.h"

namespace lokari {

class TracedCanDriver final : public CanDriver {
 public:
  /// `driver` and `trace` must outlive it.
  TracedCanDriver(CanDriver& driver, MessageTrace& trace) : driver_(driver), trace_(trace) {}

  bool isPresent(int driver) const override { return driver_.isPresent(driver); }
  int open(const CanOpenCall& call) override;
  int close() override;
  int write(const CanMessage& message) override;
  int read(CanMessage& message) override;
  QString fault() const override { return driver_.fault(); }
  bool isRefused() const override { return driver_.isRefused(); }

 private:
  CanDriver& driver_;
  MessageTrace& trace_;
};

}  // namespace lokari
