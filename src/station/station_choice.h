// The fourteen choices of the options dialog: the thirteen kinds of station, one of them in two
// protocol generations.
#pragma once

#include <array>

#include "base/station_kind.h"

namespace lokari {

struct StationChoice {
  StationKind kind = StationKind::Mx1;
  bool lenzV36 = false;

  bool operator==(const StationChoice&) const = default;
};

struct StationChoiceRow {
  const char16_t* control;  ///< name of its radio button
  StationChoice choice;
  const char16_t* caption;
  int column;                      ///< of the dialog: Zimo, Lenz, others
  const char16_t* defaultAddress;  ///< filled in where none has been set; empty for serial kinds
};

inline constexpr int kStationColumns = 3;

/// In the order in which the dialog shows them.
// clang-format off
inline constexpr std::array<StationChoiceRow, 14> kStationChoices{{
    {u"optComTypeZimo",        {StationKind::Mx1,     false}, u"Zimo MX1",                 0, u""},
    {u"optComTypeZimo2",       {StationKind::Mx1V25,  false}, u"Zimo MX1 ab V2.5",         0, u""},
    {u"optComTypeZimo3",       {StationKind::Mx1Bin,  false}, u"Zimo MX1 (binär)",         0, u""},
    {u"optComTypeZimo4",       {StationKind::Mx1Ulf,  false}, u"Zimo MXULF",               0, u""},
    {u"optComTypeZimo5",       {StationKind::Mx10,    false}, u"Zimo MX10 (USB)",          0, u""},
    {u"optComTypeZimo6",       {StationKind::Mx10Ip,  false}, u"Zimo MX10 (Netzwerk)",     0, u"192.168.001.010"},
    {u"optComTypeLenzV2",      {StationKind::Li100,   false}, u"Lenz LI100",               1, u""},
    {u"optComTypeLenzV3",      {StationKind::Li100V3, false}, u"Lenz LI100 ab V3",         1, u""},
    {u"optComTypeLenzUSB",     {StationKind::LiUsb,   false}, u"Lenz LI-USB",              1, u""},
    {u"optComTypeLenzV36",     {StationKind::LiUsb,   true},  u"Lenz LI-USB ab V3.6",      1, u""},
    {u"optComTypeLenzDecProg", {StationKind::LiDp,    false}, u"Lenz Decoderprogrammer",   1, u""},
    {u"optComTypeIBX",         {StationKind::Ibx,     false}, u"Intellibox",               2, u""},
    {u"optComTypeTams",        {StationKind::TamsMc,  false}, u"Tams MC",                  2, u""},
    {u"optComTypeZ21",         {StationKind::Z21Ip,   false}, u"Roco Z21",                 2, u"192.168.000.111"},
}};
// clang-format on

/// The row of a kind; `lenzV36` tells apart the two that share one and counts for no other.
const StationChoiceRow& stationChoice(StationKind kind, bool lenzV36);

}  // namespace lokari
