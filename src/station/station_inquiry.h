// What the communication test asks a station and how it reads the answer: the steps that a protocol
// family fills in. comm_test.h has the frame that calls them.
//
//   ask()                     the query is out, sets want()
//   wait for want()
//   nothing at all came: askAgain(), wait
//   evaluate()                takes the answer, may ask for more, gives the lines
//   less than want() came: evaluateShort() instead
#pragma once

#include <QStringList>

#include <optional>

#include "station/station_choice.h"

namespace lokari {

class StationLink;
struct Settings;

/// What a station's answers say.
struct StationReport {
  QStringList lines = {};  ///< one per fact, for the user; empty when nothing could be read
  bool understood = true;  ///< false: something answered, but not as this station does
  /// The answer shows a station that wants its messages as its maker's documents have them.
  bool wantsMakerForm = false;
  /// The interface that is really connected, where the answer tells it.
  std::optional<StationChoice> connected = {};
};

/// Serves one run. Steps may throw LinkError.
class StationInquiry {
 public:
  /// Both must outlive the inquiry; `settings` are those of the link.
  StationInquiry(StationLink& link, Settings& settings) : link_(link), settings_(settings) {}
  virtual ~StationInquiry() = default;
  StationInquiry(const StationInquiry&) = delete;
  StationInquiry& operator=(const StationInquiry&) = delete;

  virtual void ask() = 0;
  virtual void askAgain() { ask(); }
  /// Called with at least want() waiting.
  virtual StationReport evaluate() = 0;
  /// Called with something waiting, but less than want(): what of it can be told all the same.
  virtual StationReport evaluateShort() { return {}; }

  /// Asked behind the farewell of a session that got a report: whether what the station has said
  /// since shows what StationReport::wantsMakerForm does.
  virtual bool wantsMakerFormByItsFarewell() { return false; }

  /// What the frame waits for: a byte count, or a CAN identifier.
  qint32 want() const { return want_; }

 protected:
  StationLink& link() const { return link_; }
  Settings& settings() const { return settings_; }
  void setWant(qint32 want) { want_ = want; }

 private:
  StationLink& link_;
  Settings& settings_;
  qint32 want_ = 0;
};

}  // namespace lokari
