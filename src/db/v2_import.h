// Takes the vehicles of a database of format V2 over. Such a database has a table LOCO_DAT without
// collections and with one CV set; the import works by the names of its columns. A picture in the
// wrapper of Access is unwrapped; another object there stays as it is, and the report says so.
#pragma once

#include <functional>
#include <memory>

#include "db/foreign_database.h"

namespace lokari {

class Database;
class DatabaseSession;
class Progress;

/// Opens the V2 database. Throws StorageError when it cannot be read.
using OpenForeign = std::function<std::unique_ptr<ForeignDatabase>()>;

/// How an import came to its end.
enum class ImportEnd {
  Whole,
  RowsFailed,  ///< the source was read to its end, but not each of its vehicles came over
  Broken,      ///< it was stopped, or source or target failed
};

/// Takes the vehicles over into the database that is open in `session`, and shows it anew from its
/// first record, without a filter. A pending edit is dropped. Its words go to `progress`, the last
/// ones are the report; nothing is thrown. Doubles are no failure.
ImportEnd ConvertDB(const OpenForeign& openSource, DatabaseSession& session, Progress& progress);

/// The same into a database that nothing shows. What of it came on disk is told and stays, also
/// after a cancel or when the source cannot be read on; a failure of the target takes everything
/// back.
ImportEnd importVehicles(const OpenForeign& openSource, Database& target, Progress& progress);

}  // namespace lokari
