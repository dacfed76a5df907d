// Where the program lives: its data folder, its settings file and the folder of its data files.
#pragma once

#include <QString>

namespace lokari {

struct AppPaths {
  QString appPath;      ///< folder of the settings file, the databases and the catalogue
  QString basePath;     ///< folder of the pictures and description files: `appPath` or its parent
  QString iniFile;      ///< full path of the settings file
  QString installed{};  ///< folder of what the installation carries; empty when there is none
};

/// The data folder: `environment` (LOKARI_APP) when it is not empty; else the executable's folder
/// when it is writable and holds EMPTY.MDB, a portable installation; else "lokari" below
/// `userData` ($XDG_DATA_HOME).
QString chooseAppPath(const QString& environment, const QString& executableFolder,
                      const QString& userData);

/// Copies what an installation carries into `appPath`, folders included, and never overwrites a
/// file that is there. Empty on success, else a German message that names the file.
QString seedAppPath(const QString& appPath, const QString& installedData);

/// The three paths. `commandLine` is the stem of another settings file, taken as it stands; empty
/// means LOKARI.INI.
AppPaths appPathsFor(const QString& appPath, const QString& commandLine);

}  // namespace lokari
