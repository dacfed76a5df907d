// The session with the one configured command station, and the two operations that read and write
// one CV. Everything runs on the caller's thread; waits let events run.
#pragma once

#include <QString>

#include <functional>
#include <memory>

#include "base/settings.h"
#include "link/comm_job.h"
#include "link/cv_result.h"

namespace lokari {

class CanDriver;
class CanLog;
class Clock;
class CommView;
class Prompt;
class SerialLine;
class StationProtocol;
class Trace;
class TrackStop;
class UdpSocket;

/// The three transports; a session uses the one of its station kind.
struct Transports {
  SerialLine& serial;
  UdpSocket& udp;
  CanDriver& can;
  CanLog* canLog = nullptr;  ///< where the CAN traffic is written; may be null
  Trace* trace = nullptr;    ///< where all traffic is told of, if wanted; may be null
};

class StationLink {
 public:
  /// All arguments must outlive the link. `settings` is looked at anew by every operation, so that
  /// a change of the options holds for the next session. The CAN traffic log and the trace begin
  /// here, when they are on.
  StationLink(const Settings& settings, Clock& clock, Prompt& prompt, Transports transports);
  ~StationLink();

  /// Opens the session. Empty on success, else the message for the user, with the failed step's
  /// number. A failed call leaves `commUseCount` raised. `verify` and `reserved` have no effect.
  QString initComm(bool verify, bool reserved, bool progOn);
  /// initComm() for a job that ends when it fails: what a failed call leaves behind would keep the
  /// port of a later session open.
  QString openForJob(bool progOn);
  /// Opens the transport of the running sessions anew after it was lost; how many there are stays.
  /// Empty on success, else why it does not open, a whole sentence. Switches nothing on. A cancel
  /// that stays ends its waits.
  QString reopen();
  /// initComm() or reopen() is at work: the transport may be half open.
  bool isOpening() const { return opening_; }
  /// What lies behind the number in the last initComm()'s message, such as a port without a device;
  /// a whole sentence, empty when there is no more to tell.
  const QString& openFailureReason() const;
  /// Says goodbye to the station and closes the session.
  void endcomm(bool leaveMode, bool progOn);
  /// While endcomm() runs: ends all waits that are left. What the farewell has to say is still
  /// said, each message once.
  void hurryFarewell();
  bool isSayingGoodbye() const { return farewell_ != Farewell::None; }
  /// A farewell sends a message no second time once it is hurried.
  bool isFarewellHurried() const { return farewell_ == Farewell::Hurried; }
  /// Closes the transport only; a serial port when `commUseCount` has come down to 0.
  void FinishComm();

  /// Bytes or messages waiting; on the CAN kinds the identifier of the last message, 0 for none.
  qint32 getBufferCount() const;
  /// Waits for a byte count (serial, UDP) or for an answer to a CAN identifier, until it is there,
  /// `cancelRequested` is set, or more whole seconds than `timeoutVal` have passed. The caller
  /// looks at getBufferCount() afterwards. A device that vanishes throws LinkError.
  void WaitForData(qint32 want);
  /// The same with a limit of its own instead of `timeoutVal`.
  void WaitForData(qint32 want, int timeoutSeconds);
  /// That many whole seconds; 0 is the short pause of 100 ms; below 0 nothing.
  void Delay(int seconds);
  void DelayMsec(int ms);
  /// Waits until the serial line, if one is open, has sent all that was written; until the cancel
  /// and `timeoutVal` seconds at most.
  void waitUntilSent();

  /// A value 0 to 255 or a negative code, see cv_result.h. `cv` counts from 1. `address` is used
  /// by the Z21 and the CAN stations. Needs an open session. A port that vanishes throws LinkError.
  int ReadCV(int cv, int address);
  /// As ReadCV(); on success the value that the station reports, or `value` where its answer
  /// carries none. `mode` is 1 paged, 2 register, any other value direct.
  int WriteCV(int cv, int value, int address, int mode);
  /// The number under which an MX1 knows an address above 127, or -1; other addresses, and every
  /// address on other kinds, unchanged.
  int getAddrIndex(int address);

  /// Where a running job shows itself; may be null. Not owned.
  void setView(CommView* view);
  CommView* view() const;

  const Settings& settings() const;
  Clock& clock() const;
  Prompt& prompt() const;
  SerialLine& serial() const;
  UdpSocket& udp() const;
  CanDriver& can() const;
  /// The log of the CAN traffic, or null when it is off.
  CanLog* canLog() const;

  /// Begins or ends the trace as the settings say now.
  void followTrace();
  /// Where the trace stands or would stand; empty without one.
  QString tracePath() const;

  /// The protocol of the configured station kind, for messages beyond CVs.
  StationProtocol& protocol();

  /// Whether this program has stopped the layout, and its stop.
  TrackStop& trackStop();

  // -- for whoever shares the line out to cabs, panels and jobs

  /// The last message found no way out: the next session opens the transport anew for those that
  /// are open, since it may still pass for open.
  bool lineLost = false;
  /// initComm() begins: whoever asked for it means it.
  std::function<void()> onSessionOpening;
  /// initComm() has ended; `opened` tells whether the session is there.
  std::function<void(bool opened)> onSessionTried;
  /// How stepAside() lets others in; empty where nobody waits for the line.
  std::function<std::shared_ptr<void>()> onStepAside;
  /// The job that has the line needs it no more, or not yet: others use it while the result lives.
  /// It may be null. Only the outermost frame of the job may ask for it.
  std::shared_ptr<void> stepAside() const { return onStepAside ? onStepAside() : nullptr; }

  /// What the last farewell had to refuse: the writes of its session on the main track that nothing
  /// else answers. The user has been told; empty for nothing.
  QString lateRefusal;

  int commUseCount = 0;          ///< sessions open
  bool cancelRequested = false;  ///< ends every wait
  bool cancelStays = false;      ///< the program is ending: opening a session clears no cancel
  CommJob commJob = CommJob::None;
  CommJob runningJob = CommJob::None;  ///< what the progress dialog is doing now
  bool progTrack = false;              ///< programming track, from initComm()
  bool lastCvFailed = false;           ///< a batch went on past a failed CV
  /// The last CV operation ended with the station's word that it does nothing of it: the decoder
  /// cannot have heard of it. False where that is not certain.
  bool lastCvRefused = false;
  int pomAddr = 0;   ///< address of main-track writes
  int progMode = 0;  ///< 1 paged, 2 register, others direct: reads, Tams writes

 private:
  enum class Farewell { None, Running, Hurried };

  void reopenFor(int users, int& step);

  struct Impl;
  std::unique_ptr<Impl> impl_;
  Farewell farewell_ = Farewell::None;
  bool opening_ = false;
};

}  // namespace lokari
