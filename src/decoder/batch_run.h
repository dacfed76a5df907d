// What a batch read and a batch write have in common: the session, the marks that choose the CVs,
// the failures, the banks, the checks, the ends.
//
// A step that can end the run gives false, or no value, when it did. A CV that fails while
// `continueOnError` is on does not end the run: the access gives 0 in its place with `lastCvFailed`
// set, and the run goes on behind it.
#pragma once

#include <QString>

#include <memory>
#include <optional>
#include <set>
#include <vector>

#include "base/settings.h"
#include "decoder/batch_report.h"
#include "decoder/cv_numbers.h"
#include "decoder/description.h"
#include "decoder/fixed_fields.h"
#include "link/comm_view.h"

namespace lokari {

class DecoderBench;
class StationLink;

class BatchRun {
 public:
  BatchRun(const BatchRun&) = delete;
  BatchRun& operator=(const BatchRun&) = delete;
  virtual ~BatchRun();

  /// The whole job. A port that vanishes ends it like a failure, with its message in the status
  /// line; the session is closed on every road.
  void run();

 protected:
  /// How a run ended.
  enum class End {
    Orderly,  ///< the dialog closes
    Failed,   ///< the failure's text stays in the status line, the dialog open
  };

  /// In what reading and writing differ.
  struct Direction {
    bool write;
    const char16_t* verb;         ///< of the status texts
    const char16_t* nothingToDo;  ///< message when nothing is marked
    const char16_t* takingOver;   ///< below the question about another maker: what OK does
    int addressSteps;             ///< what a marked address counts
    const char16_t* leavesOut;    ///< message when ticked CVs are left out
  };

  BatchRun(DecoderBench& bench, bool progOn, const Direction& direction);

  // ---- The steps of a job ---------------------------------------------------------------------

  /// What is asked ahead of the session; false sends nothing.
  virtual bool mayBegin() { return true; }
  /// From the open session to the main loop.
  virtual bool checks() = 0;
  /// The CVs with a handling of their own, and all the others.
  virtual bool consist() = 0;
  virtual bool config() = 0;
  virtual bool tablePoint(CvIndex cv) = 0;
  virtual bool plain(CvIndex cv) = 0;
  /// CV 29 is handled whether marked or not.
  virtual bool configForced() const { return false; }

  // ---- Access ---------------------------------------------------------------------------------

  /// What the station gives for a CV of the decoder, or a code. Sends nothing once the run is
  /// cancelled: a message goes out ahead of its wait.
  int readCv(int number);
  int writeCv(int number, int value);
  /// Reads a CV; 0 with `lastCvFailed` when that failed and the run goes on.
  std::optional<int> read(CvIndex cv);
  /// The decoder's configuration, for a check.
  std::optional<int> readConfigCv();
  /// After a failed access with that code: true when the run goes on.
  bool survive(CvIndex cv, int code);
  /// After a write that gave another value back, or failed.
  bool surviveWrite(CvIndex cv, int wanted, int result);
  /// In place of a write that the station has no message for.
  bool surviveUnsendable(CvIndex cv);

  /// Ends the run. For use as a step's answer.
  bool endAs(End end);

  enum class Bank { Selected, Missed, Ended };
  /// Selects the bank of a CV. When that fails and the run goes on it is Missed: any access would
  /// then meet the same number in another bank.
  Bank selectBank(CvIndex cv);

  // ---- Checks that both make ------------------------------------------------------------------

  /// The address in the decoder; 0 when an access failed and the run went on, since then nothing
  /// more is read. No value when the run ended.
  std::optional<int> readAddress();
  /// Puts the failed mark on every CV that colours the address.
  void markAddressFailed();
  /// Marks the address and asks about the other one in the decoder.
  bool acceptAddress(int found);
  bool acceptFunctionDecoder();
  enum class MakerAnswer { Same, TakeOver, Cancel };
  MakerAnswer askMaker(int number);
  void takeOverMaker(int number);

  // ---- Showing --------------------------------------------------------------------------------

  void status(const QString& text);
  /// Until the next status.
  void tellBelow(const QString& text);
  void statusVerb(const QString& what);
  void plainStatus(CvIndex cv);
  void startProgress();
  void countDone();
  /// What read() gave into the working set, with its mark: the decoder's value, or what stands in
  /// for it after a failure.
  void takeRead(CvIndex cv, int value);
  void report(CvIndex cv, CvDeed deed, int value);
  void remark(const QString& sentence);
  void refillAddress();
  /// Puts a value into the control of a CV and through it into the working set.
  void showInControl(CvIndex cv, int value);

  StationLink& link() const;
  Settings& settings() const;
  const DecoderDescription& description() const;
  /// A number of the decoder, not of the working set: where registers go out the fifth is CV 29.
  int configCv() const;
  QString configText() const { return QStringLiteral("CV %1").arg(configCv()); }
  bool progOn() const { return progOn_; }
  bool addressMarked() const;
  bool cancelled() const;
  bool marked(CvIndex cv) const;
  /// Planned and not handled all the same, as the user has answered.
  void spare(const std::vector<CvIndex>& cvs) { spared_.insert(cvs.begin(), cvs.end()); }
  bool anythingPlanned() const { return countPlanned() > 0; }

  DecoderBench& bench_;
  int address_ = 0;  ///< the number in `dc_adr`, or 0
  int config_ = -1;  ///< `config`: what the decoder has in configCv(), -1 until it is known
  int done_ = 0;     ///< `readsDone`, `writesDone`
  QString inHand_;   ///< the CV of the last access, for the line below a failure

  /// What is known and said once, behind the farewell of a run that came as far as the station.
  virtual void addRemarks() {}

 private:
  int countPlanned() const;
  bool mayRun();
  void runSession();
  bool mainLoop();
  bool step(CvIndex cv);
  void close();
  QString makerName(int number) const;
  /// A failure that met a CV, or the selection of its bank.
  struct Failure {
    CvIndex cv;
    int code;
    QString text;
    bool ofBank = false;
    bool ofWrite = false;
  };
  static QString failedWriteText(int wanted, int result);
  bool surviveFailure(const Failure& failure);
  void markFailed(const Failure& failure);

  const bool progOn_;
  const Direction direction_;
  std::unique_ptr<CommView> noView_;
  CommView* view_;
  End end_ = End::Orderly;
  int total_ = 0;     // `readTotal`, `writeTotal`
  int lastBank_ = 0;  // the bank selected last
  std::set<CvIndex> spared_;
  bool belowStatus_ = false;
};

}  // namespace lokari
