// Long work without the station, shown by the controls of `dlg_comm`.
#pragma once

#include <QString>

#include <optional>

#include "base/clock.h"
#include "base/progress.h"

namespace lokari {

class CommView;
class StationLink;

/// A work may tell of every one of many thousand rows: what it says is shown a few times a second,
/// the rest replaced by newer words. Its last words are always shown.
class CommProgress final : public Progress {
 public:
  /// The link gives the clock and the flag of `cmdCancel`. Both must outlive the progress.
  CommProgress(StationLink& link, CommView& view) : link_(link), view_(view) {}

  void setStatus(const QString& text) override;
  void setPercent(double percent) override;
  bool cancelled() override;

  /// Shows the last words and percent, if they are not on show.
  void showLast();
  /// Whether the work said something after the user had asked it to stop: its result.
  bool hasSpokenSinceCancel() const { return spokenSinceCancel_; }
  const QString& status() const { return status_; }

 private:
  void showIfDue();

  StationLink& link_;
  CommView& view_;
  QString status_;
  double percent_ = 0;
  bool statusNew_ = false;
  bool percentNew_ = false;
  bool cancelled_ = false;
  bool spokenSinceCancel_ = false;
  std::optional<Millis> shownAt_;
};

}  // namespace lokari
