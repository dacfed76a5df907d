// Programming on the main from the cab: the list of CVs, the one on show, and its steps. It decides
// what is to be written; the cab writes it.
#pragma once

#include <QStringList>

#include <optional>

#include "base/station_kind.h"
#include "cab/main_cvs.h"
#include "cab/vehicle_records.h"

namespace lokari {

class MainProgramming {
 public:
  /// One step of `udCV`: what goes to the decoder.
  struct Step {
    int number;
    int value;
  };

  /// Takes the record's CV set and the description of its decoder, "<basePath>/<maker>/<the first 8
  /// characters of the type>.dec".
  void load(const CabRecord& record, const QString& basePath, const StationKindRow& kind);

  /// `cbCV`, `txtCV` and `udCV` can be used.
  bool isAvailable() const { return available_; }
  /// Entries of `cbCV`.
  QStringList names() const;
  /// Text of `cbCV`, "CV 3: Beschleunigung"; of `txtCV`; and its tool tip. Empty without an entry.
  QString shownName() const;
  QString shownValue() const;
  QString shownHint() const;

  /// A click in `cbCV`: shows the first entry of that name. Nothing for an unknown one.
  void show(const QString& name);
  /// Takes the value on show one up or down; nothing at 255 and 0.
  std::optional<Step> stepUp() { return step(+1); }
  std::optional<Step> stepDown() { return step(-1); }

  /// Shows that value of a CV.
  void take(const Step& step);
  /// That value of a CV may be in the decoder.
  void settle(const Step& step);
  /// The value of CV `number` without the steps that did not go out.
  int settled(int number) const { return static_cast<quint8>(settled_[number - 1]); }

  /// `progMode` of the description.
  int progMode() const { return list_.progMode; }
  /// 1 to 5.
  int cvSet() const { return cvSet_; }

 private:
  std::optional<Step> step(int by);
  const MainCV* shown() const;
  int valueOf(const MainCV& cv) const;

  MainCVs list_;
  QByteArray cvValues_;
  QByteArray settled_;  // without the steps that are still to go out
  int cvSet_ = 1;
  int cvIndex_ = 0;  // place of the entry on show
  bool available_ = false;
};

}  // namespace lokari
