// Writes the stream of db/access_stream.h.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "db/access_stream.h"

namespace lokari {

class StreamWriter {
 public:
  /// Begins the stream on an open file; its head goes out at once, so that the other side can tell
  /// a reader that does not start from one that dies of the file. What cannot be written ends the
  /// process: nobody listens.
  explicit StreamWriter(int file);

  void record(AccessRecord kind) { byte(static_cast<std::uint8_t>(kind)); }
  void name(AccessRecord kind, std::string_view name);
  void rowCount(std::uint32_t rows);
  void failure(AccessFailure reason);

  void null() { value(AccessValue::Null); }
  void number(std::int32_t number);
  void amount(std::int64_t tenThousandths);
  void real(double number);
  void text(std::string_view utf8);
  void bytes(std::string_view data);

  /// Hands on what is still held back.
  void flush();

 private:
  void value(AccessValue kind) { byte(static_cast<std::uint8_t>(kind)); }
  void byte(std::uint8_t byte) { buffer_ += static_cast<char>(byte); }
  void fixed(std::uint64_t number, int bytes);
  void counted(std::string_view data);

  int file_;
  std::string buffer_;
};

}  // namespace lokari
