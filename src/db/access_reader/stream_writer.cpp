#include "db/access_reader/stream_writer.h"

#include <bit>
#include <cerrno>
#include <cstdlib>
#include <unistd.h>

namespace lokari {
namespace {

constexpr std::size_t kBlock = 64U << 10U;

}  // namespace

StreamWriter::StreamWriter(int file) : file_(file), buffer_(kAccessMagic, sizeof kAccessMagic) {
  flush();
}

void StreamWriter::name(AccessRecord kind, std::string_view name) {
  record(kind);
  counted(name);
}

void StreamWriter::rowCount(std::uint32_t rows) {
  record(AccessRecord::RowCount);
  fixed(rows, 4);
}

void StreamWriter::failure(AccessFailure reason) {
  record(AccessRecord::Failure);
  byte(static_cast<std::uint8_t>(reason));
}

void StreamWriter::number(std::int32_t number) {
  value(AccessValue::Number);
  fixed(static_cast<std::uint32_t>(number), 4);
}

void StreamWriter::amount(std::int64_t tenThousandths) {
  value(AccessValue::Amount);
  fixed(static_cast<std::uint64_t>(tenThousandths), 8);
}

void StreamWriter::real(double number) {
  value(AccessValue::Real);
  fixed(std::bit_cast<std::uint64_t>(number), 8);
}

void StreamWriter::text(std::string_view utf8) {
  value(AccessValue::Text);
  counted(utf8);
}

void StreamWriter::bytes(std::string_view data) {
  value(AccessValue::Bytes);
  counted(data);
}

void StreamWriter::fixed(std::uint64_t number, int bytes) {
  for (int i = 0; i < bytes; ++i) byte(static_cast<std::uint8_t>(number >> (8 * i)));
}

void StreamWriter::counted(std::string_view data) {
  fixed(data.size(), 4);
  buffer_ += data;
  if (buffer_.size() >= kBlock) flush();
}

void StreamWriter::flush() {
  std::string_view rest = buffer_;
  while (!rest.empty()) {
    const ssize_t written = write(file_, rest.data(), rest.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) std::_Exit(EXIT_FAILURE);
    rest.remove_prefix(static_cast<std::size_t>(written));
  }
  buffer_.clear();
}

}  // namespace lokari
