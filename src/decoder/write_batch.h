// `WriteComm`: writes all CVs that are marked from the working set into the decoder, each verified.
#pragma once

#include "decoder/batch_run.h"

namespace lokari {

class WriteBatch final : public BatchRun {
 public:
  /// `progOn`: on the programming track, else on the main track, where nothing is checked first.
  WriteBatch(DecoderBench& bench, bool progOn);

 protected:
  bool checks() override;
  bool consist() override;
  bool config() override;
  bool tablePoint(CvIndex cv) override;
  bool plain(CvIndex cv) override;
  bool configForced() const override { return forceConfig_; }

 private:
  enum class Written { Verified, Failed, Ended };

  /// Writes and verifies one CV; Failed when it failed and the run goes on. `onFailure` runs as
  /// soon as the failure is known, before it is shown and waited for.
  template <typename OnFailure>
  Written write(int cv, int wanted, OnFailure onFailure);
  /// The mark, and what follows a CV that was written or survived.
  bool finish(CvIndex cv, Written outcome);

  bool findMainAddress();
  bool checkMaker();
  bool readConfig();
  bool writeAddress();
  bool writeShortAddress(int address, bool& failed);
  bool writeLongAddress(int address, bool& failed, bool& refused);
  bool compareAddress();

  bool longWritten_ = false;  ///< a long address was written in this run
  bool forceConfig_ = false;  ///< CV 29 must be written: the kind of address changed
};

}  // namespace lokari
