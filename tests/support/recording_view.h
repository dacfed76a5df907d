// The controls of the progress dialog, recorded.
#pragma once

#include <QList>
#include <QStringList>

#include "link/comm_view.h"

namespace lokari::test {

class RecordingView final : public CommView {
 public:
  void setStatus(const QString& text) override { statuses << text; }
  void setDetail(const QString& text) override { details << text; }
  void setProgress(double percent) override { percents << percent; }
  void resetProgress() override { percents << 0; }
  void setProgressEnabled(bool enabled) override { progressEnabled = enabled; }
  void setCancelCaption(const QString& caption) override { captions << caption; }
  void setFarewell(bool running) override { farewell = running; }
  void hide() override { ++hides; }

  QStringList statuses;    ///< every text of `lblCommStatus`
  QStringList details;     ///< every text of `lblCommDetail`
  QList<double> percents;  ///< every progress shown; 0 also for a reset
  QStringList captions;    ///< every caption of `cmdCancel`
  bool progressEnabled = false;
  bool farewell = false;  ///< the session is saying goodbye
  int hides = 0;
};

}  // namespace lokari::test
