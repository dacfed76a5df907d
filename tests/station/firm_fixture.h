// A firmware of a few blocks, and the bytes that carry them.
#pragma once

#include "base/bytes.h"
#include "station/firmware.h"
#include "support/link_fixture.h"

namespace lokari::test {

class FirmFixture : public LinkFixture {
 protected:
  explicit FirmFixture(StationKind kind = StationKind::Mx1) : LinkFixture(kind) {}

  /// 16 bytes `value` go to `address`, as if from the file.
  void addBlock(int address, int value) {
    firmware.firmImage.replace(address, 16, QByteArray(16, static_cast<char>(value)));
    dataBytes_ += 16;
    firmware.firmBlocks = dataBytes_ / 16;
  }

  /// The message of such a block; `high` and `low` are the address within the bank.
  static QByteArray message(int bank, int high, int low, int value) {
    const int sum = bank + high + low + 16 * value;
    return "!" + bytes({bank, high, low}) + QByteArray(16, static_cast<char>(value)) +
           bytes({sum % 256});
  }

  Firmware firmware;

 private:
  int dataBytes_ = 0;
};

}  // namespace lokari::test
