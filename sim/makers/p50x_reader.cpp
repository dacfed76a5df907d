#include "sim/makers/p50x_reader.h"

#include "base/bytes.h"

namespace lokari::sim::makers {
namespace {

constexpr char kWithoutLetter[] = "XZzA1";

bool isLetter(int byte) {
  return byte == 'x' || byte == 'X';
}

}  // namespace

QList<QByteArray> P50xReader::feed(const QByteArray& data) {
  QList<QByteArray> commands;
  input_ += data;
  while (!input_.isEmpty() && take(commands)) {
  }
  return commands;
}

bool P50xReader::take(QList<QByteArray>& commands) {
  const int first = byteAt(input_, 0);
  if (withoutLetter_ && first >= kFirstP50xCommand) return takeCommand(0, commands);
  if (withoutLetter_ || !isLetter(first)) {
    input_.remove(0, 1);
    return true;
  }
  if (input_.size() < 2) return false;
  return byteAt(input_, 1) >= kFirstP50xCommand ? takeCommand(1, commands) : takeText();
}

bool P50xReader::takeCommand(qsizetype begin, QList<QByteArray>& commands) {
  const qsizetype size = sizeOf_(byteAt(input_, begin));
  if (input_.size() < begin + size) return false;
  commands.append(input_.mid(begin, size));
  input_.remove(0, begin + size);
  return true;
}

bool P50xReader::takeText() {
  const qsizetype end = input_.indexOf('\r');
  if (end < 0) return false;
  withoutLetter_ = input_.left(end) == kWithoutLetter;
  input_.remove(0, end + 1);
  return true;
}

}  // namespace lokari::sim::makers
