// Copying CVs: from the first set into the current one, and into other vehicles.
#include <algorithm>

#include "base/prompt.h"
#include "db/record_form.h"
#include "decoder/decoder_bench.h"
#include "decoder/fixed_fields.h"
#include "decoder/vehicle_copy.h"
#include "link/comm_view.h"
#include "link/station_link.h"

namespace lokari {
namespace {

/// Fewer vehicles are done before a dialog is on the screen.
constexpr int kProgressAbove = 100;

/// A write box of one of the two fixed tabs. The address has no part in copying: two vehicles
/// cannot share it.
struct CopyBox {
  const char* box;
  int tab;
  int cv;
};

constexpr CopyBox kCopyBoxes[] = {
    {"chkWrt_29", 0, cv::kConfig},     //
    {"chkWrt_3", 0, 3},                //
    {"chkWrt_4", 0, 4},                //
    {"chkWrt_19", 0, cv::kConsist},    //
    {"chkDrvWrt_29", 1, cv::kConfig},  //
    {"chkWrt_2", 1, 2},                //
    {"chkWrt_5", 1, 5},                //
    {"chkWrt_6", 1, 6},                //
    {"chkWrt_9", 1, cv::kUserRow},
};

}  // namespace

// ---- From the first set -----------------------------------------------------------------------

std::optional<std::vector<CvIndex>> DecoderBench::doubtfulToSpare(
    std::vector<CvIndex> doubtful) const {
  if (doubtful.empty()) return doubtful;
  enum { kAll, kWithout, kNothing };
  const int answer = parts_.prompt.choose(
      {.text = QStringLiteral("Sollen auch Werte kopiert werden, die ein misslungenes Lesen "
                              "hinterlassen hat?"),
       .more = QStringLiteral("%1 von %2.").arg(listOfCvs(doubtful), sets.setNames(SetNumber(1))),
       .answers = {QStringLiteral("&Alle kopieren"), QStringLiteral("&Diese auslassen"),
                   QStringLiteral("Abbruch")},
       .safe = kNothing,
       .icon = Icon::Warning});
  if (answer == kNothing) return std::nullopt;
  if (answer == kAll) doubtful.clear();
  return doubtful;
}

void DecoderBench::copyAllButDoubtful() {
  const auto spared = doubtfulToSpare(sets.doubtful(SetNumber(1)));
  if (!spared) return;
  const CvSets before = sets;
  sets.copyAllOfFirst();
  for (const CvIndex cv : *spared) sets.takeCv(before, cv);
  sets.storeCurrent();
}

void DecoderBench::copySelectedButDoubtful() {
  const auto ticked = [this](CvIndex cv) {
    const CvDescriptor& entry = description.info(cv);
    return entry.exists() && entry.cvWrite;
  };
  std::vector<CvIndex> doubtful = sets.doubtful(SetNumber(1));
  std::erase_if(doubtful, [&](CvIndex cv) { return !ticked(cv); });
  const auto spared = doubtfulToSpare(doubtful);
  if (!spared) return;
  std::vector<CvIndex> selected;
  for (int i = 1; i <= kHighestCvIndex; ++i) {
    const CvIndex cv(i);
    if (ticked(cv) && std::find(spared->begin(), spared->end(), cv) == spared->end()) {
      selected.push_back(cv);
    }
  }
  sets.copyOfFirst(selected);
}

void DecoderBench::cmdCopy() {
  finishChoice();
  const SetNumber first(1);
  if (!copyBox || sets.currentSet() == first) return;
  switch (copyBox(QStringLiteral("CVs von %1 nach %2 kopieren?")
                      .arg(sets.setNames(first), sets.currentSetName))) {
    case CopyAnswer::All:
      copyAllButDoubtful();
      break;
    case CopyAnswer::Selected:
      copySelectedButDoubtful();
      break;
    case CopyAnswer::None:
      break;
  }
  refreshFields(false);
}

// ---- Into other vehicles ----------------------------------------------------------------------

std::vector<CvIndex> DecoderBench::copyListOfFixedTab(int tab) const {
  std::vector<CvIndex> list;
  for (const CopyBox& entry : kCopyBoxes) {
    if (entry.tab != tab || !controls.at(QString::fromLatin1(entry.box)).checked) continue;
    list.push_back(entry.cv == cv::kUserRow ? userRowCv_ : CvIndex(entry.cv));
  }
  return list;
}

std::vector<CvIndex> DecoderBench::copyListOfRows(int page, int ordinal) const {
  std::vector<CvIndex> list;
  for (const PageRow& row : rows_) {
    if (row.page != page || tabs_[static_cast<size_t>(row.tab)].ordinal != ordinal) continue;
    if (row.write) list.push_back(row.cv);
  }
  return list;
}

bool DecoderBench::copyButtonClicked(const QString& name) {
  const QString prefix = QStringLiteral("cmdCopy");
  if (!name.startsWith(prefix)) return false;
  const QString what = name.mid(prefix.size());
  if (what.isEmpty()) {
    cmdCopy();
  } else if (what == u"Gen") {
    copyCvsToVehicles(copyListOfFixedTab(static_cast<int>(TabNumber::General)));
  } else if (what == u"Drv") {
    copyCvsToVehicles(copyListOfFixedTab(static_cast<int>(TabNumber::Drive)));
  } else {
    for (int page = page::kFirstRows; page <= page::kLast; ++page) {
      const QString array = pageName(page) + u'_';
      if (what.startsWith(array)) {
        copyCvsToVehicles(copyListOfRows(page, what.mid(array.size()).toInt()));
      }
    }
  }
  return true;
}

QString DecoderBench::copyTargetsText(const CopyTargets& targets) const {
  const bool filtered = !parts_.form->sqlFilter.isEmpty();
  QString text = QStringLiteral("Ziel: %1 Fahrzeug(e), %2, jeweils alle fünf CV-Sätze.")
                     .arg(targets.vehicles)
                     .arg(filtered ? QStringLiteral("die des Filters")
                                   : QStringLiteral("die ganze Datenbank (kein Filter)"));
  if (targets.otherType > 0) {
    text += QStringLiteral("\n%1 davon mit anderem Decodertyp als \"%2\"!")
                .arg(targets.otherType)
                .arg(controls.at(QStringLiteral("cbDcDecoder")).text);
  }
  return text;
}

void DecoderBench::takeCopiedValues(const std::vector<CvValue>& values) {
  // What is stored by now is what the window was opened with, so OK does not take it back.
  for (CvSets* into : {&sets, &opened_.sets}) {
    for (const CvValue& copied : values) into->takeStored(copied.cv, copied.value);
  }
  refreshFields(false);
}

void DecoderBench::copyCvsToVehicles(const std::vector<CvIndex>& list) {
  finishChoice();
  Database* database = parts_.form != nullptr ? parts_.form->database() : nullptr;
  if (database == nullptr) return;
  const auto failed = [this](const StorageError& error) {
    parts_.prompt.message(
        QStringLiteral("Kopieren nicht möglich, kein Fahrzeug wurde geändert!\r") + error.text());
  };
  const QString& condition = parts_.form->sqlFilter;
  const bool blank = parts_.form->editMode() == EditMode::Add;
  CopyTargets targets;
  try {
    targets = copyTargets(*database, condition,
                          {.key = blank ? std::nullopt : parts_.form->records().bookmark(),
                           .manufacturer = dcManufNo,
                           .decoder = controls.at(QStringLiteral("cbDcDecoder")).text});
  } catch (const StorageError& error) {
    failed(error);
    return;
  }
  const QString count = QStringLiteral("%1 CV-Wert(e) ").arg(list.size());
  std::vector<CvIndex> doubtful = list;
  std::erase_if(doubtful, [this](CvIndex cv) { return !sets.isDoubtful(cv); });
  Box question{.text = count + QStringLiteral("auf andere Fahrzeuge kopieren?"),
               .buttons = Buttons::OkCancel,
               .title = QStringLiteral("CVs kopieren"),
               .more = copyTargetsText(targets)};
  if (!doubtful.empty()) {
    question.more += QStringLiteral(
                         "\n%1: nicht oder nicht ganz gelesen; der Wert stammt von einem "
                         "misslungenen Lesen.")
                         .arg(listOfCvs(doubtful));
    question.preset = Answer::Cancel;
  }
  if (parts_.prompt.ask(question) != Answer::Ok) return;
  if (list.empty()) {
    parts_.prompt.message(QStringLiteral("Auf dieser Seite ist keine CV zum Schreiben angekreuzt, "
                                         "kein Fahrzeug wurde geändert."),
                          Icon::Information);
    return;
  }
  std::vector<CvValue> values;
  values.reserve(list.size());
  for (const CvIndex cv : list) values.push_back({cv, sets.value(cv)});
  std::optional<int> changed;
  try {
    if (progressBox && targets.records > kProgressAbove) {
      progressBox([&] {
        CommView& view = *parts_.link.view();
        view.setStatus(QStringLiteral("Kopiere CV-Werte auf andere Fahrzeuge ..."));
        view.setProgressEnabled(true);
        changed = lokari::copyCvsToVehicles(*database, condition, values,
                                            [this, &view](int done, int total) {
                                              view.setProgress(100.0 * done / total);
                                              parts_.clock.pump();
                                              return !parts_.link.cancelRequested;
                                            });
        view.setProgressEnabled(false);
        view.hide();
      });
      parts_.link.cancelRequested = false;
    } else {
      changed =
          lokari::copyCvsToVehicles(*database, condition, values, [](int, int) { return true; });
    }
  } catch (const StorageError& error) {
    parts_.link.cancelRequested = false;
    failed(error);
    return;
  }
  if (!changed) {
    parts_.prompt.message(QStringLiteral("Kopieren abgebrochen, kein Fahrzeug wurde geändert."),
                          Icon::Information);
    return;
  }
  if (targets.own) takeCopiedValues(values);
  parts_.form->refreshCvSets();
  parts_.prompt.message(count + QStringLiteral("auf %1 Fahrzeug(e) kopiert.").arg(*changed),
                        Icon::Information);
}

}  // namespace lokari
