// Takes a description file that the user got from elsewhere into the catalogue: the file into its
// maker's folder, its decoder type into the database.
#pragma once

#include <QList>
#include <QString>

#include <functional>
#include <optional>

#include "db/catalogue.h"

namespace lokari {

class Database;
class Prompt;

struct DecImportParts {
  Prompt& prompt;
  Database& database;
  QString appPath;  ///< holds a folder for each maker
  /// `dlgManufSel`: lets the user choose one of the makers; nothing when he cancels. Gives the
  /// maker's number.
  std::function<std::optional<int>(const QList<Maker>& makers)> chooseMaker;
};

/// The menu command, with its file dialog, questions and messages. The file in the maker's folder
/// is replaced only after the new one is complete on disk, and only if the database takes the type.
void mnuImpDec(const DecImportParts& parts);

}  // namespace lokari
