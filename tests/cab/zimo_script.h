// Scripts of the Zimo binary protocol by their payloads: the frames around them are counted and
// checked here. The framing itself has its golden bytes in the tests of the link.
#pragma once

#include "support/link_fixture.h"

namespace lokari::test {

inline QByteArray fromHex(const char* text) {
  return QByteArray::fromHex(text);
}

class ZimoScript : public LinkFixture {
 protected:
  explicit ZimoScript(StationKind kind) : LinkFixture(kind) { line.open({}); }

  /// The next frame of the program, with the next sequence number.
  ScriptedLine& expectPayload(const QByteArray& payload) {
    return line.expect(wrapped(QByteArray(1, static_cast<char>(seq_++)) + '\x10' + payload));
  }
  ScriptedLine& expectPayload(const char* payload) { return expectPayload(fromHex(payload)); }

  /// A frame of the station, whose header has 4 bytes; `text` is command byte and data.
  static QByteArray reply(const char* text) {
    const QByteArray plain = fromHex(text);
    return wrapped(QByteArray("\x07\x50", 2) + plain.left(1) + '\0' + plain.mid(1));
  }

 private:
  static QByteArray wrapped(const QByteArray& body) {
    QByteArray frame("\x01\x01");
    for (const char byte : body + checksum(body)) {
      const bool special = byte == 0x01 || byte == 0x10 || byte == 0x17;
      if (special) frame += '\x10';
      frame += static_cast<char>(special ? byte ^ 0x20 : byte);
    }
    return frame + '\x17';
  }

  static QByteArray checksum(const QByteArray& body) {
    unsigned sum = 0xFF;
    for (const char byte : body) {
      sum ^= static_cast<quint8>(byte);
      for (int bit = 0; bit < 8; ++bit) sum = (sum & 1U) != 0 ? sum >> 1 ^ 0x8CU : sum >> 1;
    }
    return QByteArray(1, static_cast<char>(sum));
  }

  int seq_ = 0;
};

}  // namespace lokari::test
