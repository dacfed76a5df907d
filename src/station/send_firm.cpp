#include "station/send_firm.h"

#include "base/prompt.h"
#include "link/link_error.h"
#include "link/serial_protocol.h"
#include "link/station_link.h"
#include "station/where_to_look.h"

namespace lokari {
namespace {

/// The whole answer to the download command, and the least that is looked at.
constexpr qint32 kAnswerLength = 11;
constexpr qint32 kShortestAnswer = 7;
constexpr int kRounds = 3;
/// Most that a round on the handle reads.
constexpr int kRoundBytes = 16;

constexpr int kSettleMs = 400;
constexpr int kRoundMs = 500;
constexpr int kBeforeLeavingMs = 500;
constexpr int kAfterLeavingMs = 55;
constexpr int kLeavingDots = 3;

/// Below the closing text: nobody knows whether the station has these blocks.
QString unansweredLine(FirmEnd end, int count) {
  if (count == 0) return {};
  const QString blocks = count == 1 ? QStringLiteral("\n1 Block blieb ohne Antwort")
                                    : QStringLiteral("\n%1 Blöcke blieben ohne Antwort").arg(count);
  return blocks + (end == FirmEnd::Unconfirmed ? QStringLiteral(": bitte noch einmal einspielen.")
                                               : QStringLiteral("."));
}

}  // namespace

FirmTransfer::FirmTransfer(StationLink& link, CommView& view, const Firmware& firmware)
    : link_(link),
      view_(view),
      firmware_(firmware),
      port_(link.serial(), sessionLine(link.settings())) {}

FirmEnd FirmTransfer::SendFirm() {
  status(QStringLiteral("Beginne Kommunikation ..."));
  view_.setCancelCaption(QStringLiteral("Abbruch"));
  FirmEnd end = FirmEnd::Failed;
  try {
    end = transfer();
  } catch (const LinkError& error) {
    finishSession();
    view_.setDetail({});
    end = close(FirmEnd::Failed, error.message() + u'\n' + whereToLook(link_.settings()));
  }
  leaveBootLoader();
  returnPort();
  link_.cancelRequested = false;
  view_.setCancelCaption(QStringLiteral("OK"));
  return end;
}

FirmEnd FirmTransfer::transfer() {
  const QString failure = link_.openForJob(false);
  if (!failure.isEmpty()) {
    link_.prompt().beep();
    QStringList lines{failure, link_.openFailureReason(), whereToLook(link_.settings())};
    lines.removeAll(QString());
    status(lines.join(u'\n'));
    return FirmEnd::NoSession;
  }
  inSession_ = true;
  const QString cancelText = QStringLiteral("Übertragung der Firmware abgebrochen!");
  // The greeting may have been cancelled.
  const bool ready = !cancelled() && askInSession();
  finishSession();
  if (cancelled()) return close(FirmEnd::Cancelled, cancelText);
  link_.DelayMsec(kSettleMs);

  port_.OpenComm();
  port_.EscapeCommFunction(CommEscape::ClearRts);
  port_.EscapeCommFunction(CommEscape::ClearDtr);
  port_.GetCommError();
  if (!ready && !askOnHandle()) {
    if (cancelled()) return close(FirmEnd::Cancelled, cancelText);
    return close(FirmEnd::NoAnswer, QStringLiteral("Keine Antwort vom Basisgerät!"));
  }
  status(QStringLiteral("Übertragung läuft...\nMX1 und PC jetzt nicht abschalten!"));
  link_.DelayMsec(kSettleMs);
  port_.FlushComm(CommQueue::Transmit);
  port_.FlushComm(CommQueue::Receive);
  view_.setProgress(0);
  // The first block begins to replace the old firmware: the last moment to leave it as it is.
  if (cancelled()) return close(FirmEnd::Cancelled, cancelText);

  FirmBlocks blocks(link_, port_, view_, firmware_);
  const FirmEnd end = blocks.send();
  view_.setDetail({});
  const QString more = unansweredLine(end, blocks.unanswered());
  if (end == FirmEnd::Cancelled) return close(end, cancelText + more);
  if (end == FirmEnd::Failed) {
    return close(
        end, QStringLiteral("Übertragungsfehler, Einspielen der Firmware nicht möglich!") + more);
  }
  view_.setProgress(100);
  return close(end, QStringLiteral("Übertragung der Firmware abgeschlossen!") + more);
}

/// True when the boot loader waits. The user may have cancelled meanwhile.
bool FirmTransfer::askInSession() {
  SerialLine& line = link_.serial();
  line.read();
  asked_ = true;
  line.write(kDownloadCommand);
  status(QStringLiteral("Warten auf Basisgerät ..."));
  link_.WaitForData(kAnswerLength);
  // Somebody who has cancelled does not want the station to go into its boot loader any more.
  if (line.inBufferCount() < kShortestAnswer && !cancelled()) {
    line.read();
    link_.DelayMsec(kSettleMs);
    if (cancelled()) return false;
    line.write(kDownloadCommand);
    link_.WaitForData(kAnswerLength);
  }
  const bool ready = line.read().endsWith(kBootLoaderReady);
  if (ready) line.read();
  return ready;
}

/// The second way in, for a station that the session could not make understand. True when the
/// boot loader waits; a cancel ends the asking.
bool FirmTransfer::askOnHandle() {
  QByteArray reply;
  for (int round = 0; round < kRounds && !reply.contains(kBootLoaderReady); ++round) {
    if (cancelled()) return false;
    port_.WriteComm(kDownloadCommand);
    port_.GetCommError();
    // What is there answers the round before: reading does not wait.
    reply += port_.ReadComm(kRoundBytes);
    port_.FlushComm(CommQueue::Transmit);
    port_.FlushComm(CommQueue::Receive);
    link_.DelayMsec(kRoundMs);
  }
  return reply.contains(kBootLoaderReady);
}

bool FirmTransfer::cancelled() const {
  return link_.cancelRequested;
}

FirmEnd FirmTransfer::close(FirmEnd end, const QString& text) {
  view_.setClosingText(text);
  link_.prompt().beep();
  return end;
}

void FirmTransfer::finishSession() {
  if (inSession_) link_.FinishComm();
  inSession_ = false;
}

void FirmTransfer::leaveBootLoader() {
  if (!asked_) return;
  try {
    // A job that ended in the session, or with a device that is back, has no handle.
    if (!port_.isOpen()) port_.OpenComm();
    link_.DelayMsec(kBeforeLeavingMs);
    for (int i = 0; i < kLeavingDots; ++i) port_.WriteComm(kLeaveBootLoader);
    link_.DelayMsec(kAfterLeavingMs);
  } catch (const LinkError&) {
    // The line is gone, and with it the one who would hear the dots.
  }
  port_.CloseComm();
}

void FirmTransfer::returnPort() {
  if (link_.commUseCount == 0 || link_.serial().isOpen()) return;
  if (link_.openForJob(false).isEmpty()) link_.FinishComm();
}

}  // namespace lokari
