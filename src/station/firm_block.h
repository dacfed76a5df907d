// The messages between the program and the boot loader of an MX1 of the 2000 series.
//
// A block carries 16 bytes of memory, 21 bytes on the wire:
//
//   offset  size  value
//        0     1  "!"
//        1     1  bank: 0 for addresses below 0x8000, 1 from there on
//        2     1  address / 256, less 128 in bank 1
//        3     1  low byte of the address
//        4    16  data
//       20     1  checksum: the sum of offsets 1 to 19, modulo 256
//
// The boot loader answers each block with one character of its own; others mean nothing.
#pragma once

#include <QByteArray>

namespace lokari {

inline constexpr int kFirmBlockData = 16;
inline constexpr int kFirmBankSize = 0x8000;

/// Asks the station for its boot loader, in normal operation and in the boot loader alike.
inline constexpr char kDownloadCommand[] = "Download\r\r";
/// What a boot loader that waits for blocks has said.
inline constexpr char kBootLoaderReady[] = "load...";
/// One of three that send the boot loader back to normal operation.
inline constexpr char kLeaveBootLoader[] = ".";

enum class FirmReply : char {
  Next = '?',       ///< the block is in; the next one, please
  SameBank = 'b',   ///< the bank's contents are lost: once more from its start
  SameBlock = 'E',  ///< the block came wrong: once more
  None = '\0',
};

/// The message of a byte; None for one that is no reply.
FirmReply firmReplyFrom(char byte);

/// The block of the 16 bytes from `address`, a multiple of 16 below 65536. `image` is a whole
/// firmImage.
QByteArray firmBlock(const QByteArray& image, int address);

/// Whether the 16 bytes from `address` are all 255: erased memory, which need not be sent.
bool firmBlockErased(const QByteArray& image, int address);

/// 0 or 1.
inline int firmBank(int address) {
  return address / kFirmBankSize;
}

}  // namespace lokari
