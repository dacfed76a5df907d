// Loading a description: what ends with the one before, what the new one brings, and what the user
// is told when there is none.
#include <QFileInfo>

#include <algorithm>

#include "base/numbers.h"
#include "base/paths.h"
#include "base/prompt.h"
#include "base/text_file.h"
#include "decoder/dec_loader.h"
#include "decoder/decoder_bench.h"
#include "decoder/fixed_fields.h"
#include "link/station_link.h"

namespace lokari {
namespace {

/// Folders and files of the catalogue have names of at most so many characters.
constexpr int kFileNameLength = 8;

bool isFile(const QString& path) {
  return !path.isEmpty() && QFileInfo(path).isFile();
}

QString standardFile(const QString& basePath) {
  return basePath + QStringLiteral("/Default.dec");
}

QString standardFileMissing(const QString& basePath) {
  return QStringLiteral("Standard-Decoderdatei %1 nicht gefunden!").arg(standardFile(basePath));
}

}  // namespace

// ---- Which file -------------------------------------------------------------------------------

QString DecoderBench::ownFile() const {
  if (dcManufNo <= 0) return {};
  const QString maker = controls.at(QStringLiteral("cbDcManuf")).text.left(kFileNameLength);
  const QString type = controls.at(QStringLiteral("cbDcDecoder")).text.left(kFileNameLength);
  return insideFolder(parts_.basePath, {maker, type + QStringLiteral(".dec")});
}

QString DecoderBench::descriptionFile() const {
  const QString own = findFile(ownFile());
  if (isFile(own)) return own;
  const QString standard = findFile(standardFile(parts_.basePath));
  return isFile(standard) ? standard : QString();
}

// ---- Loading ----------------------------------------------------------------------------------

void DecoderBench::ChangeDecoder() {
  choicePending_ = false;
  // It told of the decoder type before; a job that takes another one over has its report yet to
  // make.
  if (!commRunning) clearReport();
  const QString file = descriptionFile();
  endDescription();
  if (file.isEmpty()) {
    missFile();
  } else {
    loadFile(file);
  }
  if (!windowOpening) sets.settle();
  emit busyChanged(false);
  if (file.isEmpty()) parts_.prompt.message(standardFileMissing(parts_.basePath));
}

void DecoderBench::loadFile(const QString& file) {
  const auto text = readTextFile(file);
  DecFaults faults;
  const bool complete = text && loadDescription(*text, description, &faults);
  parts_.link.progMode = description.PROGMODE;
  if (!windowOpening) {
    for (const SpeedTablePoint& point : description.speedTabValues) {
      sets.setValue(point.cv, point.value);
    }
  }
  if (!complete) {
    // The last fault is the one that ended the reading.
    failFile(file, text ? &faults.back() : nullptr);
    return;
  }
  if (!windowOpening) {
    for (int i = 2; i <= kHighestCvIndex; ++i) sets.setMark(CvIndex(i), CvMark::None);
    takeStraightTable();
  }
  adapt();
}

void DecoderBench::endDescription() {
  // The ticks go with the description that they were made under: the same boxes would now read and
  // write CVs of another decoder.
  description = DecoderDescription();
  parts_.link.progMode = description.PROGMODE;
  closeGridEdit();
  grid_ = CvGrid();
  // Rows show entries of the description, so none outlives it.
  rows_.clear();
  rowOfCv_.assign(kCvArraySize, -1);
  rowOfField_.clear();
  emit rowsReset();
  emit toolTipHidden();
  if (!windowOpening) sets.setValue(CvIndex(cv::kVersion), 0);
  missing_.reset();
  // What is shown is now that of a decoder of which nothing is known, and stays so if no
  // description follows.
  showBoxes();
  for (const char* label : {"labAdr", "lblDcDrvLeg2", "labNoDescription"}) {
    controls.setCaption(QString::fromLatin1(label), {});
  }
  controls.setVisible(QStringLiteral("labNoDescription"), false);
  controls.setText(QStringLiteral("txtDcComVersion"), QStringLiteral("0.0"));
  controls.setEnabled(QStringLiteral("txtDcComVersion"), false);
  adaptFixedFields();
  adaptPulseOptions();
  emit gridReset();
  emit speedTableChanged();
}

void DecoderBench::takeStraightTable() {
  if (description.hasSpeedTabValues || !description.SPEEDTABLE) return;
  const int points = description.tablePoints();
  const double step = static_cast<double>(description.INTERNALSTEPS) / points;
  for (int i = 1; i <= points; ++i) {
    sets.setValue(CvIndex(cv::kFirstTable - 1 + i), toCvByte(step * i));
  }
}

void DecoderBench::takeDefaults() {
  for (int i = 1; i <= kHighestCvIndex; ++i) {
    const CvDescriptor& entry = description.info(CvIndex(i));
    if (!entry.exists()) continue;
    sets.setValue(CvIndex(i), entry.hasDefault() ? std::clamp(entry.cvDefault, 0, 255) : 0);
  }
}

// ---- Without a description --------------------------------------------------------------------

void DecoderBench::missFile() {
  const QString own = ownFile();
  stayEmpty(
      {.line = QStringLiteral("Keine CVs: Zu diesem Decodertyp gibt es keine Beschreibung, und "
                              "die Datei Default.dec fehlt."),
       .text = standardFileMissing(parts_.basePath),
       .more = own.isEmpty() ? QString() : QStringLiteral("Auch %1 fehlt. ").arg(own)});
}

void DecoderBench::failFile(const QString& file, const DecFault* fault) {
  const QString name = fileNameOf(file);
  if (!fault) {
    stayEmpty(
        {.line =
             QStringLiteral("Keine CVs: Die Decoderdatei %1 kann nicht gelesen werden.").arg(name),
         .text = QStringLiteral("Decoderdatei %1 kann nicht gelesen werden!").arg(file),
         .more = {}});
    return;
  }
  stayEmpty({.line = QStringLiteral("Keine CVs: Die Decoderdatei %1 hat in Zeile %2 einen Fehler.")
                         .arg(name)
                         .arg(fault->line),
             .text = QStringLiteral("Decoderdatei %1 hat einen Fehler!").arg(file),
             .more = QStringLiteral("Zeile %1: %2 ").arg(fault->line).arg(fault->text)});
}

void DecoderBench::stayEmpty(MissingDescription missing) {
  missing.more += QStringLiteral(
      "Ohne Beschreibung des Decodertyps wird nichts gelesen und nichts geschrieben.");
  const QString label = QStringLiteral("labNoDescription");
  controls.setCaption(label, missing.line);
  controls.setVisible(label, true);
  missing_ = std::move(missing);
  rebuildGrid();
  tabs_ = makeTabs({});
  emit tabsChanged();
}

bool DecoderBench::refusedWithoutDescription() {
  if (!missing_) return false;
  parts_.prompt.message(missing_->text, Icon::Warning, missing_->more);
  return true;
}

}  // namespace lokari
