// Copying CVs: from the first set into the current one, and into other vehicles.
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

void DecoderBench::cmdCopy() {
  finishChoice();
  const SetNumber first(1);
  if (!copyBox || sets.currentSet() == first) return;
  switch (copyBox(QStringLiteral("CVs von %1 nach %2 kopieren?")
                      .arg(sets.setNames(first), sets.currentSetName))) {
    case CopyAnswer::All:
      sets.copyAllOfFirst();
      break;
    case CopyAnswer::Selected: {
      std::vector<CvIndex> selected;
      for (int i = 1; i <= kHighestCvIndex; ++i) {
        const CvDescriptor& entry = description.info(CvIndex(i));
        if (entry.exists() && entry.cvWrite) selected.emplace_back(i);
      }
      sets.copyOfFirst(selected);
      break;
    }
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

void DecoderBench::copyCvsToVehicles(const std::vector<CvIndex>& list) {
  finishChoice();
  Database* database = parts_.form != nullptr ? parts_.form->database() : nullptr;
  if (database == nullptr) return;
  const auto failed = [this](const StorageError& error) {
    parts_.prompt.message(
        QStringLiteral("Kopieren nicht möglich, kein Fahrzeug wurde geändert!\r") + error.text());
  };
  const QString& condition = parts_.form->sqlFilter;
  CopyTargets targets;
  try {
    targets = copyTargets(*database, condition, dcManufNo,
                          controls.at(QStringLiteral("cbDcDecoder")).text);
  } catch (const StorageError& error) {
    failed(error);
    return;
  }
  const QString count = QStringLiteral("%1 CV-Wert(e) ").arg(list.size());
  if (parts_.prompt.ask({.text = count + QStringLiteral("auf andere Fahrzeuge kopieren?"),
                         .buttons = Buttons::OkCancel,
                         .title = QStringLiteral("CVs kopieren"),
                         .more = copyTargetsText(targets)}) != Answer::Ok) {
    return;
  }
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
  parts_.form->refreshCvSets();
  parts_.prompt.message(count + QStringLiteral("auf %1 Fahrzeug(e) kopiert.").arg(*changed),
                        Icon::Information);
}

}  // namespace lokari
