#include "sim/decoder.h"

#include <algorithm>

namespace lokari::sim {
namespace {

constexpr int kConfigCv = 29;
constexpr int kLongAddressBit = 0x20;
constexpr int kLastShortAddress = 127;

int valueOr0(const std::map<int, int>& values, int cv) {
  const auto found = values.find(cv);
  return found == values.end() ? 0 : found->second;
}

}  // namespace

void Decoder::setAddress(int address) {
  const int config = stored(kConfigCv);
  if (address <= kLastShortAddress) {
    store(1, address);
    store(kConfigCv, config & ~kLongAddressBit);
  } else {
    store(17, address / 256 + 192);
    store(18, address % 256);
    store(kConfigCv, config | kLongAddressBit);
  }
}

int Decoder::address() const {
  if ((stored(kConfigCv) & kLongAddressBit) == 0) return stored(1);
  return (stored(17) - 192) * 256 + stored(18);
}

const CvBankContents* Decoder::bankOf(int cv) const {
  if (!banked.has(cv)) return nullptr;
  for (const CvBankContents& bank : banks) {
    bool selected = true;
    for (size_t i = 0; i < indexRegisters.size() && i < bank.select.size(); ++i) {
      selected = selected && valueOr0(values_, indexRegisters[i]) == bank.select[i];
    }
    if (selected) return &bank;
  }
  return nullptr;
}

int Decoder::stored(int cv) const {
  const CvBankContents* bank = bankOf(cv);
  return valueOr0(bank != nullptr ? bank->values : values_, cv);
}

void Decoder::store(int cv, int value) {
  const CvBankContents* bank = bankOf(cv);
  for (CvBankContents& each : banks) {
    if (&each == bank) {
      each.values[cv] = value;
      return;
    }
  }
  values_[cv] = value;
}

std::optional<int> Decoder::resolve(int cv, Method method) const {
  if (methods.count(method) == 0) return {};
  if (method == Method::Register) {
    if (cv < 1 || cv > 8 || cv == 6) return {};
    if (cv == 5) cv = kConfigCv;
  }
  const bool has = std::any_of(present.begin(), present.end(),
                               [cv](const CvRange& range) { return range.has(cv); });
  if (!has) return {};
  return cv;
}

std::optional<int> Decoder::read(int cv, Method method) const {
  const std::optional<int> number = resolve(cv, method);
  if (!number) return {};
  return stored(*number);
}

bool Decoder::write(int cv, int value, Method method) {
  const std::optional<int> number = resolve(cv, method);
  if (!number || readOnly.count(*number) > 0) return false;
  const bool locked = lock[0] != 0 && *number != lock[1] && stored(lock[0]) != stored(lock[1]);
  if (locked) return false;
  if (sticky.count(*number) == 0) store(*number, value);
  return true;
}

}  // namespace lokari::sim
