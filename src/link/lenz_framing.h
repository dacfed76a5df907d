// Sending to a Lenz interface and taking its replies: what CV access, driving messages and status
// queries have in common.
#pragma once

#include <QByteArray>

#include <deque>
#include <functional>
#include <optional>

#include "base/clock.h"
#include "base/station_kind.h"
#include "link/lenz_codec.h"
#include "link/lenz_meaning.h"
#include "link/open_questions.h"

namespace lokari {

class StationLink;

/// What distinguishes the three interfaces.
struct LenzInterface {
  StationKind kind;
  bool usb;          ///< messages in both directions go behind FF FE, without a line handshake
  int want;          ///< bytes awaited for a CV message, FF FE included
  int farewellWant;  ///< bytes awaited for the farewell
  bool confirmsMainWrite;  ///< a main-track write ends with the reply to it
  bool firstGeneration;    ///< vehicles have one address byte and 28 speed steps
};

/// The interface of one of the three kinds. With `makerForm` the documents count: every answer is
/// one message, and all of them have the messages of the later generations.
const LenzInterface& lenzInterface(StationKind kind, bool makerForm = false);

class LenzFraming {
 public:
  /// `link` must outlive it.
  LenzFraming(StationLink& link, StationKind kind) : link_(link), kind_(kind) {}

  /// As the settings have the form now.
  const LenzInterface& type() const;

  /// Sends a message with its check byte. Not on USB, the request-to-send line drops for 50 ms
  /// first and up to `timeoutVal` seconds pass until the station raises clear-to-send; the message
  /// goes out in any case, also after a cancel.
  ///
  /// Asked for while another message waits for the line, it takes that one's turn as soon as the
  /// line is granted, and the other one asks anew. An order to the whole layout has `lost`, which
  /// is called when the line is lost before; the reply to it is told to the link's LayoutOrder.
  void lnzSend(const QByteArray& msg, std::function<void()> lost = {});

  /// What a reply says: on USB without its first two bytes, if it has more than two.
  QByteArray unwrapped(const QByteArray& reply) const;

  /// Takes what is waiting, unwrapped. A message that is cut gets up to `timeoutVal` seconds for
  /// its rest.
  QByteArray takeReply();

  /// The same without the news and confirmations ahead of it. When nothing else has come, it is
  /// awaited up to `timeoutVal` seconds.
  /// `answer` as in withoutNews().
  QByteArray takeAnswer(lenz::Meaning answer);

  /// Asks for normal operation and waits for `want` bytes; true when the station tells that it has
  /// resumed it.
  bool resume(int want);

  /// The same behind an operation, several times until it tells it.
  void leaveServiceMode();

  /// Normal operation was told with fewer bytes than awaited: this station says everything once, as
  /// the documents have it.
  bool saysItOnce() const { return saysItOnce_; }

  /// Takes in what has arrived, beside whoever takes it as a reply.
  void hear(const QByteArray& data);

  /// The next whole message of those that have come since forgetMessages(); nothing when none has
  /// come by `deadline`, and at a cancel. Beside whoever reads the line.
  std::optional<QByteArray> nextMessage(Millis deadline);
  void forgetMessages() { messages_.clear(); }

  /// The questions for results.
  OpenQuestions& cvQuestions() { return cvQuestions_; }

 private:
  struct Ahead {
    QByteArray msg;
    std::function<void()> lost;
  };

  /// Asks the station for the line and waits until it has it.
  void request();
  enum class Yields { No, Yes };
  /// `yields`: to a newer order that went out ahead of it.
  void sendInTurn(const QByteArray& msg, std::function<void()> lost, Yields yields);
  void write(const QByteArray& msg, bool isOrder);
  lenz::News newsIn(const lenz::Message& message);
  void noteAnswer(bool accepted);
  /// A reply without its head; one that is cut gets its time.
  QByteArray completed(const QByteArray& input);

  StationLink& link_;
  StationKind kind_;
  OpenQuestions cvQuestions_;
  bool saysItOnce_ = false;
  bool requesting_ = false;
  std::deque<Ahead> ahead_;
  QByteArray heard_;      // the beginning of a message
  QByteArray heardLast_;  // the last whole message
  Millis heardAt_ = 0;
  std::deque<QByteArray> messages_;
  std::deque<Millis> unanswered_;  // when the messages went out that may still be answered
  size_t answersToOrder_ = 0;      // the last of so many answers is that to the order
};

}  // namespace lokari
