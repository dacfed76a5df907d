// An Access file, read through libmdb.
#pragma once

// Before libmdb's header, which would take it in as C.
#include <glib.h>
#include <mdbtools.h>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace lokari {

class StreamWriter;

/// The file says something that cannot be.
struct DamagedFile {};

class AccessFile {
 public:
  /// Opens the file for reading; isOpen() tells whether that worked.
  explicit AccessFile(const char* path);

  bool isOpen() const { return handle_ != nullptr; }
  /// The user's tables, in the file's order. Throws DamagedFile.
  std::vector<MdbCatalogEntry*> tables();
  /// Tells columns, row count and rows of a table. Throws DamagedFile.
  void tell(MdbCatalogEntry* entry, StreamWriter& out);

 private:
  struct CloseHandle {
    void operator()(MdbHandle* handle) const { mdb_close(handle); }
  };

  /// Where the row at hand has its values, column by column.
  void findFields(MdbTableDef* table, std::span<MdbField> fields);
  void tellValue(MdbColumn& column, const MdbField& field, StreamWriter& out);
  /// The bytes of a value in its row; at least `least` of them.
  std::string_view stored(const MdbField& field, int least = 0) const;
  /// A value that may stand outside its row, whatever its length.
  std::string longValue(MdbColumn& column, const MdbField& field);
  std::string utf8(std::string_view data);

  std::unique_ptr<MdbHandle, CloseHandle> handle_;
  std::vector<char> chunk_;
};

}  // namespace lokari
