// The thirteen kinds of command station. This table is the one place that knows a kind by name; a
// protocol family or a window asks it for a property and never for a kind.
#pragma once

#include <QStringList>
#include <QStringView>

#include <array>

namespace lokari {

/// `baseUnit`: the numbers are those of the settings and must not change.
enum class StationKind : int {
  Mx1 = 1,
  Li100 = 2,
  Li100V3 = 3,
  Ibx = 4,
  Mx1V25 = 5,
  LiUsb = 6,
  TamsMc = 7,
  Mx1Bin = 8,
  Mx1Ulf = 9,
  LiDp = 10,
  Mx10 = 11,
  Mx10Ip = 12,
  Z21Ip = 13,
};

enum class Transport { Serial, Can, Udp };

/// One protocol family is one set of sources in each room.
enum class ProtocolFamily { Mx1Text, ZimoBinary, Lenz, LiDp, Intellibox, Tams, Z21, Mx10 };

/// Numbers of the serial port's handshaking.
enum class Handshaking { None = 0, RequestToSend = 2 };

/// What a good answer to a write on the programming track says about the decoder. A write on the
/// main track is never answered by more than Accepted.
enum class WriteAnswer {
  ReadBack,  ///< the decoder holds the value: it was read back
  Accepted,  ///< the station took the message; nobody has seen the decoder's value
};

/// How a decoder is programmed on the programming track, by the numbers of `progMode` and of a
/// description's PROGMODE.
enum class ProgMethod : int { Direct = 0, Paged = 1, Register = 2 };

/// What a kind's messages can ask of the programming track.
struct ProgMethods {
  bool paged = false;
  bool byRegister = false;

  /// Whether the method goes out; where it does not, the same numbers go out in direct mode.
  bool has(ProgMethod method) const {
    return method == ProgMethod::Direct || (method == ProgMethod::Paged ? paged : byRegister);
  }
};

/// What a cab shows and does on a kind.
struct CabFeatures {
  int funcCount;          ///< highest function number; -1: the kind has no cabs and no panels
  bool manual;            ///< vehicles can be taken out of the station's automatic control
  int timerMs;            ///< period of the cab's timer; 0 for none
  bool linkStaysOpen;     ///< the session is opened ahead of the cab and stays open between uses
  bool dropsInputAtLoad;  ///< input that waits is dropped before the state is read
  bool programsOnMain;    ///< the cab offers CVs for programming on the main track
  bool functionGroups = true;  ///< one message carries several functions: all must be known
  bool drivesAlone = false;    ///< a speed message carries speed and direction and no functions

  bool available() const { return funcCount >= 0; }
};

/// What a window or a command does with the station.
enum class StationUse { Cab, Panel, Test, CvJob };

/// What switches the layout on by itself on a kind, also one that was stopped.
struct SwitchesOn {
  bool opening = false;  ///< the first session, whatever it is for
  bool cab = false;      ///< reading a vehicle's state
  bool test = false;     ///< the communication test
  bool cvJob = false;    ///< reading and writing CVs
};

inline constexpr int kLastCvWithoutV36 = 255;

struct StationKindRow {
  StationKind kind;
  const char16_t* name;  ///< value of the setting `BaseUnit`
  ProtocolFamily family;
  Transport transport;
  int defaultRate;  ///< baud; 0 where the transport has none
  Handshaking handshaking;
  bool usesIpAddress;          ///< the setting `IPAddr` is read
  bool impliesLenzV36;         ///< `lenzV36` is raised before its key is read
  bool programsOnMain;         ///< the decoder window offers writing on the main track
  bool readsOnMain;            ///< the decoder window offers reading on the main track
  int highestWritableCv;       ///< CVs above it have no write box
  bool readLimitedWithoutV36;  ///< CVs above 255 have no read box unless `lenzV36` is on
  bool locksLimitedFields;     ///< and then their value field is locked as well
  CabFeatures cab;
  bool takesFirmware = false;  ///< has a boot loader that loads new firmware
  SwitchesOn switchesOn = {};
  WriteAnswer writeAnswer = WriteAnswer::ReadBack;
  ProgMethods progMethods = {};
  bool writeLimitedWithoutV36 = false;  ///< no message writes CVs above 255 unless `lenzV36` is on

