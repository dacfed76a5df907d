// A serial line without a port: bytes are put into it by hand. Base of the scripted line and of the
// line to a simulated station.
#pragma once

#include <QList>

#include "link/serial_line.h"
#include "support/virtual_clock.h"

namespace lokari::test {

class MemoryLine : public SerialLine {
 public:
  explicit MemoryLine(VirtualClock& clock) : clock_(clock) {}

  void open(const SerialSettings& settings) override;
  void close() override;
  bool isOpen() const override { return open_ && !vanished_; }
  qsizetype inBufferCount() override;
  QByteArray read(qsizetype most = 0) override;
  void write(const QByteArray& data) override;
  Millis untilSent() override;
  void setRtsEnable(bool raised) override;
  void setDtrEnable(bool raised) override;
  bool ctsHolding() override;

  /// Bytes arrive, now. A closed line loses them.
  void arrive(const QByteArray& data);
  /// The device is pulled out.
  void vanish() { vanished_ = true; }
  void comeBack() { vanished_ = false; }

  struct Write {
    Millis at = 0;
    QByteArray data;
  };

  /// Bytes take their time on the wire, at the rate the line was opened with; else none.
  bool atLineSpeed = false;
  bool failsToOpen = false;
  bool cts = true;
  SerialSettings opened;   ///< as the line was last opened
  int opens = 0;           ///< times it was opened
  int closes = 0;          ///< times it was closed while open
  QList<Write> writes;     ///< every write with its moment
  QList<bool> rtsChanges;  ///< every setRtsEnable()
  QList<bool> dtrChanges;  ///< every setDtrEnable()

  /// All that was written, joined.
  QByteArray sent() const;

 protected:
  VirtualClock& clock() const { return clock_; }
  /// Bytes that the program sent.
  virtual void onWrite(const QByteArray& data) { Q_UNUSED(data) }

 private:
  void check() const;

  VirtualClock& clock_;
  QByteArray input_;
  Millis sentBy_ = 0;
  bool open_ = false;
  bool vanished_ = false;
};

}  // namespace lokari::test
