#include "cli/vehicle_commands.h"

#include <algorithm>
#include <set>

#include "app/dec_types.h"
#include "base/numbers.h"
#include "base/paths.h"
#include "cli/command.h"
#include "cli/console.h"
#include "db/catalogue.h"
#include "db/cv_record.h"
#include "db/database.h"
#include "db/record_set.h"
#include "decoder/decoder_bench.h"
#include "decoder/fixed_fields.h"

namespace lokari {
namespace {

constexpr int kHighestCv = 1024;
constexpr int kTypeFunctionUnit = 2;

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

QString condition(const VehicleCall& call) {
  const QString text = QString(call.collection).replace(u'\'', QStringLiteral("''"));
  const QString collection = text.isEmpty() ? QStringLiteral("(ISNULL(DC_COLL) OR DC_COLL = '')")
                                            : QStringLiteral("DC_COLL = '%1'").arg(text);
  return QStringLiteral("%1 AND DC_ADR = %2").arg(collection).arg(call.address);
}

/// The vehicle in the database, and the way back into it.
class VehicleRecord {
 public:
  VehicleRecord(const QString& dbPath, const VehicleCall& call) : database_(placeFor(dbPath)) {
    records_.open(database_, QStringLiteral("SELECT * FROM LOCO_DAT WHERE ") + condition(call));
    if (records_.count() == 0) {
      throw WrongCall(QStringLiteral("Das Fahrzeug %1 der Sammlung \"%2\" gibt es nicht!")
                          .arg(call.address)
                          .arg(call.collection));
    }
    const QString type = records_.text(QStringLiteral("DC_TYPE"));
    if (!isNumeric(type)) throw WrongCall(QStringLiteral("Type nicht festgelegt!"));
    if (toInt16(type) == kTypeFunctionUnit) {
      throw WrongCall(QStringLiteral("Programmierfenster für Funktionsteile nicht verfügbar!"));
    }
    loadCvRecord(records_, cvs);
    if (cvs.recManuf == 0) cvs.recDecoder.clear();
  }

  const Database& database() const { return database_; }
  QString address() const { return records_.text(QStringLiteral("DC_ADR")); }

  /// Stores what `take` makes of the sets as they are in the file by now: others may have changed
  /// the vehicle during a long job. A file that is held is waited for. `address` is a new one, or
  /// nothing.
  void store(Prompt& prompt, const std::function<void(CvRecord&)>& take,
             const std::optional<QString>& address) {
    const auto isStored = [&] {
      try {
        storeOnce(take, address);
        return true;
      } catch (const StorageError& error) {
        if (error.code() != storage_error::kLocked) throw;
        return false;
      }
    };
    if (isStored()) return;
    const QString held =
        QStringLiteral("Die Datenbank wird gerade von einem anderen Programm benutzt.");
    if (prompt.waitUntil(held + QStringLiteral(" Es wird gewartet ..."), isStored)) return;
    throw StorageError(storage_error::kLocked, held);
  }

  CvRecord cvs;

 private:
  void storeOnce(const std::function<void(CvRecord&)>& take,
                 const std::optional<QString>& address) {
    records_.CancelUpdate();
    records_.reread();
    loadCvRecord(records_, cvs);
    if (cvs.recManuf == 0) cvs.recDecoder.clear();
    take(cvs);
    records_.Edit();
    assignCvRecord(records_, cvs);
    if (address) records_.setValue(QStringLiteral("DC_ADR"), toInt16(*address));
    records_.Update();
  }

  Database database_;
  RecordSet records_;
};

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

/// Prints what the run did with the CVs; true when it succeeded with all of them.
bool printCvs(const DecoderBench& bench, const std::vector<CvIndex>& cvs, CliContext& context) {
  bool good = true;
  for (const CvIndex cv : cvs) {
    const CvReport* report = bench.report().of(cv);
    good = good && report != nullptr && report->deed != CvDeed::Failed;
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
    } else if (report.deed != CvDeed::Failed) {
      values[report.cv.arrayIndex()] = static_cast<char>(bench.sets.value(report.cv));
    }
  }
}

ExitStatus runVehicle(const VehicleCall& call, CliContext& context) {
  const std::vector<ListItem> items = call.list ? parseList(*call.list) : std::vector<ListItem>{};
  VehicleRecord vehicle(context.settings.dbPath, call);
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
  vehicle.store(
      context.prompt, [&bench](CvRecord& record) { takeReport(bench, record); },
      addressRead ? std::optional(QString::number(address->value)) : std::nullopt);
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
