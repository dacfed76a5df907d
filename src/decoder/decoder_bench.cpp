#include "decoder/decoder_bench.h"

#include <algorithm>

#include "base/prompt.h"
#include "db/catalogue.h"
#include "db/cv_record.h"
#include "decoder/fixed_fields.h"
#include "link/station_link.h"

namespace lokari {
namespace {

/// Lets the list close before the window is rebuilt.
constexpr Millis kTimer3Interval = 100;

/// A stored array at the size that everything here relies on.
QByteArray fullSize(QByteArray array) {
  if (array.size() < kCvArraySize) array.append(kCvArraySize - array.size(), '\0');
  return array;
}

}  // namespace

DecoderBench::DecoderBench(BenchParts parts, QObject* parent)
    : QObject(parent),
      parts_(std::move(parts)),
      tabs_(makeTabs(description)),
      rowOfCv_(kCvArraySize, -1) {
  controls.setVisible(QStringLiteral("tabText"), false);
  controls.setVisible(QStringLiteral("labNoDescription"), false);
  controls.setEnabled(QStringLiteral("txtDcComVersion"), false);
}

DecoderBench::~DecoderBench() = default;

void DecoderBench::open(const CvRecord& record, const QString& address) {
  windowOpening = true;
  commRunning = false;
  calcOpen = false;
  sets.clear();
  reachedStation_ = false;
  written_.clear();
  clearReport();
  for (int i = 1; i <= SetNumber::kCount; ++i) {
    const SetNumber set(i);
    const auto place = static_cast<size_t>(set.arrayIndex());
    sets.setValues(set) = fullSize(record.recCvValues[place]);
    sets.setMarks(set) = fullSize(record.recCvMarks[place]);
    sets.setNames(set) = record.recCvName[place];
  }
  sets.nameTheNameless();
  sets.openAt(record.recSetName);
  showSetNames();
  showCurrentSet();
  addressHeld_.clear();
  setFieldText(QStringLiteral("dc_adr"), address);
  noteAddress(addressNumber());
  emit focusRequested(QStringLiteral("dc_adr"), true);
  fillSelectors(record.recManuf, record.recDecoder);
  refreshFields(false);
  controls.setChecked(QStringLiteral("chkDcAdrChk"), parts_.settings.addressCheckNow);
  controls.setChecked(QStringLiteral("chkDcManufChk"), parts_.settings.manufacturerCheckNow);
  windowOpening = false;
  sets.settleAll();
  selectTab(0);
  opened_ = present();
}

void DecoderBench::showSetNames() {
  QStringList names;
  for (int i = 1; i <= SetNumber::kCount; ++i) names << sets.setNames(SetNumber(i));
  controls.setItems(QStringLiteral("cbDcVer"), names);
}

void DecoderBench::showCurrentSet() {
  controls.setText(QStringLiteral("cbDcVer"), sets.currentSetName);
  controls.setEnabled(QStringLiteral("cmdCopy"), sets.currentSet() != SetNumber(1));
}

// ---- Maker and decoder type -------------------------------------------------------------------

void DecoderBench::fillSelectors(int manufacturer, const QString& decoder) {
  QStringList makers;
  for (const Maker& maker : parts_.catalogue.makers()) makers << maker.name;
  const auto maker = parts_.catalogue.makerByNumber(manufacturer);
  dcManufNo = maker ? maker->number : 0;
  controls.setItems(QStringLiteral("cbDcManuf"), makers);
  controls.setText(QStringLiteral("cbDcManuf"), maker ? maker->name : QString());
  fillDecoders(decoder);
}

void DecoderBench::fillDecoders(const QString& wanted) {
  const QString list = QStringLiteral("cbDcDecoder");
  QStringList types;
  QString text;
  if (!controls.at(QStringLiteral("cbDcManuf")).text.isEmpty()) {
    types = parts_.catalogue.types(dcManufNo);
    text = types.value(0, QStringLiteral("Default"));
    const auto stored = wanted.isEmpty() ? std::nullopt : parts_.catalogue.type(dcManufNo, wanted);
    if (stored) text = *stored;
  }
  controls.setItems(list, types);
  controls.setText(list, text);
  decoderChosen();
}

void DecoderBench::decoderChosen() {
  controls.setEnabled(QStringLiteral("ssDecoder"), false);
  for (const char* button : {"cmdOK", "cmdDcRead", "cmdDcProg", "cmdDcProgMain", "cmdReadAll",
                             "cmdReadNone", "cmdWriteAll", "cmdWriteNone"}) {
    controls.setEnabled(QString::fromLatin1(button), true);
  }
  emit busyChanged(true);
  // No list is open while the window opens or a job took another maker over.
  if (windowOpening || commRunning) {
    ChangeDecoder();
    return;
  }
  selectTab(0);
  choicePending_ = true;
  Timer3_ = parts_.clock.after(kTimer3Interval, [this] { finishChoice(); });
}

void DecoderBench::finishChoice() {
  if (choicePending_) ChangeDecoder();
}

bool DecoderBench::mayDropValues() {
  // A job asks its own questions.
  if (commRunning || !unsavedOfType()) return true;
  const int count = std::max(1, sets.unstored());
  const QString what =
      count == 1 ? QStringLiteral("Ein eingegebener oder gelesener CV-Wert ist")
                 : QStringLiteral("%1 eingegebene oder gelesene CV-Werte sind").arg(count);
  return parts_.prompt.ask({.text = QStringLiteral("Decodertyp wechseln?"),
                            .buttons = Buttons::OkCancel,
                            .icon = Icon::Warning,
                            .more = QStringLiteral("%1 noch nicht gespeichert. Mit dem anderen "
                                                   "Decodertyp gelten dessen Vorgaben.")
                                        .arg(what),
                            .preset = Answer::Cancel}) == Answer::Ok;
}

bool DecoderBench::chooseManufacturer(const QString& name) {
  if (name == controls.at(QStringLiteral("cbDcManuf")).text) return true;
  if (!mayDropValues()) return false;
  controls.setText(QStringLiteral("cbDcManuf"), name);
  const auto maker = parts_.catalogue.makerByName(name);
  if (maker) dcManufNo = maker->number;
  fillDecoders({});
  return true;
}

bool DecoderBench::chooseDecoder(const QString& name) {
  if (name == controls.at(QStringLiteral("cbDcDecoder")).text) return true;
  if (!mayDropValues()) return false;
  controls.setText(QStringLiteral("cbDcDecoder"), name);
  decoderChosen();
  return true;
}

// ---- Sets -------------------------------------------------------------------------------------

void DecoderBench::chooseSet(const QString& name) {
  finishChoice();
  if (!sets.change(name)) return;
  showCurrentSet();
  refreshFields(false);
}

void DecoderBench::setNameLeft(const QString& text) {
  const SetNumber set = sets.currentSet();
  sets.setNames(set) = text;
  sets.nameTheNameless();
  sets.currentSetName = sets.setNames(set);
  showSetNames();
  controls.setText(QStringLiteral("cbDcVer"), sets.currentSetName);
}

// ---- Closing ----------------------------------------------------------------------------------

void DecoderBench::cmdOK(CvRecord& record) {
  finishChoice();
  giveWay();
  sets.storeCurrent();
  settleLostValues();
  for (int i = 1; i <= SetNumber::kCount; ++i) {
    const SetNumber set(i);
    const auto place = static_cast<size_t>(set.arrayIndex());
    record.recCvValues[place] = sets.setValues(set);
    record.recCvMarks[place] = sets.setMarks(set);
    record.recCvName[place] = sets.setNames(set);
  }
  record.recSetName = sets.currentSetName;
  const auto maker = parts_.catalogue.makerByName(controls.at(QStringLiteral("cbDcManuf")).text);
  if (maker) {
    record.recManuf = static_cast<qint16>(maker->number);
  } else {
    parts_.prompt.message(QStringLiteral("Decoderhersteller nicht gefunden!"));
  }
  record.recDecoder = controls.at(QStringLiteral("cbDcDecoder")).text;
  emit closed(true);
}

void DecoderBench::cmdCancel() {
  Timer3_.reset();
  choicePending_ = false;
  emit closed(false);
}

// ---- Showing ----------------------------------------------------------------------------------

void DecoderBench::selectTab(int tab) {
  giveWay();
  selectedTab_ = tab;
  emit tabSelected(tab);
}

void DecoderBench::refreshFields(bool onlyGrid) {
  refreshing = true;
  if (!onlyGrid) {
    showAllOptions();
    showMark29();
    const int consist = sets.value(CvIndex(cv::kConsist));
    showFieldText(QStringLiteral("txtDcComConsist"), QString::number(consist & 127));
    showMark19();
    showMarkAdr();
    for (const FixedField& fixed : kFixedFields) {
      const CvIndex cv = fixed.cv == cv::kUserRow ? userRowCv_ : CvIndex(fixed.cv);
      // A CV that the decoder lacks keeps its empty field.
      if (fieldOf(cv) == QLatin1String(fixed.field) && !missing_ && description.info(cv).exists()) {
        showValue(cv);
      }
      showMark(CvIndex(fixed.cv));
    }
    showMark(CvIndex(cv::kConsist));
    showMark(CvIndex(cv::kConfig));
    showVersion();
    for (const PageRow& row : rows_) {
      showFieldText(row.fieldName(), QString::number(sets.value(row.cv)));
      setFieldColour(row.fieldName(), colourOf(row.cv));
      showMark(row.cv);
    }
    emit speedTableChanged();
  }
  makeTableNames();
  rebuildGrid();
  showLegend();
  refreshing = false;
}

// ---- Jobs -------------------------------------------------------------------------------------

void DecoderBench::runJob() {
  finishChoice();
  if (refusedWithoutDescription()) {
    jobEnd = JobEnd::NoDescription;
    return;
  }
  giveWay();
  switch (parts_.link.commJob) {
    case CommJob::ReadProgTrack:
    case CommJob::ReadMain:
      RdComm();
      break;
    case CommJob::WriteProgTrack:
    case CommJob::WriteMain:
      WriteComm();
      break;
    case CommJob::None:
    case CommJob::TestComm:
    case CommJob::SendFirm:
    case CommJob::ProgressOnly:
      break;
  }
}

}  // namespace lokari
