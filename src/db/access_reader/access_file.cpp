#include "db/access_reader/access_file.h"

#include <array>
#include <bit>
#include <cstring>
#include <string_view>

#include "db/access_reader/stream_writer.h"

namespace lokari {
namespace {

// The head of a value outside its row: its length in 30 bits, and in the two above where it stands.
constexpr std::uint32_t kLengthMask = 0x3FFFFFFF;
constexpr std::uint32_t kPlaceMask = ~kLengthMask;
constexpr int kPlaceByte = 3;
// Above it a row's place on its page has marks.
constexpr int kRowPlaceMask = 0x1FFF;
// A sign and a number of 16 bytes.
constexpr int kDecimalBytes = 17;

struct FreeText {
  void operator()(char* text) const { g_free(text); }
};
using LibraryText = std::unique_ptr<char, FreeText>;

std::uint64_t littleEndian(std::string_view field) {
  std::uint64_t number = 0;
  for (std::size_t i = field.size(); i-- > 0;) {
    number = number << 8U | static_cast<std::uint8_t>(field[i]);
  }
  return number;
}

}  // namespace

AccessFile::AccessFile(const char* path)
    : handle_(mdb_open(path, MDB_NOFLAGS)), chunk_(MDB_BIND_SIZE) {
  if (!isOpen() || IS_JET3(handle_.get())) return;
  // libmdb takes every character for two bytes. Those beyond them come in four.
  const iconv_t conversion = iconv_open("UTF-8", "UTF-16LE");
  if (conversion == reinterpret_cast<iconv_t>(-1)) return;  // NOLINT(performance-no-int-to-ptr)
  iconv_close(handle_->iconv_in);
  handle_->iconv_in = conversion;
}

std::vector<MdbCatalogEntry*> AccessFile::tables() {
  if (mdb_read_catalog(handle_.get(), MDB_TABLE) == nullptr) throw DamagedFile();
  std::vector<MdbCatalogEntry*> entries;
  for (unsigned i = 0; i < handle_->num_catalog; ++i) {
    auto* entry = static_cast<MdbCatalogEntry*>(g_ptr_array_index(handle_->catalog, i));
    if (mdb_is_user_table(entry) != 0) entries.push_back(entry);
  }
  return entries;
}

void AccessFile::tell(MdbCatalogEntry* entry, StreamWriter& out) {
  MdbTableDef* table = mdb_read_table(entry);
  if (table == nullptr || mdb_read_columns(table) == nullptr) throw DamagedFile();
  std::array<MdbField, MDB_MAX_COLS> fields{};
  if (table->num_cols > fields.size() || table->columns->len > fields.size()) throw DamagedFile();
  std::vector<MdbColumn*> columns;
  for (unsigned i = 0; i < table->columns->len; ++i) {
    columns.push_back(static_cast<MdbColumn*>(g_ptr_array_index(table->columns, i)));
    out.name(AccessRecord::Column, columns.back()->name);
  }
  out.rowCount(table->num_rows);
  mdb_rewind_table(table);
  while (mdb_fetch_row(table) != 0) {
    findFields(table, fields);
    out.record(AccessRecord::Row);
    for (std::size_t i = 0; i < columns.size(); ++i) tellValue(*columns[i], fields[i], out);
  }
  mdb_free_tabledef(table);
}

// A column itself knows where its value stands as well, but takes an empty one for a Null.
void AccessFile::findFields(MdbTableDef* table, std::span<MdbField> fields) {
  int start = 0;
  std::size_t length = 0;
  if (mdb_find_row(handle_.get(), static_cast<int>(table->cur_row) - 1, &start, &length) != 0 ||
      mdb_crack_row(table, start & kRowPlaceMask, length, fields.data()) !=
          static_cast<int>(table->num_cols)) {
    throw DamagedFile();
  }
}

void AccessFile::tellValue(MdbColumn& column, const MdbField& field, StreamWriter& out) {
  // A truth value is its own Null mark: the mark stands for "no".
  if (column.col_type == MDB_BOOL) return out.number(field.is_null == 0 ? -1 : 0);
  if (field.is_null != 0) return out.null();
  const auto whole = [&](int bytes) { return littleEndian(stored(field, bytes).substr(0, bytes)); };
  switch (column.col_type) {
    case MDB_BYTE:
      return out.number(static_cast<std::uint8_t>(whole(1)));
    case MDB_INT:
      return out.number(static_cast<std::int16_t>(whole(2)));
    case MDB_LONGINT:
      return out.number(static_cast<std::int32_t>(whole(4)));
    case MDB_MONEY:
      return out.amount(static_cast<std::int64_t>(whole(8)));
    case MDB_FLOAT:
      return out.real(std::bit_cast<float>(static_cast<std::uint32_t>(whole(4))));
    case MDB_DOUBLE:
      return out.real(std::bit_cast<double>(whole(8)));
    case MDB_TEXT:
      return out.text(utf8(stored(field)));
    case MDB_MEMO:
      return out.text(utf8(longValue(column, field)));
    case MDB_OLE:
      return out.bytes(longValue(column, field));
    case MDB_BINARY:
      return out.bytes(stored(field));
    case MDB_NUMERIC: {
      stored(field, kDecimalBytes);
      const LibraryText text(
          mdb_numeric_to_string(handle_.get(), field.start, column.col_scale, column.col_prec));
      return out.real(g_ascii_strtod(text.get(), nullptr));
    }
    default:
      break;
  }
  // Dates and identifiers: this system has none, so that their text will do.
  const LibraryText text(mdb_col_to_string(handle_.get(), handle_->pg_buf, field.start,
                                           column.col_type,
                                           static_cast<int>(stored(field).size())));
  out.text(text == nullptr ? std::string_view() : std::string_view(text.get()));
}

std::string_view AccessFile::stored(const MdbField& field, int least) const {
  if (field.start < 0 || field.siz < least || field.siz > MDB_PGSIZE - field.start) {
    throw DamagedFile();
  }
  return {reinterpret_cast<const char*>(handle_->pg_buf) + field.start,
          static_cast<std::size_t>(field.siz)};
}

std::string AccessFile::longValue(MdbColumn& column, const MdbField& field) {
  if (field.siz == 0) return {};
  std::array<char, MDB_MEMO_OVERHEAD> head{};
  std::memcpy(head.data(), stored(field, MDB_MEMO_OVERHEAD).data(), head.size());
  const auto lengthAndPlace = static_cast<std::uint32_t>(littleEndian({head.data(), 4}));
  const std::size_t length = lengthAndPlace & kLengthMask;
  // libmdb has 24 bits for the length of a value that spans pages, and does not use it otherwise.
  if ((lengthAndPlace & kPlaceMask) == 0) head[kPlaceByte] = 0;
  std::string value;
  // Where libmdb puts a piece, which is never longer than a page. Rows are read without.
  column.bind_ptr = chunk_.data();
  std::size_t size = mdb_ole_read(handle_.get(), &column, head.data(), MDB_BIND_SIZE);
  while (size > 0 && size <= MDB_PGSIZE && value.size() < length) {
    value.append(chunk_.data(), size);
    size = mdb_ole_read_next(handle_.get(), &column, head.data());
  }
  column.bind_ptr = nullptr;
  if (value.size() != length) throw DamagedFile();
  return value;
}

std::string AccessFile::utf8(std::string_view data) {
  // A byte of compressed text is a character, which takes at most three bytes.
  std::string text(data.size() * 4 + 8, '\0');
  const int length =
      mdb_unicode2ascii(handle_.get(), data.data(), data.size(), text.data(), text.size() - 1);
  if (length < 0 || static_cast<std::size_t>(length) >= text.size()) throw DamagedFile();
  text.resize(static_cast<std::size_t>(length));
  return text;
}

}  // namespace lokari
