// Which of the questions asked an answer belongs to, where answers name what they are about.
//
// A station that is slow answers a question that was given up, or repeats an answer to a question
// that went out twice. Such an answer names another subject than the question asked last; the
// questions that are still without an answer tell it from an answer of a station that fills the
// place of the name with something else.
#pragma once

#include <algorithm>
#include <deque>

namespace lokari {

class OpenQuestions {
 public:
  /// A question about `subject` goes out.
  void asked(int subject) {
    if (open_.size() == kMost) open_.pop_front();
    open_.push_back(subject);
    current_ = subject;
  }

  /// An answer came that names `subject`. False when it is late: it answers an earlier question.
  bool answers(int subject) {
    if (subject == current_ || !isOpen(subject)) {
      settle(current_);
      return true;
    }
    settle(subject);
    return false;
  }

  /// The line was opened anew: nothing of the time before can come.
  void clear() { open_.clear(); }

 private:
  /// What is older is no longer under way.
  static constexpr size_t kMost = 8;

  bool isOpen(int subject) const {
    return std::find(open_.begin(), open_.end(), subject) != open_.end();
  }
  void settle(int subject) {
    const auto at = std::find(open_.begin(), open_.end(), subject);
    if (at != open_.end()) open_.erase(at);
  }

  std::deque<int> open_;
  int current_ = -1;
};

}  // namespace lokari
