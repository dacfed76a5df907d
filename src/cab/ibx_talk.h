// What cabs and panels say to an Intellibox or a Tams MC: commands, questions, and the order of
// their replies.
//
// A reply does not tell what it replies to; the station replies in the order of the commands. So
// whoever takes a reply takes as many bytes as are its own, and a stop that gets into the wait of
// another command leaves its reply to be taken behind that command's (CabLine::repliesOwed). A CV
// access takes what comes as its own: a stop that gets into one is confirmed behind it.
#pragma once

#include <QByteArray>

#include <functional>

namespace lokari {

class CabLine;
class StationLink;

/// Every operation throws LinkError when the line is gone.
class IbxTalk {
 public:
  /// `line` must outlive it.
  explicit IbxTalk(CabLine& line) : line_(line) {}

  /// Sends a command and gives the reply: `size` bytes, one when it is refused, fewer when no more
  /// came within `timeoutVal` or after a cancel. Input that waits ahead of it is dropped. A station
  /// whose queue is full is asked again, for two seconds at most.
  QByteArray ask(const QByteArray& command, int size);

  /// Sends a command that one byte replies to and gives it, 0 for accepted; -1 for none.
  int tell(const QByteArray& command);

  /// Sends a stop or go at once, also inside another command's wait, which then takes the reply.
  /// One that is refused or not answered beeps. `answered` gets the code, -1 for none; it may
  /// outlive its cab.
  using Answered = std::function<void(int code)>;
  void tellAtOnce(const QByteArray& command, Answered answered);

  /// Waits between two commands; a stop gets through.
  void pause(int ms);

 private:
  StationLink& link() const;
  void send(const QByteArray& command);
  QByteArray askOnce(const QByteArray& command, int size);
  QByteArray takeReply(int size);
  /// Takes the replies to stops and goes. A refusal and silence beep.
  void takeOwed();
  /// They do not come any more: one beep, if there are any.
  void giveUpOwed();
  /// Confirms an order that went out inside a talk of somebody else; a newer one takes its place.
  void confirmBehind(const QByteArray& command, const Answered& answered);
  /// Takes the order's reply if it `mayCome` still; without one the order goes out once more.
  void confirm(const QByteArray& command, bool mayCome, const Answered& answered);

  CabLine& line_;
};

}  // namespace lokari
