// Waiting for a database file that another program holds.
#pragma once

#include <QString>

#include <functional>

namespace lokari {

class Database;

/// Tells the user that somebody holds the file, `fault` in German, and asks `done` a few times a
/// second whether it is free. False when the user gave up.
using LockWait = std::function<bool(const QString& fault, const std::function<bool()>& done)>;

/// Runs `operation`; where the file is held, again until it is free, with windows that live on
/// meanwhile. Within another wait it runs once: the outer one asks again. Throws what `operation`
/// throws; that the file is held only when the user gives up. `operation` shows nothing: the box of
/// the wait may be open.
void whileLocked(Database& database, const LockWait& wait, const std::function<void()>& operation);

}  // namespace lokari
