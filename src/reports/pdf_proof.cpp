#include "reports/pdf_proof.h"

#include <QList>

#include <algorithm>

#include "base/whole_file.h"

namespace lokari {
namespace {

/// Where the end of a file is looked at; it holds two short lines.
constexpr qint64 kTail = 256;
/// An entry of the table: ten digits, five digits, a letter, a line end.
constexpr qint64 kEntry = 20;
constexpr qsizetype kOffsetDigits = 10;
constexpr qsizetype kKindAt = 17;
constexpr qint64 kLine = 32;

struct Entry {
  qint64 offset = 0;
  qsizetype number = 0;
};

/// The number behind `word` and a line end, or -1.
qint64 numberBehind(const QByteArray& text, const QByteArray& word) {
  const qsizetype at = text.lastIndexOf(word);
  if (at < 0) return -1;
  const QByteArray rest = text.mid(at + word.size()).trimmed();
  bool isNumber = false;
  const qint64 number = rest.left(rest.indexOf('\n')).trimmed().toLongLong(&isNumber);
  return isNumber ? number : -1;
}

/// The table's objects in the order of their places; empty when it cannot be read.
QList<Entry> readTable(const WholeFile& file, qint64 at) {
  const QList<QByteArray> head = file.readBack(at, kLine).split('\n');
  if (head.size() < 3 || head[0].trimmed() != "xref") return {};
  const qsizetype count = head[1].mid(head[1].indexOf(' ') + 1).trimmed().toLongLong();
  const qint64 first = at + head[0].size() + head[1].size() + 2;
  const QByteArray table = file.readBack(first, count * kEntry);
  if (table.size() != count * kEntry) return {};
  QList<Entry> entries;
  for (qsizetype number = 0; number < count; ++number) {
    const QByteArray line = table.mid(number * kEntry, kEntry);
    if (line[kKindAt] != 'n') continue;
    entries << Entry{line.left(kOffsetDigits).toLongLong(), number};
  }
  std::sort(entries.begin(), entries.end(),
            [](const Entry& a, const Entry& b) { return a.offset < b.offset; });
  return entries;
}

}  // namespace

bool isWholePdf(const WholeFile& file) {
  if (file.readBack(0, 5) != "%PDF-") return false;
  const QByteArray tail = file.readBack(std::max<qint64>(0, file.length() - kTail), kTail);
  if (!tail.trimmed().endsWith("%%EOF")) return false;
  const qint64 table = numberBehind(tail, "startxref");
  const QList<Entry> entries = readTable(file, table);
  for (qsizetype i = 0; i < entries.size(); ++i) {
    const QByteArray head = QByteArray::number(entries[i].number) + " 0 obj";
    if (!file.readBack(entries[i].offset, kLine).startsWith(head)) return false;
    const qint64 end = i + 1 < entries.size() ? entries[i + 1].offset : table;
    if (!file.readBack(end - kLine, kLine).trimmed().endsWith("endobj")) return false;
  }
  return !entries.isEmpty();
}

}  // namespace lokari
