#include "cli/vehicle_commands.h"

#include <algorithm>
#include <set>

#include "app/dec_types.h"
#include "base/numbers.h"
#include "cli/command.h"
#include "cli/console.h"
#include "cli/vehicle_record.h"
#include "db/catalogue.h"
#include "decoder/decoder_bench.h"
#include "decoder/fixed_fields.h"

namespace lokari {
namespace {

constexpr int kHighestCv = 1024;

struct VehicleCall {
  bool write = false;
  bool main = false;
  QString collection;
  int address = 0;
  std::optional<QString> list;
};

VehicleCall takeCall(const Call& call, bool write) {
  return {.write = write,
          .main = call.has(u"--main"),
          .collection = call.text(u"SAMMLUNG").value_or(QString()),
          .address = call.number(u"ADRESSE").value_or(0),
          .list = call.text(u"--cv")};
}

// ---- Which CVs --------------------------------------------------------------------------------

/// One entry of the list: a CV number, a span of them, or a CV in a bank.
struct ListItem {
  QString text;
  int first = 0;
  int last = 0;
  int bank = 0;
};

std::vector<ListItem> parseList(const QString& list) {
  std::vector<ListItem> items;
  for (const QString& text : list.split(u',')) {
    const QStringList halves = text.split(u':');
    const QStringList ends = halves.first().split(u'-');
    if (halves.size() > 2 || ends.size() > 2) {
      throw WrongCall(QStringLiteral("--cv: \"%1\" ist keine CV!").arg(text));
    }
    const auto number = [](const QString& digits) {
      return numberArgument(digits, 1, kHighestCv, QStringLiteral("--cv"));
    };
    ListItem item{.text = text, .first = number(ends.first()), .last = number(ends.last())};
    if (halves.size() == 2) {
      item.bank = numberArgument(halves.last(), 1, 16, QStringLiteral("--cv"));
    }
    if (item.last < item.first) {
      throw WrongCall(QStringLiteral("--cv: \"%1\" läuft rückwärts!").arg(text));
    }
    items.push_back(item);
  }
  return items;
}

class CvChoice {
 public:
  CvChoice(DecoderBench& bench, bool write) : bench_(bench), write_(write) {}

  /// All CVs of the pages; the address stays out, since it is what names the vehicle.
  void takeAll() {
    bench_.buttonClicked(write_ ? QStringLiteral("cmdWriteAll") : QStringLiteral("cmdReadAll"));
    bench_.checkBoxToggled(addressBox(), false);
  }

  void take(const std::vector<ListItem>& items) {
    for (const ListItem& item : items) {
      bool any = false;
      for (int number = item.first; number <= item.last; ++number) {
        any = mark(number, item.bank) || any;
      }
      // A span may pass CVs that the decoder lacks.
      if (!any) {
        throw WrongCall(QStringLiteral("CV %1 kann bei diesem Decoder nicht %2 werden!")
                            .arg(item.text, write_ ? QStringLiteral("geschrieben")
                                                   : QStringLiteral("gelesen")));
      }
    }
  }

  /// The CVs that the job will handle, the address as CV 1 among them.
  std::vector<CvIndex> planned() const {
    std::vector<CvIndex> cvs;
    if (bench_.controls.at(addressBox()).checked) cvs.emplace_back(1);
    for (int i = 2; i <= kHighestCvIndex; ++i) {
      if (bench_.isPlanned(write_, CvIndex(i))) cvs.emplace_back(i);
    }
    return cvs;
  }

 private:
  QString addressBox() const {
    return write_ ? QStringLiteral("chkDcAdrWrite") : QStringLiteral("chkDcAdrRead");
  }

  bool mark(int number, int bank) {
    if (number == 1 && bank == 0) {
      bench_.checkBoxToggled(addressBox(), true);
      return true;
    }
    const QString text =
        bank == 0 ? QString::number(number) : QStringLiteral("%1 (%2)").arg(number).arg(bank);
    const CvIndex cv = bench_.description.getCvIndex(text);
    return cv.inRange() && bench_.description.numberText(cv) == text && markCv(cv);
  }

  bool markCv(CvIndex cv) {
    const QString box =
        (write_ ? QStringLiteral("chkWrt_%1") : QStringLiteral("chkRd_%1")).arg(cv.value());
    const auto& rows = bench_.rows();
    const auto row =
        std::find_if(rows.begin(), rows.end(), [cv](const PageRow& each) { return each.cv == cv; });
    if (row != rows.end()) {
      const int place = static_cast<int>(row - rows.begin());
      if (!(write_ ? row->writeEnabled : row->readEnabled)) return false;
      write_ ? bench_.rowWriteToggled(place, true) : bench_.rowReadToggled(place, true);
    } else if (bench_.controls.has(box)) {
      if (!bench_.controls.at(box).enabled) return false;
      bench_.checkBoxToggled(box, true);
    } else if (cv::inTable(cv) && !bench_.isPlanned(write_, cv)) {
      const GridColumn column = write_ ? GridColumn::Write : GridColumn::Read;
      bench_.gridClicked(bench_.grid().rowOf(cv), column);
    }
    return bench_.isPlanned(write_, cv);
  }

