#include "stations_page.h"

#include <QStringList>

#include "operations.h"

namespace lokari::conformance {
namespace {

constexpr char16_t kHead[] =
    uR"(# Stations

What the program does on every kind of station, as the tests see it: they run each operation on a
simulated station and look at the station, its vehicles and its turnouts. This page is written by
`conformance_tests`; a test compares it with what it sees.

- **Messages**: `as before` is what goes out while the setting `MakerForm` is missing, `makers` what
  goes out with `MakerForm=J`.
- **Station**: `ours` is simulated after the messages as this program has always known them, `makers`
  after what the stations' makers have published (`lokari-sim --form makers`). The two were written
  apart from each other. A kind without a station `makers` has no such documents; its messages are
  the same in both forms.
- **yes** is proved, **–** is not offered on that kind or with that station, **?** is not told by the
  documents, **no** is known not to work: what the station understands needs the other form of
  messages.

No operation on this page was tried on a real station.

)";

QString cell(const Outcome& outcome) {
  switch (outcome.kind) {
    case Outcome::Kind::Proved:
      return outcome.limit.isEmpty() ? QStringLiteral("yes") : outcome.limit;
    case Outcome::Kind::NotOffered:
      return QStringLiteral("–");
    case Outcome::Kind::NotTold:
      return QStringLiteral("?");
    case Outcome::Kind::Failed:
      break;
  }
  return QStringLiteral("no");
}

QString row(const QStringList& cells) {
  return QStringLiteral("| ") + cells.join(QStringLiteral(" | ")) + QStringLiteral(" |\n");
}

QString rowOf(const Pairing& pairing) {
  QStringList cells{
      QString::fromUtf16(stationKind(pairing.kind).name),
      pairing.makerForm ? QStringLiteral("makers") : QStringLiteral("as before"),
      pairing.station == Reading::Makers ? QStringLiteral("makers") : QStringLiteral("ours")};
  for (const Operation& operation : operations()) {
    cells << cell(run(operation, pairing, Opening::Alone));
  }
  return row(cells);
}

}  // namespace

QString stationsPage() {
  QStringList captions{QStringLiteral("Kind"), QStringLiteral("Messages"),
                       QStringLiteral("Station")};
  for (const Operation& operation : operations())
    captions << QString::fromLatin1(operation.caption);
  QString page = QString::fromUtf16(kHead) + row(captions) +
                 row(QStringList(captions.size(), QStringLiteral("---")));
  for (const Pairing& pairing : allPairings()) page += rowOf(pairing);
  return page;
}

}  // namespace lokari::conformance
