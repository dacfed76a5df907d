// `RdComm`: reads all CVs that are marked into the working set.
#pragma once

#include "decoder/batch_run.h"

namespace lokari {

class ReadBatch final : public BatchRun {
 public:
  /// `progOn`: on the programming track, else on the main track.
  ReadBatch(DecoderBench& bench, bool progOn);

 protected:
  bool checks() override;
  bool consist() override;
  bool config() override;
  bool tablePoint(CvIndex cv) override;
  bool plain(CvIndex cv) override;
  void addRemarks() override;

 private:
  bool checkAddress();
  bool checkMaker();
  /// A CV that a check reads, marked or not; `known` unless the reading failed.
  void takeChecked(CvIndex cv, int value, bool known);
  void readSubVersion();
  void showConfig(int value);
  void showUnknownConfig();

  bool takenOver_ = false;  ///< another maker, with his first type
};

}  // namespace lokari
