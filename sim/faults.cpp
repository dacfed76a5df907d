#include "sim/faults.h"

#include <QStringList>

#include <array>

namespace lokari::sim {
namespace {

struct Name {
  const char* text;
  FaultKind kind;
};

constexpr std::array kNames{
    Name{"silence", FaultKind::Silence},
    Name{"late", FaultKind::Late},
    Name{"garbage", FaultKind::Garbage},
    Name{"short", FaultKind::Short},
    Name{"flip", FaultKind::Flip},
    Name{"stray", FaultKind::Stray},
    Name{"split", FaultKind::Split},
    Name{"unplugged", FaultKind::Unplugged},
    Name{"busy", FaultKind::Busy},
    Name{"shortcircuit", FaultKind::ShortCircuit},
    Name{"nodecoder", FaultKind::NoDecoder},
    Name{"noack", FaultKind::NoAck},
    Name{"wrongvalue", FaultKind::WrongValue},
    Name{"blockerror", FaultKind::BlockError},
    Name{"banklost", FaultKind::BankLost},
};

std::optional<int> count(const QString& text) {
  bool valid = false;
  const int number = text.toInt(&valid);
  if (!valid || number < 0) return {};
  return number;
}

}  // namespace

std::optional<Fault> faultFromText(const QString& text) {
  Fault fault;
  const QStringList halves = text.toLower().split(QLatin1Char('@'));
  const QStringList parts = halves[0].split(QLatin1Char(':'));
  if (halves.size() > 2 || parts.size() > 3) return {};

  const auto name = std::find_if(kNames.begin(), kNames.end(), [&](const Name& each) {
    return parts[0] == QLatin1String(each.text);
  });
  if (name == kNames.end()) return {};
  fault.kind = name->kind;

  if (halves.size() == 2) {
    const std::optional<int> skip = count(halves[1]);
    if (!skip) return {};
    fault.skip = *skip;
  }
  if (parts.size() > 1) {
    const std::optional<int> times =
        parts[1] == QLatin1String("immer") ? Fault::kAlways : count(parts[1]);
    if (!times) return {};
    fault.count = *times;
  }
  if (parts.size() > 2) {
    fault.amount = count(parts[2]);
    if (!fault.amount) return {};
  }
  return fault;
}

std::optional<Fault> FaultPlan::strike(FaultKind kind) {
  for (Fault& fault : faults_) {
    if (fault.kind != kind || fault.count == 0) continue;
    if (fault.skip > 0) {
      --fault.skip;
      return {};
    }
    if (fault.count != Fault::kAlways) --fault.count;
    return fault;
  }
  return {};
}

}  // namespace lokari::sim
