// The lines of an MX1 with the text protocol, as the station reads and writes them. Numbers are
// upper-case hexadecimal of two digits or more.
#pragma once

#include <QByteArray>

#include <optional>

namespace lokari::sim {

struct Mx1Command {
  enum class Kind {
    WakeUp,     ///< an empty line
    ReadCv,     ///< QN cv
    WriteCv,    ///< RN cv value
    WriteMain,  ///< L index 14 index EC cv value, or L index 15 high low EC cv value
    AskIndex,   ///< E high low
    Leave,      ///< REN, RE
    AskState,   ///< Z
    Download,   ///< Download: into the boot loader
  };
  Kind kind = Kind::WakeUp;
  int cv = 0;       ///< counted from 1
  int value = 0;    ///< 0 to 255
  int index = 0;    ///< the station's number of a vehicle
  int address = 0;  ///< of the vehicle; 0 where the line has none
};

/// A line without its carriage return; nothing for one that the station does not know.
std::optional<Mx1Command> mx1CommandFrom(const QByteArray& line);

/// The reply to QN and RN: nine characters. `status` 0 is success.
QByteArray mx1CvReply(int status, int cv, int value);

/// The reply to E: eight characters. `index` below 128 says that there is none.
QByteArray mx1IndexReply(int index, int address);

/// The reply to Z: "Z" and the state, four characters. 80 is the new generation, 40 the Zimo, 20
/// the DCC, 10 the Motorola data format, 04 overcurrent, 02 track voltage on, 01 broadcast stop.
QByteArray mx1StateReply(int state);

/// What the station says to a line that it refuses.
QByteArray mx1Refusal();

}  // namespace lokari::sim
