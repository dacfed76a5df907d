// Making the window fit a description.
#include "base/prompt.h"
#include "decoder/decoder_bench.h"
#include "decoder/fixed_fields.h"

namespace lokari {
namespace {

constexpr int kLongestName = 32;
constexpr int kLongestRange = 16;

}  // namespace

void DecoderBench::adapt() {
  adaptAddress();
  adaptDrive();
  adaptOptions();
  adaptTable();
  // An address that the decoder cannot have.
  const auto address = addressNumber();
  if (!description.EXTADDRESS && address && *address > 127) {
    parts_.prompt.message(
        QStringLiteral("Adresse %1 ist für diesen Decoder nicht zulässig!").arg(*address));
    setFieldText(QStringLiteral("dc_adr"), QStringLiteral("0"));
  }
  adaptButtons();
  adaptConsist();
  adaptPulseOptions();
  controls.setCaption(QStringLiteral("lblDcDrvLeg2"), QString::number(description.INTERNALSTEPS));
  adaptRows();
  adaptFixedFields();
  showIdleTicks();
  controls.setEnabled(QStringLiteral("ssDecoder"), true);
  controls.setEnabled(QStringLiteral("cvTable"), true);
  if (!windowOpening) refreshFields(false);
}

void DecoderBench::adaptAddress() {
  controls.setCaption(QStringLiteral("labAdr"),
                      QStringLiteral("Adresse (1-%1):").arg(description.MAXADDRESS));
  const auto address = addressNumber();
  if (address && *address > description.MAXADDRESS) refuseAddress();
}

void DecoderBench::adaptDrive() {
  const bool drives = description.TYPE != DecoderDescription::kTypeWithoutDrive;
  for (const char* box : {"chkRd_2", "chkRd_5", "chkRd_6", "chkRd_9", "chkRd_Tbl", "chkWrt_2",
                          "chkWrt_5", "chkWrt_6", "chkWrt_9", "chkWrt_Tbl"}) {
    controls.setEnabled(QString::fromLatin1(box), drives);
  }
  // There is nothing to write where no curve can show it.
  controls.setEnabled(QStringLiteral("chkWrt_Tbl"), description.hasTable());
}

void DecoderBench::enableGroup(const QString& group, bool enabled) {
  for (const OptionRow& option : optionsOf(group)) {
    controls.setEnabled(QString::fromLatin1(option.name), enabled);
    controls.setEnabled(QString::fromLatin1(option.label), enabled);
  }
}

void DecoderBench::adaptOptions() {
  const bool steps = description.SPEEDSTEPS >= 28;
  enableGroup(QStringLiteral("Steps"), steps);
  if (!steps) {
    setOption(QStringLiteral("optDcComSteps14"));
  } else if (!windowOpening) {
    setOption(QStringLiteral("optDcComSteps28"));
  }

  const auto adaptGroup = [this](const char* group, bool possible, const char* off) {
    enableGroup(QString::fromLatin1(group), possible);
    if (!possible || !windowOpening) setOption(QString::fromLatin1(off));
  };
  adaptGroup("Analog", description.ANALOGMODE, "optDcComAnalogNo");
  adaptGroup("Dir", description.DIRECTION, "optDcComDirNormal");
  if (description.DIRECTION && !windowOpening) switchDirectionOverAndBack();
  adaptGroup("SpdTbl", description.SPEEDTABLE, "optDcComSpdTblNo");
}

void DecoderBench::adaptButtons() {
  const StationKindRow& station = parts_.settings.station();
  controls.setEnabled(QStringLiteral("cmdDcRead"), true);
  controls.setEnabled(QStringLiteral("cmdName"), false);
  controls.setEnabled(QStringLiteral("cmdDcProgMain"),
                      description.PROGMAIN && station.programsOnMain);
  controls.setEnabled(QStringLiteral("cmdDcReadMain"), description.RAILCOM && station.readsOnMain);
}

void DecoderBench::adaptConsist() {
  const bool possible = description.CONSADDRESS;
  for (const char* name : {"labDcComConsist", "txtDcComConsist", "optDcConsistDirNormal",
                           "optDcConsistDirReverse", "chkRd_19", "chkWrt_19"}) {
    controls.setEnabled(QString::fromLatin1(name), possible);
  }
  if (possible && windowOpening) return;
  const QString field = QStringLiteral("txtDcComConsist");
  setFieldText(field, QStringLiteral("0"));
  // A new type starts without a consist; a stored record keeps what it holds.
  if (!windowOpening) CheckDcField(field, CvIndex(cv::kConsist), consistRange());
  setOption(QStringLiteral("optDcConsistDirNormal"));
  if (possible) return;
  setBox(QStringLiteral("chkRd_19"), false);
  setBox(QStringLiteral("chkWrt_19"), false);
}

void DecoderBench::adaptPulseOptions() {
  const auto adaptGroup = [this](const char* group, bool shown, const char* standard) {
    for (const OptionRow& option : optionsOf(QString::fromLatin1(group))) {
      controls.setVisible(QString::fromLatin1(option.name), shown);
      controls.setVisible(QString::fromLatin1(option.label), shown);
    }
    if (shown && !windowOpening) setOption(QString::fromLatin1(standard));
  };
  adaptGroup("DetectPulse", description.DETECTPULSE, "optDcComDetectPulseNo");
  adaptGroup("ManBit", description.MANBIT, "optDcComManBitYes");
  adaptGroup("RailCom", description.RAILCOM, "optDcComRailComNo");
}

void DecoderBench::adaptRows() {
  tabs_ = makeTabs(description);
  rows_ = makeRows(description, tabs_);
  rowOfCv_.assign(kCvArraySize, -1);
  rowOfField_.clear();
  for (size_t i = 0; i < rows_.size(); ++i) {
    PageRow& row = rows_[i];
    const int place = static_cast<int>(i);
    rowOfCv_[static_cast<size_t>(row.cv.value())] = place;
    rowOfField_.insert(row.fieldName(), place);
    row.readEnabled = readAllowed(row.cv);
    row.writeEnabled = writeAllowed(row.cv);
    row.locked = !row.readEnabled && parts_.settings.station().locksLimitedFields;
  }
  if (!windowOpening) takeDefaults();
  for (PageRow& row : rows_) {
    row.text = QString::number(sets.value(row.cv));
    row.colour = colourOf(row.cv);
  }
  if (!tabs_[static_cast<size_t>(selectedTab_)].visible) selectTab(0);
  emit tabsChanged();
  emit rowsReset();
}

void DecoderBench::adaptFixedFields() {
  // The spare row shows the CV of the drive page, normally CV 9.
  userRowCv_ = CvIndex(cv::kUserRow);
  for (int i = 1; i <= kHighestCvIndex; ++i) {
    if (description.info(CvIndex(i)).cvPage == page::kDrive) userRowCv_ = CvIndex(i);
  }
  for (const FixedField& fixed : kFixedFields) {
    const bool spare = fixed.cv == cv::kUserRow;
    const CvIndex cv = spare ? userRowCv_ : CvIndex(fixed.cv);
    const CvDescriptor& entry = description.info(cv);
    const bool exists = entry.exists() && (!spare || entry.cvPage == page::kDrive);
    const bool drives =
        description.TYPE != DecoderDescription::kTypeWithoutDrive || !fixed.onDriveTab;
    const QString field = QString::fromLatin1(fixed.field);
    const QString label = QString::fromLatin1(fixed.label);
    controls.setEnabled(label, exists);
    controls.setEnabled(field, exists);
    controls.setTag(field, QString::number(cv.value()));
    controls.setEnabled(fixed.readBox(), exists && drives && readAllowed(cv));
    controls.setEnabled(fixed.writeBox(), exists && drives && writeAllowed(cv));
    if (exists) {
      controls.setCaption(
          label, QStringLiteral("%1 (%2):")
                     .arg(entry.cvName.left(kLongestName), entry.cvRange.left(kLongestRange)));
      showFieldText(field, QString::number(sets.value(cv)));
    } else {
      controls.setCaption(label, {});
      showFieldText(field, QStringLiteral("0"));
      controls.setColour(field, TextColour::Normal);
      setBox(fixed.readBox(), false);
      setBox(fixed.writeBox(), false);
    }
  }
}

}  // namespace lokari
