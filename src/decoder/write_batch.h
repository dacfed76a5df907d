// `WriteComm`: writes all CVs that are marked from the working set into the decoder, each verified.
#pragma once

#include <functional>
#include <optional>

#include "decoder/batch_run.h"

namespace lokari {

class WriteBatch final : public BatchRun {
 public:
  /// `progOn`: on the programming track, else on the main track, where nothing is checked first.
  WriteBatch(DecoderBench& bench, bool progOn);

 protected:
  bool mayBegin() override;
  bool checks() override;
  bool consist() override;
  bool config() override;
  bool tablePoint(CvIndex cv) override;
  bool plain(CvIndex cv) override;
  bool configForced() const override { return forceConfig_; }
  void addRemarks() override;

 private:
  enum class Written { Done, Failed, Ended };

  /// Writes one CV and compares what comes back; Failed when it failed and the run goes on.
  /// `onFailure` runs as soon as the failure is known, before it is shown and waited for.
  Written write(CvIndex cv, int wanted, const std::function<void()>& onFailure);
  /// The mark, and what follows a CV that was written or survived.
  bool finish(CvIndex cv, Written outcome, int sent);
  void failAddress(CvIndex cv);
  CvDeed deed() const;

  bool findMainAddress();
  bool checkMaker();
  bool readConfig();
  bool writeAddress();
  bool writeShortAddress(int address, bool& failed);
  bool writeLongAddress(int address, bool& failed, bool& refused);
  bool compareAddress();

  /// What is known of the decoder's configuration when CV 29 is written.
  struct ConfigState {
    int config;        ///< as `config_`
    bool longWritten;  ///< as `longWritten_`
  };
  ConfigState configState() const { return {config_, longWritten_}; }
  /// The same as it will be behind the address that is about to be written.
  ConfigState expectedState() const;
  /// The byte of CV 29 for the decoder, from the working value.
  int configByte(const ConfigState& state) const;
  /// CV 29 goes out for the address alone: what nobody clicked is what this run has read.
  bool configFromDecoder() const;
  /// The same where this run has read nothing, and the working value is one that a failed read left
  /// behind.
  bool configUnknown() const;
  /// Asks before bits of CV 29 go out that nobody has seen or clicked; false ends the run.
  bool confirmConfig(const ConfigState& state);
  bool writeWorkingConfig();
  bool writeDecodersConfig();
  void tellUnknownConfig();
  /// Remembers that the configuration went out, and whether the decoder took it.
  void noteConfig(int sent, bool taken) { configSent_ = {sent, taken}; }

  bool longWritten_ = false;       ///< a long address was written in this run
  bool forceConfig_ = false;       ///< CV 29 must be written: the kind of address changed
  std::optional<int> configRead_;  ///< the decoder's configuration ahead of the writing
  struct ConfigSent {
    int value;
    bool taken;
  };
  std::optional<ConfigSent> configSent_;  ///< what went out last
  std::optional<int> configConfirmed_;    ///< what the user has agreed to
};

}  // namespace lokari
