#include "app/driving.h"

#include <cmath>

#include "base/numbers.h"
#include "base/prompt.h"
#include "cab/cab_table.h"
#include "db/database_session.h"
#include "db/form_names.h"
#include "link/station_link.h"

namespace lokari {
namespace {

constexpr double kFunctionUnit = 2;

}  // namespace

Driving::Driving(StationLink& link, DatabaseSession& session, Prompt& prompt,
                 const QString& basePath, DrivingWindows windows)
    : link_(link),
      session_(session),
      prompt_(prompt),
      line_(link),
      records_(&session, prompt),
      cabs_({line_, prompt, records_, basePath, makeCabProtocol}, std::move(windows.makeCab)),
      panels_({line_, prompt, makePanelProtocol}, std::move(windows.makePanel)) {}

std::optional<double> Driving::dcType() const {
  const auto type = parseNumber(session_.form().text(QStringLiteral("dc_type")));
  if (!type) prompt_.message(QStringLiteral("Type nicht festgelegt!"));
  return type;
}

// A record that is not stored yet may have none; 0 would speak to every vehicle on the track.
std::optional<int> Driving::addressOnShow() const {
  const double address =
      std::nearbyint(numericPrefix(session_.form().text(QStringLiteral("dc_adr"))));
  if (address >= form::kLowestAddress && address <= form::kHighestAddress)
    return static_cast<int>(address);
  prompt_.message(QStringLiteral("Adresse ungültig"));
  return std::nullopt;
}

void Driving::butDrive() {
  const auto type = dcType();
  if (!type) return;
  if (*type == kFunctionUnit) {
    prompt_.message(QStringLiteral("Fahrregler für Funktionsteile nicht verfügbar!"));
    return;
  }
  if (const auto address = addressOnShow()) OpenCab(*address, false);
}

void Driving::butSwitch() {
  const auto type = dcType();
  if (!type) return;
  if (*type != kFunctionUnit) {
    prompt_.message(QStringLiteral("Schaltpult nur für Funktionsteile verfügbar!"));
    return;
  }
  const auto address = addressOnShow();
  if (!address) return;
  panels_.OpenPanel(*address, session_.form().text(QStringLiteral("st_sname")));
}

void Driving::OpenCab(int address, bool noRecord) {
  // Now: until the line is free, the user may go on to another record.
  const auto record = noRecord ? std::nullopt : std::optional(records_.onShow());
  if (cabs_.isOpen(address)) {
    cabs_.OpenCab(address, record);
    return;
  }
  whenFree(&cabs_, ++asked_, [this, address, record] { openNewCab(address, record); });
}

void Driving::openNewCab(int address, const std::optional<CabRecord>& record) {
  if (!link_.settings().station().cab.linkStaysOpen) {
    cabs_.OpenCab(address, record);
    return;
  }
  const QString failure = link_.initComm(true, false, false);
  if (!failure.isEmpty()) prompt_.message(failure);
  // A cab takes the session over; without one there is nobody to give it back.
  if (!failure.isEmpty() || !cabs_.OpenCab(address, record)) link_.FinishComm();
}

void Driving::runAlone(const void* owner, std::function<void()> job) {
  whenFree(owner, 0, std::move(job));
}

void Driving::whenFree(const void* owner, int what, std::function<void()> job) {
  line_.exchange(owner, what, [this, run = std::move(job)] {
    if (!closed_) run();
  });
}

QStringList Driving::openTitles() const {
  QStringList titles;
  for (int slot = 1; slot <= cabs_.cabCount(); ++slot) {
    if (const Cab* cab = cabs_.cabForms(slot)) titles << cab->caption();
  }
  for (int slot = 1; slot <= panels_.panelCount(); ++slot) {
    if (const Panel* panel = panels_.panelForms(slot)) titles << panel->caption();
  }
  return titles;
}

void Driving::closeAll() {
  closed_ = true;
  // The exchange in hand stands on the stack of this very act; it must not hold the end up.
  if (line_.isBusy()) link_.cancelRequested = true;
  cabs_.closeAll();
  panels_.closeAll();
}

}  // namespace lokari
