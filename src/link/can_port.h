// What is open of the CAN drivers: one interface or key.
#pragma once

#include "link/can_driver.h"

namespace lokari {

/// Results as those of CanDriver.
class CanPort {
 public:
  virtual ~CanPort() = default;
  virtual int close() = 0;
  virtual int write(const CanMessage& message) = 0;
  virtual int read(CanMessage& message) = 0;
  virtual QString fault() const { return {}; }
  virtual bool isRefused() const { return false; }
};

}  // namespace lokari
