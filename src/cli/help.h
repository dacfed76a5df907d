// What `--help` prints, made from the table of the commands.
#pragma once

#include <QStringList>

namespace lokari {

struct ArgumentRow;
struct Command;

/// "drive ADRESSE [--speed N] [--stop|--go]"
QString syntaxOf(const Command& command);
/// "--speed N", "ADRESSE"
QString headOf(const ArgumentRow& row);
/// "0 bis 127: Stellung des Reglers"
QString meaningOf(const ArgumentRow& row);

/// Names of the kinds whose stopped layout the command switches on again; empty for none.
QStringList switchedOnBy(const Command& command);

/// All commands.
QStringList helpLines();
/// One command with its arguments.
QStringList helpLines(const Command& command);

}  // namespace lokari
