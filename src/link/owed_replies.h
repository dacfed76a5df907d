// Replies that a station still owes, where replies do not tell what they reply to.
//
// A question that was given up, or went out twice, is answered some time later; the answer would be
// taken for that of the next question, and each value told for the CV behind its own. So the next
// question waits until they have come, or are too late to come at all.
#pragma once

#include <QByteArray>

#include <functional>

#include "base/clock.h"

namespace lokari {

class StationLink;

class OwedReplies {
 public:
  /// Gives how many whole replies a text has.
  using Count = std::function<int(const QByteArray& text)>;

  /// `link` must outlive it.
  OwedReplies(StationLink& link, Count count) : link_(link), count_(std::move(count)) {}

  /// A question went out.
  void asked();
  /// So much of the input was taken; `replies` at least were in it.
  void taken(const QByteArray& text, int replies = 0);
  /// Nothing comes any more: the station does not understand the questions.
  void forget() { owed_ = 0; }
  /// Ahead of a question: awaits and drops what is owed. False when a cancel ends that.
  bool settle();

 private:
  StationLink& link_;
  Count count_;
  int owed_ = 0;
  Millis askedLast_ = 0;
};

}  // namespace lokari
