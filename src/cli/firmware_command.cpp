#include "cli/firmware_command.h"

#include "cli/arguments.h"
#include "cli/command.h"
#include "cli/console.h"
#include "station/firmware_file.h"
#include "station/send_firm.h"

namespace lokari {
namespace {

FirmEnd send(const Firmware& firmware, CliContext& context) {
  StationLink& link = context.link;
  link.commJob = CommJob::SendFirm;
  context.interrupt.action = [&link] { link.cancelRequested = true; };
  const FirmEnd end = FirmTransfer(link, *link.view(), firmware).SendFirm();
  context.interrupt.action = nullptr;
  link.commJob = CommJob::None;
  return end;
}

}  // namespace

ExitStatus firmware(const QStringList& arguments, CliContext& context) {
  const QStringList names = Arguments(arguments).takeRest();
  if (names.size() != 1) throw WrongCall(QStringLiteral("Es fehlt der Name der Firmware-Datei!"));
  const QString refusal = firmwareRefusal(context.settings);
  if (!refusal.isEmpty()) throw WrongCall(refusal);

  const auto image = confirmedFirmware(names.front(), context.prompt, [](bool) {});
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
