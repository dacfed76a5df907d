// What messages of XpressNet and the X-Bus messages of a Z21 share.
//
// The last byte is the exclusive or of all others. Vehicles have two bytes of address, high byte
// first, long ones with C0 in it. Functions are switched by groups, E4 group address bits:
//
//   20   F0 to F4, as 000 F0 F4 F3 F2 F1      21   F5 to F8      22   F9 to F12
//   23   F13 to F20      28   F21 to F28      29   F29 to F36    lowest function in bit 0
//
// A CV on the main track: E6 30 address, then 111001CC read, 111010CC write a bit or 111011CC
// write, with the two highest bits of the CV, its other eight bits, counted from 0, and the value;
// for a bit xxxxVBBB, the bit's value and its number.
#pragma once

#include <QByteArray>

#include <optional>

namespace lokari::sim::makers {

QByteArray withXor(const QByteArray& message);
bool endsInItsXor(const QByteArray& message);

int xBusAddress(const QByteArray& message, qsizetype at);

struct FunctionGroup {
  int code;
  int first;
  int count;
};
/// By the code of its message, or nullptr.
const FunctionGroup* functionGroup(int code);
quint32 withGroup(quint32 functions, const FunctionGroup& group, int bits);
int groupBits(quint32 functions, const FunctionGroup& group);
int groupBits(quint32 functions, int code);

struct MainTrackAccess {
  enum class Kind { Read, WriteBit, WriteByte };
  Kind kind = Kind::Read;
  int address = 0;
  int cv = 0;  ///< from 1
  int value = 0;

  /// What a CV that holds `held` holds afterwards.
  int written(int held) const;
};
/// Of a message without its checksum.
std::optional<MainTrackAccess> mainTrackAccess(const QByteArray& message);

}  // namespace lokari::sim::makers
