// What `--help` prints, made from the table of the commands.
#pragma once

#include <QStringList>

namespace lokari {

struct Command;

/// "drive ADRESSE [--speed N] [--stop|--go]"
QString syntaxOf(const Command& command);

/// All commands.
QStringList helpLines();
/// One command with its arguments.
QStringList helpLines(const Command& command);

}  // namespace lokari
