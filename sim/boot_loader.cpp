#include "sim/boot_loader.h"

namespace lokari::sim {
namespace {

constexpr qsizetype kBlockLength = 21;
constexpr qsizetype kHeadLength = 4;
constexpr qsizetype kDataLength = 16;
constexpr qsizetype kBankLength = 32768;
constexpr Millis kPatience = 500;
constexpr qsizetype kLongestText = 16;

int number(char byte) {
  return static_cast<unsigned char>(byte);
}

}  // namespace

QByteArray BootLoader::start() {
  active_ = true;
  image_.fill('\xFF');
  block_.clear();
  text_.clear();
  return "Download...";
}

QByteArray BootLoader::feed(char byte, Millis now) {
  if (now - lastByteAt_ > kPatience) block_.clear();
  lastByteAt_ = now;
  if (block_.isEmpty() && byte != '!') return feedText(byte);
  block_.append(byte);
  if (block_.size() < kBlockLength) return {};
  const QByteArray answer = takeBlock();
  block_.clear();
  text_.clear();
  return answer;
}

QByteArray BootLoader::feedText(char byte) {
  text_ = (text_ + byte).right(kLongestText);
  if (text_.endsWith("...")) active_ = false;
  return text_.endsWith("Download\r") ? start() : QByteArray();
}

QByteArray BootLoader::takeBlock() {
  int sum = 0;
  for (qsizetype i = 1; i < kBlockLength - 1; ++i) sum += number(block_[i]);
  const int bank = number(block_[1]);
  const int place = number(block_[2]) * 256 + number(block_[3]);
  const bool inMemory = bank <= 1 && place <= kBankLength - kDataLength;
  if (sum % 256 != number(block_.back()) || !inMemory) return "E";
  if (faults_.strike(FaultKind::BlockError)) return "E";
  if (faults_.strike(FaultKind::BankLost)) {
    image_.replace(bank * kBankLength, kBankLength, QByteArray(kBankLength, '\xFF'));
    return "b";
  }
  image_.replace(bank * kBankLength + place, kDataLength, block_.mid(kHeadLength, kDataLength));
  return "?";
}

}  // namespace lokari::sim
