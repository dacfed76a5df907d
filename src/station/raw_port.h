// A raw handle on the port that a session has left: the operations that the boot loader of a
// station needs, on the serial line of the link. The line keeps the session's rate and handshaking.
//
// Every operation but CloseComm() throws LinkError when the port is not open or its device has
// vanished.
#pragma once

#include <QByteArray>

#include "link/serial_line.h"

namespace lokari {

/// Codes of EscapeCommFunction().
enum class CommEscape { ClearRts = 4, ClearDtr = 6 };
/// Queues of FlushComm().
enum class CommQueue { Transmit = 0, Receive = 1 };

class RawPort {
 public:
  /// `line` must outlive the handle. `left` is how the session had opened it, the port included.
  RawPort(SerialLine& line, const SerialSettings& left) : line_(line), left_(left) {}
  ~RawPort() { CloseComm(); }
  RawPort(const RawPort&) = delete;
  RawPort& operator=(const RawPort&) = delete;

  /// False also once the device has vanished.
  bool isOpen() const { return open_ && line_.isOpen(); }

  /// Opens the port with nothing waiting. The queues are the system's own.
  void OpenComm();
  void CloseComm();

  /// Sends without waiting for the line.
  void WriteComm(const QByteArray& data) { line_.write(data); }
  /// Up to `count` bytes that are there, at least one; none without waiting for any.
  QByteArray ReadComm(int count) { return line_.read(count); }
  /// Drops what waits to be read. To send nothing ever waits: WriteComm() hands its bytes to the
  /// system at once, and those must all go out, since a boot loader that got half a message would
  /// take the next one for the other half.
  void FlushComm(CommQueue queue);
  /// Lowers a line of the handshaking.
  void EscapeCommFunction(CommEscape code);
  /// Clears an error of the line. The line keeps none but the loss of its device, which is thrown.
  void GetCommError() { line_.inBufferCount(); }

 private:
  SerialLine& line_;
  const SerialSettings left_;
  bool open_ = false;
};

}  // namespace lokari
