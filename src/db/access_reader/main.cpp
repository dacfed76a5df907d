// lokari-access-reader: reads an Access file and tells on its standard output what stands in it, as
// db/access_stream.h says. libmdb may fail on a broken file in every way that a program can; here
// it takes nothing with it.
#include <cstdlib>
#include <string_view>
#include <strings.h>

#include "db/access_reader/access_file.h"
#include "db/access_reader/guard.h"
#include "db/access_reader/stream_writer.h"

namespace {

using namespace lokari;

void tellTables(AccessFile& file, StreamWriter& out) {
  for (const MdbCatalogEntry* entry : file.tables()) {
    out.name(AccessRecord::Table, entry->object_name);
  }
  out.record(AccessRecord::End);
}

void tellTable(AccessFile& file, const char* name, StreamWriter& out) {
  for (MdbCatalogEntry* entry : file.tables()) {
    if (strcasecmp(entry->object_name, name) != 0) continue;
    file.tell(entry, out);
    return out.record(AccessRecord::End);
  }
  out.failure(AccessFailure::NoTable);
}

}  // namespace

int main(int argc, char** argv) {
  const std::string_view command = argc > 1 ? argv[1] : "";
  const bool listing = command == kAccessTables && argc == 3;
  const bool reading = command == kAccessTable && argc == 4;
  if (!listing && !reading) return EXIT_FAILURE;
  StreamWriter out(takeStandardOutput());
  guardProcess();
  AccessFile file(argv[2]);
  try {
    if (!file.isOpen()) {
      out.failure(AccessFailure::CannotOpen);
    } else if (listing) {
      tellTables(file, out);
    } else {
      tellTable(file, argv[3], out);
    }
  } catch (const DamagedFile&) {
    out.failure(AccessFailure::Damaged);
  }
  out.flush();
  // All that is left is memory; libmdb's way of giving back that of a broken file is not needed.
  std::_Exit(EXIT_SUCCESS);
}
