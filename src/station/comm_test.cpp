#include "station/comm_test.h"

#include <memory>

#include "base/clock.h"
#include "base/prompt.h"
#include "link/comm_view.h"
#include "link/link_error.h"
#include "link/station_link.h"
#include "station/inquiry_table.h"
#include "station/station_inquiry.h"
#include "station/where_to_look.h"

namespace lokari {
namespace {

/// One run.
class CommTest {
 public:
  CommTest(StationLink& link, Settings& settings) : link_(link), settings_(settings) {}

  CommTestResult run() {
    status(QStringLiteral("Beginne Kommunikation ..."));
    caption(QStringLiteral("Abbruch"));
    link_.clock().pump();
    if (!open()) return result_;
    try {
      inquire();
    } catch (const LinkError& error) {
      link_.prompt().beep();
      result_.outcome = CommTestResult::Outcome::NoAnswer;
      result_.lines = {error.message(), whereToLook(settings_)};
    }
    close();
    return result_;
  }

 private:
  bool open() {
    const QString failure = link_.openForJob(false);
    if (failure.isEmpty()) return true;
    link_.prompt().beep();
    result_.lines << failure;
    if (!link_.openFailureReason().isEmpty()) result_.lines << link_.openFailureReason();
    result_.lines << whereToLook(settings_);
    link_.cancelRequested = false;
    showResult();
    caption(QStringLiteral("OK"));
    return false;
  }

  void inquire() {
    inquiry_ = makeInquiry(settings_.station().family, link_, settings_);
    StationInquiry* const inquiry = inquiry_.get();
    inquiry->ask();
    if (!link_.cancelRequested) {
      status(QStringLiteral("Warten auf Anwort ..."));
      link_.WaitForData(inquiry->want());
    }
    if (link_.getBufferCount() == 0 && !link_.cancelRequested) {
      inquiry->askAgain();
      link_.WaitForData(inquiry->want());
    }
    heard_ = link_.getBufferCount() != 0;
    StationReport report;
    if (link_.getBufferCount() >= inquiry->want()) {
      report = inquiry->evaluate();
    } else if (heard_ && !link_.cancelRequested) {
      report = inquiry->evaluateShort();
    }
    if (link_.cancelRequested) {
      result_.cancelled = true;
      link_.prompt().beep();
      status(QStringLiteral("Beende Kommunikation ..."));
    }
    take(report);
  }

  void take(const StationReport& report) {
    if (report.lines.isEmpty()) {
      result_.outcome = CommTestResult::Outcome::NoAnswer;
      result_.lines = {QStringLiteral("Keine Antwort vom Basisgerät!")};
      // Whoever cancelled has not waited for it.
      if (!result_.cancelled) {
        result_.lines << (heard_ ? whatAnswersOtherwise(settings_) : whereToLook(settings_));
      }
      return;
    }
    result_.outcome = report.understood ? CommTestResult::Outcome::Answered
                                        : CommTestResult::Outcome::NotUnderstood;
    result_.lines = report.lines;
    result_.wantsMakerForm = report.wantsMakerForm && !settings_.makerForm;
    result_.connected = report.connected;
  }

  /// After an answer the result is there while the farewell runs. Without one the user need not
  /// wait for it: a station that is not there lets every step of it time out.
  void close() {
    const bool answered = result_.outcome != CommTestResult::Outcome::NoAnswer;
    if (!result_.cancelled) showResult();
    if (!answered && !result_.cancelled) {
      link_.cancelRequested = false;
      caption(QStringLiteral("OK"));
    }
    link_.endcomm(false, false);
    if (answered && !settings_.makerForm && inquiry_->wantsMakerFormByItsFarewell()) {
      result_.wantsMakerForm = true;
    }
    if (result_.cancelled) showResult();
    link_.cancelRequested = false;
    caption(QStringLiteral("OK"));
  }

  void status(const QString& text) {
    if (link_.view() != nullptr) link_.view()->setStatus(text);
  }
  void caption(const QString& text) {
    if (link_.view() != nullptr) link_.view()->setCancelCaption(text);
  }
  void showResult() { status(result_.lines.join(QStringLiteral("\r\n"))); }

  StationLink& link_;
  Settings& settings_;
  CommTestResult result_;
  std::unique_ptr<StationInquiry> inquiry_;
  bool heard_ = false;  // something came, whatever it was
};

}  // namespace

CommTestResult TestComm(StationLink& link, Settings& settings) {
  return CommTest(link, settings).run();
}

}  // namespace lokari
