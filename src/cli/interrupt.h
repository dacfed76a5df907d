// Ctrl-C, as the command line sees it.
#pragma once

#include <functional>

namespace lokari {

/// Ctrl-C.
struct Interrupt {
  bool raised = false;
  std::function<void()> action;  ///< what it does now; may be empty

  void raise() {
    raised = true;
    if (action) action();
  }
};

}  // namespace lokari
