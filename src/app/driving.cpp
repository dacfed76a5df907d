#include "app/driving.h"

#include <cmath>

#include "base/numbers.h"
#include "base/prompt.h"
#include "cab/cab_table.h"
#include "cab/leaving.h"
#include "db/database_session.h"
#include "db/form_names.h"
#include "link/station_link.h"
#include "link/switch_on_question.h"
#include "link/track_stop.h"

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
      stop_(line_, makeCabProtocol),
      records_(&session, prompt),
      cabs_({line_, prompt, records_, basePath, makeCabProtocol}, std::move(windows.makeCab)),
      panels_({line_, prompt, makePanelProtocol}, std::move(windows.makePanel)),
      makeWait_(std::move(windows.makeWait)) {
  link_.trackStop().send = [this] { return stop_.send(); };
}

Driving::~Driving() {
  link_.trackStop().send = nullptr;
}

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
  const QString name = session_.form().text(QStringLiteral("st_sname"));
  if (panels_.isOpen(*address) || !hasCabs()) {
    panels_.OpenPanel(*address, name);
    return;
  }
  openNew(StationUse::Panel, *address,
          [this, number = *address, name](const Opening&) -> SlotUnit* {
            return panels_.OpenPanel(number, name) ? panels_.panelFor(number) : nullptr;
          });
}

void Driving::OpenCab(int address, bool noRecord) {
  // Now: until the line is free, the user may go on to another record.
  const auto record = noRecord ? std::nullopt : std::optional(records_.onShow());
  if (cabs_.isOpen(address) || !hasCabs()) {
    cabs_.OpenCab(address, record);
    return;
  }
  openNew(StationUse::Cab, address, [this, address, record](const Opening& opening) {
    return openNewCab(address, record, opening);
  });
}

bool Driving::hasCabs() const {
  return link_.settings().station().cab.available();
}

void Driving::openNew(StationUse use, int address,
                      const std::function<SlotUnit*(const Opening&)>& open) {
  auto& waiting = waiting_[{use, address}];
  if (const auto asked = waiting.lock(); asked && !asked->isGivenUp()) return;
  const QString what =
      use == StationUse::Cab ? QStringLiteral("Fahrpult") : QStringLiteral("Schaltpult");
  const auto opening = std::make_shared<Opening>(link_);
  waiting = opening;
  opening->show(makeWait_, QStringLiteral("%1 für Adresse %2: Warte auf die Digitalzentrale ...")
                               .arg(what)
                               .arg(address));
  whenFree(this, ++asked_, [this, use, address, open, opening] {
    // The same may have been asked for anew since.
    if (opening->isGivenUp()) return;
    waiting_.erase({use, address});
    auto leave = mayOpen(use);
    if (!leave) return opening->end();
    opening->leave = std::move(*leave);
    opening->begin();
    SlotUnit* unit = open(*opening);
    if (unit == nullptr) return opening->end();
    opening->follow(*unit);
  });
}

/// The user takes his time: the cabs that are open go on meanwhile.
std::optional<SwitchOnLeave> Driving::mayOpen(StationUse use) {
  const auto aside = link_.stepAside();
  return askToSwitchOn(link_, use);
}

SlotUnit* Driving::openNewCab(int address, const std::optional<CabRecord>& record,
                              const Opening& opening) {
  if (!link_.settings().station().cab.linkStaysOpen) {
    return cabs_.OpenCab(address, record) ? cabs_.cabFor(address) : nullptr;
  }
  const QString failure = link_.initComm(true, false, false);
  if (failure.isEmpty() && !opening.isGivenUp() && cabs_.OpenCab(address, record)) {
    return cabs_.cabFor(address);
  }
  // A cab takes the session over; without one there is nobody to give it back.
  if (!failure.isEmpty() && !opening.isGivenUp()) {
    const auto aside = link_.stepAside();
    prompt_.message(failure, Icon::Warning, link_.openFailureReason());
  }
  link_.FinishComm();
  return nullptr;
}

void Driving::runAlone(const void* owner, std::function<void()> job) {
  whenFree(owner, 0, std::move(job));
}

void Driving::whenFree(const void* owner, int what, std::function<void()> job) {
  line_.alone(owner, what, [this, run = std::move(job)] {
    if (!closed_) run();
  });
}

void Driving::openBeside(const void* owner, std::function<void()> open) {
  const auto [waiting, isNew] = beside_.try_emplace(owner);
  waiting->second.open = std::move(open);
  if (isNew) openWhenIdle(owner);
}

void Driving::openWhenIdle(const void* owner) {
  if (!line_.isBusy()) {
    // The alarm that calls this goes, and what it holds with it.
    const std::function<void()> run = std::move(beside_[owner].open);
    beside_.erase(owner);
    if (!closed_) run();
    return;
  }
  // The exchange in hand stands on the stack; the window opens from the event loop behind it.
  whenFree(owner, 0, [this, owner] {
    beside_[owner].retry = link_.clock().after(0, [this, owner] { openWhenIdle(owner); });
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

bool Driving::settleMoving(std::function<void()> settled) {
  // Asked already, and the stops are on their way.
  if (beside_.contains(this)) return false;
  QStringList titles;
  for (int slot = 1; slot <= cabs_.cabCount(); ++slot) {
    const Cab* cab = cabs_.cabForms(slot);
    if (cab != nullptr && cab->isMoving()) titles << cab->caption();
  }
  if (titles.isEmpty()) return true;
  switch (askHowToLeave(prompt_, titles)) {
    case Leaving::LetRun:
      return true;
    case Leaving::StopThese:
      return standStill(std::move(settled));
    case Leaving::SwitchOff:
      break;
  }
  if (link_.trackStop().pressAndAwait()) return true;
  // The answer belongs to the exchange that stands on this very stack.
  if (line_.isBusy()) {
    openBeside(this, [this, then = std::move(settled)] {
      if (link_.trackStop().isHeld()) then();
    });
  }
  return false;
}

bool Driving::standStill(std::function<void()> settled) {
  const auto left = std::make_shared<int>(0);
  // Each slot anew: while one stops, the user may close another.
  for (int slot = 1; slot <= cabs_.cabCount(); ++slot) {
    Cab* cab = cabs_.cabForms(slot);
    if (cab == nullptr || !cab->isMoving()) continue;
    ++*left;
    cab->standStill([left] { --*left; });
  }
  if (!line_.isBusy()) return *left == 0;
  // They wait for the exchange that stands on this very stack.
  openBeside(this, [left, then = std::move(settled)] {
    if (*left == 0) then();
  });
  return false;
}

void Driving::closeAll() {
  closed_ = true;
  // The exchange in hand stands on the stack of this very act; neither it nor what waits behind it
  // may hold the end up.
  if (line_.isBusy()) {
    link_.cancelRequested = true;
    link_.cancelStays = true;
  }
  cabs_.closeAll();
  panels_.closeAll();
}

}  // namespace lokari
