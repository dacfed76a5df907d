// What has become of the address in a batch write. A decoder has a new address when all of its
// parts are there: the number, and in CV 29 the kind of number that it listens to.
#pragma once

namespace lokari {

class AddressJob {
 public:
  enum class Part {
    Open,  ///< did not go out
    Done,
    Failed,
  };

  void begin(int address) { address_ = address; }
  bool begun() const { return address_ > 0; }
  int address() const { return address_; }

  /// CV 1, or CV 18 and 17.
  void setNumber(Part part) { number_ = part; }
  /// CV 29; when it goes out more than once the last counts.
  void setKind(Part part) { kind_ = part; }

  /// The station has refused one of the parts, and does not say which.
  void refuse() {
    if (number_ == Part::Done) number_ = Part::Failed;
    if (kind_ == Part::Done) kind_ = Part::Failed;
  }

  bool done() const { return number_ == Part::Done && kind_ == Part::Done; }
  /// The number is in the decoder, and nobody knows whether it listens to it.
  bool lacksKind() const { return number_ == Part::Done && kind_ != Part::Done; }
  Part number() const { return number_; }
  Part kind() const { return kind_; }

 private:
  int address_ = 0;
  Part number_ = Part::Open;
  Part kind_ = Part::Open;
};

}  // namespace lokari
