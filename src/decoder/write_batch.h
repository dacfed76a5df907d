// `WriteComm`: writes all CVs that are marked from the working set into the decoder, each verified.
#pragma once

#include <functional>
#include <optional>

#include "decoder/address_job.h"
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
  /// Sends one write, and remembers that it went out. Gives what came back.
  int send(CvIndex cv, int number, int wanted);
  /// The mark, and what follows a CV that was written or survived.
  bool finish(CvIndex cv, Written outcome, int sent);
  void failAddress(CvIndex cv);
  CvDeed deed() const;
  /// Whether the station has a message that writes the CV.
  bool canSend(CvIndex cv) const;

  // Questions: write_questions.cpp.
  bool mayReachAnother();
  bool mayWriteDoubtful();
  /// A check could not be made; false ends the run.
  bool goOnUnchecked(const QString& text);

  bool findMainAddress();
  bool checkMaker();
  bool readConfig();
  bool writeAddress();
  bool writeShortAddress(int address);
  bool writeLongAddress(int address);
  bool refuseLongAddress();
  bool compareAddress();
  /// Reports the address, whose parts are known by now.
  void settleAddress();

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
  /// Writes the configuration ahead of the main loop, for the address. Gives what came back.
  int sendConfig(int wanted);
  /// Remembers that the configuration went out, and whether the decoder took it.
  void noteConfig(int sent, bool taken);
  /// Reports a configuration that went out and that the main loop did not come to.
  void settleConfig();
  /// The mark tells of the working value, which need not be what the decoder took.
  void markDecodersConfig(int taken);
  /// What the station refused behind the run: every write that had no answer of its own.
  void takeLateRefusal(const QString& text);

  AddressJob addressJob_;
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
