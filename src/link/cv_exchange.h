// One CV operation as a station's protocol fills it: the steps that the frame of ReadCV and
// WriteCV runs.
//
// The frame:
//   send()                        first attempt, sets want()
//   wait for want()
//   too little came, not cancelled, secondChanceHelps():
//     drop the input, secondChance(), wait, pause a second
//   evaluate()                    a result, or where to go on
//   epilogue()
//
// An exchange lives for one operation; its counters live in it and run on over every repeat.
#pragma once

#include <QByteArray>

namespace lokari {

class StationLink;

/// What is asked for. `cv` counts from 1; `value` is 0 to 255 and `mode` the programming method
/// that the caller of a write asks for, both unused by reads.
struct CvRequest {
  int cv = 0;
  int address = 0;
  int value = 0;
  int mode = 0;
};

/// How the frame goes on.
struct CvStep {
  enum class Next {
    Wait,          ///< wait for want(), with the second chance behind it
    SecondChance,  ///< go again from the second chance
    Start,         ///< go again from send()
    Finish,        ///< `result` stands, the epilogue runs
    FinishAtOnce,  ///< `result` stands, no epilogue
  };

  Next next = Next::Wait;
  int result = 0;
  bool refused = false;  ///< the station has said that it does nothing of what was asked for

  static CvStep wait() { return {Next::Wait, 0, false}; }
  static CvStep fromSecondChance() { return {Next::SecondChance, 0, false}; }
  static CvStep fromStart() { return {Next::Start, 0, false}; }
  static CvStep finish(int result) { return {Next::Finish, result, false}; }
  static CvStep finishAtOnce(int result) { return {Next::FinishAtOnce, result, false}; }
  /// Only where the message went out once.
  static CvStep refuse(int result) { return {Next::Finish, result, true}; }
};

class CvExchange {
 public:
  CvExchange(StationLink& link, const CvRequest& request) : link_(link), request_(request) {}
  virtual ~CvExchange() = default;
  CvExchange(const CvExchange&) = delete;
  CvExchange& operator=(const CvExchange&) = delete;

  /// Sends the first attempt; wait() when an answer is awaited, or the result.
  virtual CvStep send() = 0;
  /// Sends the repeat. Waiting input has been dropped.
  virtual void secondChance() = 0;
  /// Looks at what came, which may be nothing, and at `cancelRequested`.
  virtual CvStep evaluate() = 0;
  /// Leaves the station ready for the next operation.
  virtual void epilogue() {}

  /// False when a repeat is pointless because the station has told what is wrong.
  virtual bool secondChanceHelps() const { return true; }
  /// Whether a second passes after the wait of the second chance.
  virtual bool pausesAfterSecondChance() const { return true; }
  /// Whole seconds that the frame's waits may take; the setting `timeoutVal` unless overridden.
  virtual int timeoutSeconds() const;

  /// What the frame waits for: a byte count, or a CAN identifier.
  qint32 want() const { return want_; }

 protected:
  StationLink& link() const { return link_; }
  const CvRequest& request() const { return request_; }
  void setWant(qint32 want) { want_ = want; }

  /// Less came than was wanted: shows it in the status line and gives kNoReply, or kCancelled
  /// after a cancel.
  CvStep shortReply() const;

 private:
  StationLink& link_;
  CvRequest request_;
  qint32 want_ = 0;
};

/// The exchange of a station whose answer is one byte string: the evaluation takes the reply,
/// treats a short one, and leaves the others to parse().
class ReplyExchange : public CvExchange {
 public:
  using CvExchange::CvExchange;
  CvStep evaluate() final;

 protected:
  /// The reply; everything that waits on the serial line unless overridden. It may set want().
  virtual QByteArray takeReply();
  /// A reply of at least want() bytes.
  virtual CvStep parse(const QByteArray& reply) = 0;
};

}  // namespace lokari
