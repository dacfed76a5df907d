// A serial line that tells the trace what it carries. It adds nothing to the line's own behaviour
// and changes no order.
#pragma once

#include "link/message_trace.h"
#include "link/serial_line.h"

namespace lokari {

class TracedSerialLine final : public SerialLine {
 public:
  /// `line` and `trace` must outlive it.
  TracedSerialLine(SerialLine& line, MessageTrace& trace) : line_(line), trace_(trace) {
    // Where it arrives: it may be taken later, behind the next question, or never.
    line_.onReceived = [this](const QByteArray& data) {
      if (own_) trace_.received(data);
      if (onReceived) onReceived(data);
    };
  }
  ~TracedSerialLine() override { line_.onReceived = nullptr; }
  TracedSerialLine(const TracedSerialLine&) = delete;
  TracedSerialLine& operator=(const TracedSerialLine&) = delete;

  void open(const SerialSettings& settings) override;
  void close() override;
  bool isOpen() const override { return line_.isOpen(); }
  qsizetype inBufferCount() override;
  QByteArray read(qsizetype most = 0) override;
  void write(const QByteArray& data) override;
  Millis untilSent() override;
  void setRtsEnable(bool raised) override;
  void setDtrEnable(bool raised) override;
  bool ctsHolding() override;

 private:
  /// Tells of a LinkError and passes it on.
  template <class Work>
  auto watched(const Work& work);

  SerialLine& line_;
  MessageTrace& trace_;
  bool own_ = false;  ///< it is open for this user; a CAN key uses the same line without a trace
  bool cts_ = true;   ///< as it was told last
};

}  // namespace lokari
