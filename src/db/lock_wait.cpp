#include "db/lock_wait.h"

#include <QScopeGuard>

#include "db/database.h"

namespace lokari {

void whileLocked(Database& database, const LockWait& wait, const std::function<void()>& operation) {
  try {
    operation();
  } catch (const StorageError& error) {
    if (error.code() != storage_error::kLocked) throw;
    // One wait at a time: the outer one, in whose event loop this runs, asks again.
    if (database.patience() == 0) throw;
    // Windows live on while the file is asked for again.
    database.setPatience(0);
    const auto patience = qScopeGuard([&database] { database.setPatience(kLockPatience); });
    const bool done = wait(error.text(), [&operation] {
      try {
        operation();
        return true;
      } catch (const StorageError& again) {
        if (again.code() != storage_error::kLocked) throw;
        return false;
      }
    });
    if (!done) throw;
  }
}

}  // namespace lokari
