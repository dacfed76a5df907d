#include "sim/mx1_text_driving.h"

#include "base/bytes.h"

namespace lokari::sim {
namespace {

constexpr int kNinthBit = 0x80;

/// The bytes that pairs of digits stand for; nothing when there is anything else.
std::optional<QByteArray> bytesOf(const QByteArray& digits) {
  const QByteArray data = QByteArray::fromHex(digits);
  if (data.toHex().toUpper() != digits) return {};
  return data;
}

QByteArray digitsOf(std::initializer_list<int> data) {
  return bytes(data).toHex().toUpper();
}

std::optional<Mx1Driving> vehicleQuestion(const QByteArray& data) {
  if (data.size() != 1) return {};
  return Mx1Driving{.kind = Mx1Driving::Kind::AskVehicle, .number = byteAt(data, 0)};
}

std::optional<Mx1Driving> drive(const QByteArray& data) {
  if (data.size() != 4 && data.size() != 5) return {};
  const bool hasHigh = data.size() == 5;
  return Mx1Driving{.kind = Mx1Driving::Kind::Drive,
                    .number = byteAt(data, 0),
                    .vehicle = {.speed = byteAt(data, 1),
                                .flags = byteAt(data, 2),
                                .low = byteAt(data, 3),
                                .high = hasHigh ? byteAt(data, 4) : 0},
                    .hasHigh = hasHigh};
}

std::optional<Mx1Driving> unitQuestion(const QByteArray& data) {
  const bool hasNinth = data.size() == 2 && byteAt(data, 1) == kNinthBit;
  if (data.size() != 1 && !hasNinth) return {};
  return Mx1Driving{.kind = Mx1Driving::Kind::AskUnit,
                    .unit = byteAt(data, 0) + (hasNinth ? 256 : 0)};
}

std::optional<Mx1Driving> switching(const QByteArray& data) {
  if (data.size() != 2) return {};
  const int value = byteAt(data, 1);
  return Mx1Driving{.kind = Mx1Driving::Kind::Switch,
                    .unit = byteAt(data, 0) + ((value & kNinthBit) != 0 ? 256 : 0),
                    .value = value & ~kNinthBit};
}

struct LineForm {
  const char* head;
  std::optional<Mx1Driving> (*parse)(const QByteArray& data);
};
constexpr LineForm kForms[] = {
    {"AFN", vehicleQuestion}, {"AWN", unitQuestion}, {"FN", drive}, {"MN", switching}};

}  // namespace

std::optional<Mx1Driving> mx1DrivingFrom(const QByteArray& line) {
  if (line == "SS") return Mx1Driving{.kind = Mx1Driving::Kind::Stop};
  if (line == "SE") return Mx1Driving{.kind = Mx1Driving::Kind::Go};
  for (const LineForm& form : kForms) {
    if (!line.startsWith(form.head)) continue;
    const auto data = bytesOf(line.mid(static_cast<qsizetype>(qstrlen(form.head))));
    return data ? form.parse(*data) : std::nullopt;
  }
  return {};
}

QByteArray mx1VehicleReply(int number, const ZimoVehicle& vehicle, bool newGeneration) {
  return "AFN" + digitsOf({number, vehicle.speed, vehicle.flags, vehicle.low, vehicle.high, 0x00}) +
         (newGeneration ? digitsOf({vehicle.high}) : QByteArray()) + "\r";
}

QByteArray mx1IndexNotice(int index, int address) {
  return "E" + digitsOf({index, address / 256, address % 256, 0x00}) + "\r";
}

QByteArray mx1UnitReply(int unit, int outputs) {
  return "AWN" + digitsOf({unit % 256, unit / 256 * kNinthBit, outputs}) + "\r";
}

QByteArray mx1SwitchRefusal() {
  return "???\r";
}

}  // namespace lokari::sim
