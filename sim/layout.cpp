#include "sim/layout.h"

#include <QStringList>

namespace lokari::sim {
namespace {

QString textOf(int address, const DriveState& state) {
  QStringList functions;
  for (int n = 0; n < 32; ++n) {
    if ((state.functions >> n & 1U) != 0) functions.append(QStringLiteral("F%1").arg(n));
  }
  return QStringLiteral("Fahrzeug %1: Stufe %2 von %3 %4%5, %6")
      .arg(address)
      .arg(state.speed)
      .arg(state.steps)
      .arg(state.backward ? QStringLiteral("rückwärts") : QStringLiteral("vorwärts"),
           state.manual ? QStringLiteral(" von Hand") : QString(),
           functions.isEmpty() ? QStringLiteral("alles aus") : functions.join(QLatin1Char(' ')));
}

}  // namespace

Vehicle& Layout::add(Vehicle vehicle) {
  vehicles_.push_back(std::make_unique<Vehicle>(std::move(vehicle)));
  return *vehicles_.back();
}

Decoder* Layout::onProgrammingTrack() {
  for (const auto& vehicle : vehicles_) {
    if (vehicle->place != Place::MainTrack) return &vehicle->decoder;
  }
  return nullptr;
}

Decoder* Layout::onMainTrack(int address) {
  for (const auto& vehicle : vehicles_) {
    if (vehicle->place == Place::ProgrammingTrack) continue;
    if (vehicle->decoder.address() == address) return &vehicle->decoder;
  }
  return nullptr;
}

const DriveState& Layout::drive(int address) const {
  static const DriveState atRest;
  const auto found = drives_.find(address);
  return found == drives_.end() ? atRest : found->second;
}

void Layout::setDrive(int address, const DriveState& state) {
  if (drive(address) == state) return;
  drives_[address] = state;
  report(textOf(address, state));
}

bool Layout::output(int number) const {
  const auto found = outputs_.find(number);
  return found != outputs_.end() && found->second;
}

void Layout::setOutput(int number, bool on) {
  if (output(number) == on) return;
  outputs_[number] = on;
  report(QStringLiteral("Ausgang %1: %2")
             .arg(number)
             .arg(on ? QStringLiteral("ein") : QStringLiteral("aus")));
}

void Layout::setTrackPower(bool on) {
  if (trackPower_ == on) return;
  trackPower_ = on;
  report(QStringLiteral("Fahrspannung %1").arg(on ? QStringLiteral("ein") : QStringLiteral("aus")));
}

void Layout::setStopped(bool on) {
  if (stopped_ == on) return;
  stopped_ = on;
  report(on ? QStringLiteral("Alle Fahrzeuge angehalten")
            : QStringLiteral("Fahrzeuge wieder frei"));
}

void Layout::setOverloaded(bool on) {
  if (overloaded_ == on) return;
  overloaded_ = on;
  report(on ? QStringLiteral("Überstrom") : QStringLiteral("Überstrom vorbei"));
}

void Layout::report(const QString& line) const {
  if (onChange) onChange(line);
}

}  // namespace lokari::sim
