// The CVs that have a field of their own on the first two tabs, and the options of CV 29 and 19.
#pragma once

#include <QString>

#include <array>
#include <span>

#include "decoder/cv_numbers.h"

namespace lokari {

namespace cv {
inline constexpr int kAddress = 1;
inline constexpr int kVersion = 7;
inline constexpr int kMaker = 8;
inline constexpr int kUserRow = 9;
inline constexpr int kLongAddressHigh = 17;
inline constexpr int kLongAddressLow = 18;
inline constexpr int kConsist = 19;
inline constexpr int kConfig = 29;
inline constexpr int kSubVersion = 65;
inline constexpr int kDecoderType = 250;
}  // namespace cv

/// The maker whose decoders tell a sub-version and their type in CV 65 and 250.
inline constexpr int kMakerWithSubVersion = 145;

/// Bits of CV 29.
namespace config_bit {
inline constexpr int kDirection = 1;
inline constexpr int kSteps = 2;
inline constexpr int kAnalog = 4;
inline constexpr int kPulseOrRailCom = 8;
inline constexpr int kSpeedTable = 16;
inline constexpr int kLongAddress = 32;
inline constexpr int kManBit = 64;
inline constexpr int kFunctionDecoder = 128;
}  // namespace config_bit

struct FixedField {
  int cv;
  const char* field;
  const char* label;
  bool onDriveTab;

  QString readBox() const { return QStringLiteral("chkRd_%1").arg(cv); }
  QString writeBox() const { return QStringLiteral("chkWrt_%1").arg(cv); }
};

inline constexpr std::array<FixedField, 6> kFixedFields{{
    {2, "txtDcDrvMinVolt", "labDcDrvMinVolt", true},
    {3, "txtDcComAccTime", "labDcComAccTime", false},
    {4, "txtDcComDecTime", "labDcComDecTime", false},
    {5, "txtDcDrvMaxSpeed", "labDcDrvMaxSpeed", true},
    {6, "txtDcDrvMedSpeed", "labDcDrvMedSpeed", true},
    {9, "txtDcDrvUser", "labDcDrvUser", true},
}};

/// One option button. The options of a group on the general tab and their twins on the drive tab
/// are always equal.
struct OptionRow {
  const char* name;
  const char* group;
  const char* label;
  int cv;     ///< 29 or 19
  int bit;    ///< value of the bit
  bool sets;  ///< it sets the bit; its opposite clears it
};

inline constexpr std::array<OptionRow, 20> kOptions{{
    {"optDcComDirNormal", "Dir", "labDcComDir", 29, config_bit::kDirection, false},
    {"optDcComDirReverse", "Dir", "labDcComDir", 29, config_bit::kDirection, true},
    {"optDcComSteps14", "Steps", "labDcComSteps", 29, config_bit::kSteps, false},
    {"optDcComSteps28", "Steps", "labDcComSteps", 29, config_bit::kSteps, true},
    {"optDcDrvSteps14", "Steps", "labDcDrvSteps", 29, config_bit::kSteps, false},
    {"optDcDrvSteps28", "Steps", "labDcDrvSteps", 29, config_bit::kSteps, true},
    {"optDcComAnalogNo", "Analog", "labDcComAnalog", 29, config_bit::kAnalog, false},
    {"optDcComAnalogYes", "Analog", "labDcComAnalog", 29, config_bit::kAnalog, true},
    {"optDcComDetectPulseNo", "DetectPulse", "labDcComDetectPulse", 29, config_bit::kPulseOrRailCom,
     false},
    {"optDcComDetectPulseYes", "DetectPulse", "labDcComDetectPulse", 29,
     config_bit::kPulseOrRailCom, true},
    {"optDcComRailComNo", "RailCom", "labDcComRailCom", 29, config_bit::kPulseOrRailCom, false},
    {"optDcComRailComYes", "RailCom", "labDcComRailCom", 29, config_bit::kPulseOrRailCom, true},
    {"optDcComSpdTblNo", "SpdTbl", "labDcComSpdTbl", 29, config_bit::kSpeedTable, false},
    {"optDcComSpdTblYes", "SpdTbl", "labDcComSpdTbl", 29, config_bit::kSpeedTable, true},
    {"optDcDrvSpdTblNo", "SpdTbl", "labDcDrvSpdTbl", 29, config_bit::kSpeedTable, false},
    {"optDcDrvSpdTblYes", "SpdTbl", "labDcDrvSpdTbl", 29, config_bit::kSpeedTable, true},
    {"optDcComManBitNo", "ManBit", "labDcComManBit", 29, config_bit::kManBit, false},
    {"optDcComManBitYes", "ManBit", "labDcComManBit", 29, config_bit::kManBit, true},
    {"optDcConsistDirNormal", "ConsistDir", "labDcComConsist", 19, 128, false},
    {"optDcConsistDirReverse", "ConsistDir", "labDcComConsist", 19, 128, true},
}};

/// The options of a group; they stand together in the table.
std::span<const OptionRow> optionsOf(const QString& group);
/// The row of an option's name, or nullptr.
const OptionRow* optionNamed(const QString& name);

/// Allowed values of the consist address.
inline QString consistRange() {
  return QStringLiteral("0-127");
}

}  // namespace lokari
