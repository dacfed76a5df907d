// Messages of the MX10 on the CAN bus. An identifier's bytes are group, command x 4 + mode, and the
// two of the sender's node; this program is node 86C2. Numbers in the data have their low byte
// first, but the station's node stands high byte first.
#pragma once

#include <QtGlobal>

#include <initializer_list>
#include <optional>

#include "link/can_driver.h"

namespace lokari::mx10 {

/// What the station announces itself with, and what it answers the switch of its programming track
/// with: identifiers to wait for.
inline constexpr qint32 kWantAnnouncement = 0x0A0086C2;
inline constexpr qint32 kWantTrackState = 0x160186C2;

/// A message with a 29-bit identifier and up to 16 data bytes, each 0 to 255.
CanMessage message(quint32 id, std::initializer_list<int> data);

/// `nid` is the station's node.
CanMessage logOn();
CanMessage toProgrammingTrack(qint16 nid);
CanMessage toNormal(qint16 nid);
/// `address` and `cv` have 16 bits, `value` 8. Nothing for a number that does not fit.
std::optional<CanMessage> readCv(qint16 nid, int address, int cv);
std::optional<CanMessage> writeCv(qint16 nid, int address, int cv, int value);

/// True for an identifier whose high word is that of `want` plus 1, 2 or 3.
bool answers(quint32 id, qint32 want);

/// Whether a message comes from the station's node and names the address and the CV of `question`,
/// as far as it goes: one that is too short is a wrong answer rather than none.
bool answersCv(const CanMessage& message, const CanMessage& question, qint16 nid);

/// Whether a message names the vehicle of `question`, as far as it goes: what other devices ask
/// for is answered for all to hear.
bool answersVehicle(const CanMessage& message, const CanMessage& question);

/// What the station tells of track power, in answer to an order or to everybody; nothing in any
/// other message, the order of another program included.
std::optional<bool> trackPower(const CanMessage& message);

/// First four data bytes of the announcement.
quint32 serialNumber(const CanMessage& announcement);

/// The value in the answer to readCv(), or nothing when the answer is too short to hold one.
std::optional<int> cvValue(const CanMessage& answer);

}  // namespace lokari::mx10
