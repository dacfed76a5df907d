// The command line of the program with windows: the stem of a settings file, or a question about
// the program itself.
#pragma once

#include <QString>

namespace lokari {

/// What "--help", "-h" and "--version" print; empty for everything else, and where a settings file
/// of that name exists in `appPath`, since the command line is its stem then.
QString answerTo(const QString& commandLine, const QString& appPath);

/// The data folder of the running program; nothing is made in it.
QString dataFolder();

}  // namespace lokari