  DecoderBench& bench_;
  bool write_;
};

// ---- The job ----------------------------------------------------------------------------------

void checkOffered(const DecoderBench& bench, const VehicleCall& call) {
  if (!call.main) return;
  const QString button =
      call.write ? QStringLiteral("cmdDcProgMain") : QStringLiteral("cmdDcReadMain");
  if (bench.controls.at(button).enabled) return;
  throw WrongCall(call.write
                      ? QStringLiteral("Auf dem Hauptgleis kann hier nicht geschrieben werden!")
                      : QStringLiteral("Auf dem Hauptgleis kann hier nicht gelesen werden!"));
}

CommJob jobOf(const VehicleCall& call) {
  if (call.write) return call.main ? CommJob::WriteMain : CommJob::WriteProgTrack;
  return call.main ? CommJob::ReadMain : CommJob::ReadProgTrack;
}

void runJob(DecoderBench& bench, CommJob job, CliContext& context) {
  StationLink& link = context.link;
  link.commJob = job;
  bench.runJob();
  if (!link.openFailureReason().isEmpty()) context.console.message(link.openFailureReason());
  link.commJob = CommJob::None;
}

/// Prints what the run did with the CVs that were asked for, and what failed of those that went out
/// with them. True when it did all that was asked and nothing failed, no check either.
bool printCvs(const DecoderBench& bench, const std::vector<CvIndex>& planned, CliContext& context) {
  std::set<CvIndex> shown(planned.begin(), planned.end());
  const std::vector<CvIndex> failures = bench.report().with(CvDeed::Failed);
  // An address takes CV 29 along.
  const CvIndex config(cv::kConfig);
  const bool taken = shown.count(CvIndex(cv::kAddress)) > 0;
  if (taken && std::count(failures.begin(), failures.end(), config) > 0) shown.insert(config);
  bool good = failures.empty();
  for (const CvIndex cv : shown) {
    const CvReport* report = bench.report().of(cv);
    good = good && report != nullptr;
    if (report == nullptr) continue;
    const bool failed = report->deed == CvDeed::Failed;
    const QString value = cv == CvIndex(cv::kAddress)
                              ? bench.controls.at(QStringLiteral("dc_adr")).text
                              : QString::number(failed ? report->before : bench.sets.value(cv));
    const QString mark(QLatin1Char(static_cast<char>(failed ? CvMark::Failed : CvMark::Verified)));
    context.results.line({{QStringLiteral("cv"), bench.description.numberText(cv)},
                          {QStringLiteral("value"), value.toInt(), value},
                          {QStringLiteral("mark"), mark.toInt(), mark}});
  }
  return good;
}

void tellRemarks(const DecoderBench& bench, CliContext& context) {
  for (const QString& remark : bench.report().remarks) context.console.message(remark);
  const QString unproved = bench.listOfCvs(bench.report().with(CvDeed::Unproved));
  if (unproved.isEmpty()) return;
  context.console.message(QStringLiteral("%1: geschrieben, nicht geprüft!").arg(unproved));
}

/// Puts what the run did into the record's set. All else stays as it was stored: a CV that failed
/// keeps its value, and one that was not reached its mark as well.
void takeReport(const DecoderBench& bench, CvRecord& record) {
  const auto place = static_cast<size_t>(bench.sets.currentSet().arrayIndex());
  QByteArray& values = record.recCvValues[place];
  QByteArray& marks = record.recCvMarks[place];
  for (QByteArray* array : {&values, &marks}) {
    if (array->size() < kCvArraySize) array->append(kCvArraySize - array->size(), '\0');
  }
  const auto takeMark = [&](CvIndex cv) {
    marks[cv.arrayIndex()] = static_cast<char>(bench.sets.mark(cv));
  };
  for (const CvReport& report : bench.report().cvs()) {
    takeMark(report.cv);
    if (report.cv == CvIndex(cv::kAddress)) {
      // A long one has its marks in two CVs.
      takeMark(CvIndex(cv::kLongAddressHigh));
      takeMark(CvIndex(cv::kLongAddressLow));
      // CV 29 went out with it, perhaps with another value than the stored one.
      if (report.deed != CvDeed::Read) takeMark(CvIndex(cv::kConfig));
    } else if (report.deed != CvDeed::Failed) {
      values[report.cv.arrayIndex()] = static_cast<char>(bench.sets.value(report.cv));
    }
  }
}

/// Names the values that somebody else stored during the job, and that what the decoder holds has
/// taken the place of.
void tellReplaced(const DecoderBench& bench, const VehicleRecord& vehicle, CliContext& context) {
  const auto place = static_cast<size_t>(bench.sets.currentSet().arrayIndex());
  const QByteArray opened = vehicle.opened().recCvValues[place];
  const QByteArray found = vehicle.found().recCvValues[place];
  const QByteArray stored = vehicle.cvs.recCvValues[place];
  QStringList replaced;
  for (int i = 2; i <= kHighestCvIndex; ++i) {
    const CvIndex cv(i);
    const auto byte = [&cv](const QByteArray& values) { return values.at(cv.arrayIndex()); };
    if (byte(found) == byte(opened) || byte(found) == byte(stored)) continue;
    replaced << QStringLiteral("CV %1: %2 statt %3")
                    .arg(bench.description.numberText(cv))
                    .arg(static_cast<quint8>(byte(stored)))
                    .arg(static_cast<quint8>(byte(found)));
  }
  if (replaced.isEmpty()) return;
  context.console.message(
      QStringLiteral("Ein anderes Programm hat inzwischen dieselben CVs geändert; gespeichert ist, "
                     "was der Decoder hat: %1.")
          .arg(replaced.join(QStringLiteral(", "))));
}

ExitStatus runVehicle(const VehicleCall& call, CliContext& context) {
  const std::vector<ListItem> items = call.list ? parseList(*call.list) : std::vector<ListItem>{};
  VehicleRecord vehicle(context.settings.dbPath, call.collection, call.address);
  const Database* database = &vehicle.database();
  const Catalogue catalogue(database);
  DecoderBench bench({context.settings, context.clock, context.prompt, context.link, catalogue,
                      context.paths.basePath, loadDecTypes(context.paths.appPath)});
  bench.open(vehicle.cvs, vehicle.address());
  checkOffered(bench, call);
  CvChoice choice(bench, call.write);
  if (call.list) {
    choice.take(items);
  } else {
    choice.takeAll();
  }
  const std::vector<CvIndex> planned = choice.planned();
  const QString decoder = bench.controls.at(QStringLiteral("cbDcDecoder")).text;
  const int maker = bench.dcManufNo;

  runJob(bench, jobOf(call), context);
  if (bench.jobEnd == JobEnd::NoSession || bench.jobEnd == JobEnd::NothingMarked ||
      bench.jobEnd == JobEnd::NoDescription) {
    return ExitStatus::WrongCall;
  }
  const bool sameDecoder =
      bench.dcManufNo == maker && bench.controls.at(QStringLiteral("cbDcDecoder")).text == decoder;
  if (!sameDecoder) {
    // The window would show the other type's defaults now; nobody has looked at them.
    context.console.message(
        QStringLiteral("Der Decoder ist von einem anderen Hersteller: nichts gespeichert!"));
    return ExitStatus::Failed;
  }
  const bool good = printCvs(bench, planned, context);
  tellRemarks(bench, context);
  const CvReport* address = bench.report().of(CvIndex(cv::kAddress));
  const bool addressRead = address != nullptr && address->deed == CvDeed::Read;
  const VehicleRecord::Stored stored = vehicle.store(
      context.prompt, [&bench](CvRecord& record) { takeReport(bench, record); },
      addressRead ? std::optional(QString::number(address->value)) : std::nullopt);
  if (stored == VehicleRecord::Stored::NotTheSameDecoder) {
    context.console.message(
        QStringLiteral("Ein anderes Programm hat inzwischen Adresse oder Decodertyp dieses "
                       "Fahrzeugs geändert: nichts gespeichert!"));
    return ExitStatus::Failed;
  }
  tellReplaced(bench, vehicle, context);
  return good && bench.jobEnd == JobEnd::Complete ? ExitStatus::Done : ExitStatus::Failed;
}

ExitStatus runOnDatabase(const VehicleCall& call, CliContext& context) {
  try {
    return runVehicle(call, context);
  } catch (const StorageError& error) {
    context.console.message(error.text());
    return ExitStatus::Failed;
  }
}

}  // namespace

ExitStatus vehicleRead(const Call& call, CliContext& context) {
  return runOnDatabase(takeCall(call, false), context);
}

ExitStatus vehicleWrite(const Call& call, CliContext& context) {
  return runOnDatabase(takeCall(call, true), context);
}

}  // namespace lokari
