#include "cli/firmware_command.h"

#include "cli/command.h"
#include "cli/console.h"
#include "station/firmware_file.h"
#include "station/send_firm.h"

namespace lokari {
namespace {

FirmEnd send(const Firmware& firmware, CliContext& context) {
  StationLink& link = context.link;
  link.commJob = CommJob::SendFirm;
  const FirmEnd end = FirmTransfer(link, *link.view(), firmware).SendFirm();
  link.commJob = CommJob::None;
  return end;
}

}  // namespace

ExitStatus firmware(const Call& call, CliContext& context) {
  const QString refusal = firmwareRefusal(context.settings);
  if (!refusal.isEmpty()) throw WrongCall(refusal);

  const auto image =
      confirmedFirmware(call.text(u"DATEI").value_or(QString()), context.prompt, [](bool) {});
  if (!image) return ExitStatus::Failed;
  switch (send(*image, context)) {
    case FirmEnd::Complete:
      return ExitStatus::Done;
    case FirmEnd::NoSession:
      return ExitStatus::WrongCall;
    case FirmEnd::Unconfirmed:
    case FirmEnd::NoAnswer:
    case FirmEnd::Failed:
    case FirmEnd::Cancelled:
      break;
  }
  return ExitStatus::Failed;
}

}  // namespace lokari
