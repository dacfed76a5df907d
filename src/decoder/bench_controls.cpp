#include "decoder/bench_controls.h"

#include <stdexcept>

namespace lokari {
namespace {

constexpr const char* kNames[] = {
    "ssDecoder",
    "cvTable",
    "picSpeedTable",
    "tabText",
    "cmdOK",
    "cmdCancel",
    "cmdDcRead",
    "cmdDcReadMain",
    "cmdDcProg",
    "cmdDcProgMain",
    "cmdReadAll",
    "cmdReadNone",
    "cmdWriteAll",
    "cmdWriteNone",
    "cmdCopy",
    "cmdName",
    "cmdFuncMap",
    "cbDcManuf",
    "cbDcDecoder",
    "cbDcVer",
    "chkDcAdrChk",
    "chkDcManufChk",
    "lblReport",
    "lblLegend",
    // Address and version.
    "labNoDescription",
    "labAdr",
    "dc_adr",
    "chkDcAdrRead",
    "chkDcAdrWrite",
    "txtDcComVersion",
    // CVs with a field of their own.
    "labDcDrvMinVolt",
    "txtDcDrvMinVolt",
    "chkRd_2",
    "chkWrt_2",  //
    "labDcComAccTime",
    "txtDcComAccTime",
    "chkRd_3",
    "chkWrt_3",  //
    "labDcComDecTime",
    "txtDcComDecTime",
    "chkRd_4",
    "chkWrt_4",  //
    "labDcDrvMaxSpeed",
    "txtDcDrvMaxSpeed",
    "chkRd_5",
    "chkWrt_5",  //
    "labDcDrvMedSpeed",
    "txtDcDrvMedSpeed",
    "chkRd_6",
    "chkWrt_6",  //
    "labDcDrvUser",
    "txtDcDrvUser",
    "chkRd_9",
    "chkWrt_9",  //
    "labDcComConsist",
    "txtDcComConsist",
    "chkRd_19",
    "chkWrt_19",  //
    "optDcConsistDirNormal",
    "optDcConsistDirReverse",  //
    "chkRd_29",
    "chkWrt_29",
    "chkDrvRd_29",
    "chkDrvWrt_29",
    "chkRd_Tbl",
    "chkWrt_Tbl",
    // Options of CV 29.
    "labDcComDir",
    "optDcComDirNormal",
    "optDcComDirReverse",  //
    "labDcComSteps",
    "optDcComSteps14",
    "optDcComSteps28",  //
    "labDcDrvSteps",
    "optDcDrvSteps14",
    "optDcDrvSteps28",  //
    "labDcComAnalog",
    "optDcComAnalogNo",
    "optDcComAnalogYes",  //
    "labDcComSpdTbl",
    "optDcComSpdTblNo",
    "optDcComSpdTblYes",  //
    "labDcDrvSpdTbl",
    "optDcDrvSpdTblNo",
    "optDcDrvSpdTblYes",  //
    "labDcComDetectPulse",
    "optDcComDetectPulseNo",
    "optDcComDetectPulseYes",  //
    "labDcComRailCom",
    "optDcComRailComNo",
    "optDcComRailComYes",  //
    "labDcComManBit",
    "optDcComManBitNo",
    "optDcComManBitYes",  //
    // The speed table.
    "lblDcDrvLeg2",
    "cmdSmooth",
    "cmdTblList",
    "cmdLoadTable",
    "cmdSaveTable",
};

}  // namespace

BenchControls::BenchControls() {
  for (const char* name : kNames) controls_.insert(QString::fromLatin1(name), {});
}

const Control& BenchControls::at(const QString& name) const {
  const auto found = controls_.constFind(name);
  if (found == controls_.constEnd()) {
    throw std::logic_error("no control " + name.toStdString());
  }
  return *found;
}

template <typename T>
bool BenchControls::set(const QString& name, T Control::*member, const T& value) {
  const auto found = controls_.find(name);
  if (found == controls_.end()) throw std::logic_error("no control " + name.toStdString());
  if ((*found).*member == value) return false;
  (*found).*member = value;
  emit changed(name);
  return true;
}

bool BenchControls::setText(const QString& name, const QString& text) {
  return set(name, &Control::text, text);
}

bool BenchControls::setCaption(const QString& name, const QString& caption) {
  return set(name, &Control::caption, caption);
}

bool BenchControls::setTag(const QString& name, const QString& tag) {
  return set(name, &Control::tag, tag);
}

bool BenchControls::setItems(const QString& name, const QStringList& items) {
  return set(name, &Control::items, items);
}

bool BenchControls::setEnabled(const QString& name, bool enabled) {
  return set(name, &Control::enabled, enabled);
}

bool BenchControls::setVisible(const QString& name, bool visible) {
  return set(name, &Control::visible, visible);
}

bool BenchControls::setLocked(const QString& name, bool locked) {
  return set(name, &Control::locked, locked);
}

bool BenchControls::setChecked(const QString& name, bool checked) {
  return set(name, &Control::checked, checked);
}

bool BenchControls::setColour(const QString& name, TextColour colour) {
  return set(name, &Control::colour, colour);
}

bool BenchControls::setHolds(const QString& name, const std::optional<QString>& holds) {
  return set(name, &Control::holds, holds);
}

bool BenchControls::setIdle(const QString& name, const QString& reason) {
  return set(name, &Control::idle, reason);
}

}  // namespace lokari
