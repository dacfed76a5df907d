// A progress that nobody watches.
#pragma once

#include "base/progress.h"

namespace lokari::benchmarks {

class NoProgress final : public Progress {
 public:
  void setStatus(const QString&) override {}
  void setPercent(double) override {}
  bool cancelled() override { return false; }
};

}  // namespace lokari::benchmarks