  /// Whether a message of this kind can write that CV, a number of the decoder. On the main track
  /// the messages are others.
  bool canSendWrite(int cv, bool onProgrammingTrack, bool lenzV36) const {
    return !onProgrammingTrack || lenzV36 || !writeLimitedWithoutV36 || cv <= kLastCvWithoutV36;
  }
  bool provesWrites(bool onProgrammingTrack) const {
    return onProgrammingTrack && writeAnswer == WriteAnswer::ReadBack;
  }
};

inline constexpr int kNoCvLimit = 4864;

// clang-format off
inline constexpr std::array<StationKindRow, 13> kStationKinds{{
    {StationKind::Mx1,     u"MX1",     ProtocolFamily::Mx1Text,    Transport::Serial, 9600,  Handshaking::None,          false, false, true,  false, 255,        true,  false, {12, true, 0, false, true, true}, true},
    {StationKind::Li100,   u"LI100",   ProtocolFamily::Lenz,       Transport::Serial, 9600,  Handshaking::RequestToSend, false, false, false, false, kNoCvLimit, true,  false, {4, false, 0, false, true, false}, false, {.test = true, .cvJob = true}, WriteAnswer::ReadBack, {.paged = true}, true},
    {StationKind::Li100V3, u"LI100V3", ProtocolFamily::Lenz,       Transport::Serial, 9600,  Handshaking::RequestToSend, false, false, true,  false, kNoCvLimit, true,  true,  {7, false, 0, false, true, true, true, true}, false, {.test = true, .cvJob = true}, WriteAnswer::ReadBack, {.paged = true}, true},
    {StationKind::Ibx,     u"IBX",     ProtocolFamily::Intellibox, Transport::Serial, 2400,  Handshaking::RequestToSend, false, false, true,  false, kNoCvLimit, false, false, {7, false, 0, false, true, true}, false, {}, WriteAnswer::Accepted, {.paged = true, .byRegister = true}},
    {StationKind::Mx1V25,  u"MX1V25",  ProtocolFamily::Mx1Text,    Transport::Serial, 9600,  Handshaking::RequestToSend, false, false, true,  false, 255,        true,  false, {12, true, 0, false, true, true}, true},
    {StationKind::LiUsb,   u"LIUSB",   ProtocolFamily::Lenz,       Transport::Serial, 57600, Handshaking::RequestToSend, false, true,  true,  false, kNoCvLimit, true,  true,  {7, false, 0, false, true, true, true, true}, false, {.test = true, .cvJob = true}, WriteAnswer::ReadBack, {.paged = true}, true},
    {StationKind::TamsMc,  u"TAMSMC",  ProtocolFamily::Tams,       Transport::Serial, 2400,  Handshaking::RequestToSend, false, false, true,  false, kNoCvLimit, false, false, {7, false, 0, false, true, true}, false, {}, WriteAnswer::Accepted, {.paged = true, .byRegister = true}},
    {StationKind::Mx1Bin,  u"MX1BIN",  ProtocolFamily::ZimoBinary, Transport::Serial, 9600,  Handshaking::RequestToSend, false, false, true,  false, kNoCvLimit, false, false, {12, true, 0, false, true, true}},
    {StationKind::Mx1Ulf,  u"MX1ULF",  ProtocolFamily::ZimoBinary, Transport::Serial, 9600,  Handshaking::RequestToSend, false, false, false, false, kNoCvLimit, false, false, {12, true, 0, false, true, true}, false, {.cab = true}},
    {StationKind::LiDp,    u"LIDP",    ProtocolFamily::LiDp,       Transport::Serial, 57600, Handshaking::None,          false, false, false, false, kNoCvLimit, false, false, {-1, false, 0, false, false, false}, false, {}, WriteAnswer::Accepted},
    {StationKind::Mx10,    u"MX10",    ProtocolFamily::Mx10,       Transport::Can,    0,     Handshaking::None,          false, false, true,  true,  kNoCvLimit, false, false, {28, true, 2000, true, true, true, false}, false, {}, WriteAnswer::Accepted},
    {StationKind::Mx10Ip,  u"MX10IP",  ProtocolFamily::Mx10,       Transport::Can,    0,     Handshaking::None,          true,  false, true,  true,  kNoCvLimit, false, false, {28, true, 2000, true, true, true, false}, false, {}, WriteAnswer::Accepted},
    {StationKind::Z21Ip,   u"Z21IP",   ProtocolFamily::Z21,        Transport::Udp,    0,     Handshaking::None,          true,  false, true,  true,  kNoCvLimit, false, false, {28, false, 500, true, false, true, false, true}, false, {.opening = true, .cvJob = true}},
}};
// clang-format on

/// What of a kind is different when messages follow the makers' documents, setting `MakerForm`.
struct MakerFormRow {
  StationKind kind;
  int funcCount;  ///< highest function number
  SwitchesOn switchesOn;
  ProgMethods progMethods;
};

// clang-format off
inline constexpr std::array kMakerForms{
    MakerFormRow{StationKind::Ibx,     28, {}, {.paged = true, .byRegister = true}},
    MakerFormRow{StationKind::TamsMc,  28, {}, {.paged = true, .byRegister = true}},
    MakerFormRow{StationKind::Li100,   28, {.test = true, .cvJob = true}, {.paged = true, .byRegister = true}},
    MakerFormRow{StationKind::Li100V3, 28, {.test = true, .cvJob = true}, {.paged = true, .byRegister = true}},
    MakerFormRow{StationKind::LiUsb,   28, {.test = true, .cvJob = true}, {.paged = true, .byRegister = true}},
    MakerFormRow{StationKind::Z21Ip,   28, {}, {}},
};
// clang-format on

constexpr std::array<StationKindRow, kStationKinds.size()> kindsInMakerForm() {
  auto kinds = kStationKinds;
  for (const MakerFormRow& form : kMakerForms) {
    for (StationKindRow& kind : kinds) {
      if (kind.kind != form.kind) continue;
      kind.cab.funcCount = form.funcCount;
      kind.switchesOn = form.switchesOn;
      kind.progMethods = form.progMethods;
    }
  }
  return kinds;
}

/// The kinds as they are with that setting.
inline constexpr auto kMakerKinds = kindsInMakerForm();

/// The row of a kind.
const StationKindRow& stationKind(StationKind kind, bool makerForm = false);

/// Whether that use switches a stopped layout on. `sessionOpen`: others use the station already.
bool switchesOn(const StationKindRow& kind, StationUse use, bool sessionOpen);

/// The row whose name equals `name` without regard to case, or nullptr.
const StationKindRow* stationKindByName(QStringView name);

/// The names of all kinds.
QStringList stationNames();

}  // namespace lokari
