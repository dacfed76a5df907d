// What a protocol family does for the session and for the CV frame. One object serves one station
// kind from its first session on; what the link remembers of that station lives in it.
#pragma once

#include <QtGlobal>

#include <memory>

#include "link/cv_exchange.h"
#include "link/message_gate.h"

namespace lokari {

class StationLink;

/// Hooks may throw LinkError; see each for what the session makes of it.
class StationProtocol {
 public:
  explicit StationProtocol(StationLink& link) : link_(link) {}
  virtual ~StationProtocol() = default;
  StationProtocol(const StationProtocol&) = delete;
  StationProtocol& operator=(const StationProtocol&) = delete;

  // -- session

  /// Every initComm() begins with it, a nested one too.
  virtual void beginSession() {}
  /// Opens the transport, greets the station, clears `lastCvFailed`; does nothing when it finds
  /// the transport open. A LinkError fails the session with `step` in the message, which the
  /// protocol keeps at the step in hand; it starts at 0.
  virtual void open(bool progOn, int& step) = 0;
  /// Opens the transport of `users` running sessions anew after it was lost, without switching
  /// anything on. Does nothing when it finds the transport open. `step` as in open().
  virtual void reopen(int users, int& step) {
    Q_UNUSED(users)
    open(false, step);
  }
  /// Says goodbye, between the first second of endcomm() and FinishComm(). A LinkError is
  /// ignored: the line is gone.
  virtual void farewell(bool leaveMode, bool progOn) = 0;
  /// FinishComm(): closes the transport when the last user goes. Must not throw.
  virtual void close(bool lastUser) = 0;

  // -- waiting

  /// Bytes or messages waiting, or the last CAN identifier.
  virtual qint32 bufferCount() = 0;
  /// A wait begins.
  virtual void beginWait() {}
  /// Whether what a wait wants is there; asked after every event and at least every 50 ms. This
  /// is where a CAN protocol takes messages in, and where a vanished device shows as LinkError.
  virtual bool arrived(qint32 want) = 0;
  /// Reads and drops what is waiting, where the transport lets it pile up.
  virtual void dropInput() {}

  /// Keeps the messages of this station whole.
  MessageGate& gate() { return gate_; }

  // -- CVs

  virtual std::unique_ptr<CvExchange> readCv(const CvRequest& request) = 0;
  virtual std::unique_ptr<CvExchange> writeCv(const CvRequest& request) = 0;
  /// See StationLink::getAddrIndex().
  virtual int addrIndex(int address) { return address; }

 protected:
  StationLink& link() const { return link_; }

 private:
  StationLink& link_;
  MessageGate gate_;
};

}  // namespace lokari
