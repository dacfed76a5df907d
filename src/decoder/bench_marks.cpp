// Read and write marks: their check boxes and the buttons that set many at once.
#include "decoder/decoder_bench.h"
#include "decoder/fixed_fields.h"
#include "link/station_link.h"

namespace lokari {
namespace {

/// CVs with check boxes among the fixed controls.
constexpr int kBoxCvs[] = {2, 3, 4, 5, 6, 9, 19, 29};

constexpr int kTabGeneral = 0;
constexpr int kTabDrive = 1;

QString boxName(bool write, const QString& of) {
  return (write ? QStringLiteral("chkWrt_") : QStringLiteral("chkRd_")) + of;
}

QString driveBoxOf29(bool write) {
  return write ? QStringLiteral("chkDrvWrt_29") : QStringLiteral("chkDrvRd_29");
}

QString tableBox(bool write) {
  return boxName(write, QStringLiteral("Tbl"));
}

QString addressBox(bool write) {
  return write ? QStringLiteral("chkDcAdrWrite") : QStringLiteral("chkDcAdrRead");
}

}  // namespace

bool DecoderBench::readAllowed(CvIndex cv) const {
  constexpr int kHighestLimited = 255;
  return cv.value() <= kHighestLimited || parts_.settings.lenzV36 ||
         !parts_.settings.station().readLimitedWithoutV36;
}

bool DecoderBench::writeAllowed(CvIndex cv) const {
  return cv.value() <= parts_.settings.station().highestWritableCv &&
         description.info(cv).cvDefault != CvDescriptor::kReadOnlyDefault;
}

bool DecoderBench::gridEditable(CvIndex cv) const {
  return cv.value() <= parts_.settings.station().highestWritableCv &&
         description.info(cv).hasDefault();
}

void DecoderBench::setMark(bool write, CvIndex cv, bool set) {
  CvDescriptor& entry = description.info(cv);
  (write ? entry.cvWrite : entry.cvRead) = set;
  showMark(cv);
}

void DecoderBench::showMark(CvIndex cv) {
  const CvDescriptor& entry = description.info(cv);
  for (const int boxCv : kBoxCvs) {
    if (cv != CvIndex(boxCv)) continue;
    const QString number = QString::number(boxCv);
    controls.setChecked(boxName(false, number), entry.cvRead);
    controls.setChecked(boxName(true, number), entry.cvWrite);
  }
  if (cv == CvIndex(cv::kConfig)) {
    controls.setChecked(driveBoxOf29(false), entry.cvRead);
    controls.setChecked(driveBoxOf29(true), entry.cvWrite);
  }
  if (const int row = rowOf(cv); row >= 0) {
    PageRow& shown = rows_[static_cast<size_t>(row)];
    if (shown.read != entry.cvRead || shown.write != entry.cvWrite) {
      shown.read = entry.cvRead;
      shown.write = entry.cvWrite;
      emit rowChanged(row);
    }
  }
  if (const int row = grid_.rowOf(cv); row > 0) emit gridRowChanged(row);
}

void DecoderBench::showBoxes() {
  for (const bool write : {false, true}) {
    controls.setChecked(addressBox(write), description.address.of(write));
    controls.setChecked(tableBox(write), description.table.of(write));
  }
  for (const int boxCv : kBoxCvs) showMark(CvIndex(boxCv));
}

void DecoderBench::setBox(const QString& name, bool checked) {
  if (controls.setChecked(name, checked)) boxChanged(name, checked);
}

void DecoderBench::checkBoxToggled(const QString& name, bool checked) {
  setBox(name, checked);
}

void DecoderBench::boxChanged(const QString& name, bool checked) {
  if (name == u"chkDcAdrChk") {
    parts_.settings.addressCheckNow = checked;
    return;
  }
  if (name == u"chkDcManufChk") {
    parts_.settings.manufacturerCheckNow = checked;
    return;
  }
  for (const bool write : {false, true}) {
    if (name == addressBox(write)) description.address.of(write) = checked;
    if (name == tableBox(write)) description.table.of(write) = checked;
    if (name == driveBoxOf29(write)) setMark(write, CvIndex(cv::kConfig), checked);
    for (const int boxCv : kBoxCvs) {
      if (name == boxName(write, QString::number(boxCv))) setMark(write, CvIndex(boxCv), checked);
    }
  }
}

void DecoderBench::rowReadToggled(int row, bool checked) {
  setMark(false, rows_[static_cast<size_t>(row)].cv, checked);
}

void DecoderBench::rowWriteToggled(int row, bool checked) {
  setMark(true, rows_[static_cast<size_t>(row)].cv, checked);
}

bool DecoderBench::isPlanned(bool write, CvIndex cv) const {
  if (!description.reachable(cv)) return false;
  if (cv::inTable(cv) && tablePlanned(write, cv)) return true;
  const CvDescriptor& entry = description.info(cv);
  const bool spare = entry.cvPage == page::kDrive && !cv::inTable(cv) && cv.value() > 6;
  const CvDescriptor& ticked = spare ? description.info(CvIndex(cv::kUserRow)) : entry;
  return write ? ticked.cvWrite : ticked.cvRead;
}

bool DecoderBench::tablePlanned(bool write, CvIndex point) const {
  if (!description.table.of(write)) return false;
  // A write reaches the points of a table. Where there is none, or the CV is described and has a
  // row of its own, its value is not that of a point, and the row's box decides.
  return !write || (description.hasTable() && rowOf(point) < 0);
}

// ---- Many at once -----------------------------------------------------------------------------

void DecoderBench::markBox(bool write, const QString& name) {
  const QString box = boxName(write, name);
  if (controls.at(box).enabled) setBox(box, true);
}

void DecoderBench::setAllMarks(bool write, bool set) {
  const QString address = addressBox(write);
  if (!set || controls.at(address).enabled) setBox(address, set);
  for (const int boxCv : kBoxCvs) {
    const QString name = QString::number(boxCv);
    if (set) {
      markBox(write, name);
    } else {
      setBox(boxName(write, name), false);
    }
  }
  if (!set) {
    setBox(tableBox(write), false);
  } else if (description.SPEEDTABLE) {
    markBox(write, QStringLiteral("Tbl"));
  }
  for (int i = 2; i <= kHighestCvIndex; ++i) {
    const CvIndex cv(i);
    const CvDescriptor& entry = description.info(cv);
    // CV 2 to 9 have their boxes above; a made name is a point of the table.
    const bool hasBox = i <= 6 || (i == cv::kUserRow && entry.cvPage == page::kDrive);
    if (!entry.exists() || hasBox) continue;
    const bool allowed = write ? writeAllowed(cv) : readAllowed(cv);
    const bool ofHiddenDrive =
        entry.ofTable && rowOf(cv) < 0 && description.TYPE == DecoderDescription::kTypeWithoutDrive;
    if (!set || (allowed && !ofHiddenDrive)) setMark(write, cv, set);
  }
}

void DecoderBench::setMarksOfTab(bool write, int page, int ordinal) {
  for (const PageRow& row : rows_) {
    if (row.page != page || tabs_[static_cast<size_t>(row.tab)].ordinal != ordinal) continue;
    if (write ? row.writeEnabled : row.readEnabled) setMark(write, row.cv, true);
  }
}

void DecoderBench::setMarksOfFixedTab(bool write, int tab) {
  if (tab == kTabGeneral) {
    setBox(addressBox(write), true);
    for (const int boxCv : {3, 4, 19, 29}) markBox(write, QString::number(boxCv));
    return;
  }
  for (const int boxCv : {2, 5, 6, 9, 29}) markBox(write, QString::number(boxCv));
  if (description.SPEEDTABLE) markBox(write, QStringLiteral("Tbl"));
}

bool DecoderBench::markButtonClicked(const QString& name) {
  const bool write = name.startsWith(u"cmdWrite");
  if (!write && !name.startsWith(u"cmdRead")) return false;
  const QString what = name.mid(write ? 8 : 7);
  if (what == u"All" || what == u"None") {
    setAllMarks(write, what == u"All");
    return true;
  }
  if (what == u"Gen" || what == u"Drv") {
    setMarksOfFixedTab(write, what == u"Gen" ? kTabGeneral : kTabDrive);
    return true;
  }
  for (int page = page::kFirstRows; page <= page::kLast; ++page) {
    const QString prefix = pageName(page) + u'_';
    if (!what.startsWith(prefix)) continue;
    setMarksOfTab(write, page, what.mid(prefix.size()).toInt());
    return true;
  }
  return false;
}

void DecoderBench::buttonClicked(const QString& name) {
  if (markButtonClicked(name) || copyButtonClicked(name) || tableButtonClicked(name)) return;
  if (name == u"cmdFuncMap") cmdFuncMap();
  struct JobButton {
    const char16_t* name;
    CommJob job;
  };
  constexpr JobButton kJobs[] = {
      {u"cmdDcRead", CommJob::ReadProgTrack},
      {u"cmdDcReadMain", CommJob::ReadMain},
      {u"cmdDcProg", CommJob::WriteProgTrack},
      {u"cmdDcProgMain", CommJob::WriteMain},
  };
  for (const JobButton& button : kJobs) {
    if (name != QStringView(button.name)) continue;
    finishChoice();
    if (refusedWithoutDescription()) return;
    parts_.link.commJob = button.job;
    emit jobRequested(button.job);
  }
}

}  // namespace lokari
