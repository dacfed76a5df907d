// This program's installation: where its data are, and what its first start does.
#pragma once

#include <QString>

#include "base/app_paths.h"

namespace lokari {

struct Installation {
  AppPaths paths;
  QString programs;  ///< the folder of this program and of those that belong to it
  QString fault;     ///< empty, or a German message: the data folder could not be made
};

/// Where an installation whose programs lie in `programs` keeps what it carries.
QString installedData(const QString& programs);

/// Finds the data folder of the running program. `commandLine` is the stem of another settings
/// file, empty for the usual one.
Installation findInstallation(const QString& commandLine);

/// Makes a data folder ready that has never been used: it gets all that an installation carries. A
/// folder that holds EMPTY.MDB has been used and is left alone; files that are there stay as they
/// are. Empty on success, else a German message.
QString prepareAppPath(const QString& appPath, const QString& installedData);

}  // namespace lokari
