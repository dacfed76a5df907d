// What one cab knows of its vehicle. The window shows it, the protocol of the station kind reads
// and sends it.
#pragma once

#include <QByteArray>

#include <array>

namespace lokari {

struct CabState {
  static constexpr int kHighestFunction = 28;
  static constexpr int kHighestSpeed = 127;

  int address = 0;                ///< `dc_adr`, 1 to 10239; 0 for no vehicle
  bool stopped = false;           ///< the track was stopped by this cab
  int speed = 0;                  ///< position of the speed bar, 0 to 127, whatever the step count
  int steps = 128;                ///< speed steps of the vehicle: 14, 27, 28 or 128
  bool backward = false;          ///< direction
  bool manual = false;            ///< the vehicle is taken out of the station's automatic control
  int funcCount = 4;              ///< highest function number the station kind can switch
  std::array<bool, 30> funcOn{};  ///< index n is function Fn, 0 the light
  QByteArray locoCmd;  ///< last command for this vehicle in the station's form, kept as a template
  bool addrIndexed = false;  ///< the station reaches the vehicle by an address index
  quint8 canFlags = 0;       ///< flag byte of the vehicle's state on CAN stations
  quint8 canFuncs = 0;       ///< the byte behind it
  bool canBusy = false;      ///< a handler talks on the CAN link; the timer keeps silent
};

}  // namespace lokari
