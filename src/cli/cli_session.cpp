#include "cli/cli_session.h"

#include "cli/console.h"

namespace lokari {

CliSession::CliSession(CliContext& context, CommJob job, bool progOn)
    : context_(context), progOn_(progOn) {
  StationLink& link = context.link;
  link.commJob = job;
  // Opening may wait for the station, too.
  context.interrupt.action = [&link] { link.cancelRequested = true; };
  const QString failure = link.initComm(true, true, progOn);
  if (!failure.isEmpty()) {
    context.interrupt.action = nullptr;
    context.console.message(failure);
    context.console.message(link.openFailureReason());
    link.FinishComm();
    return;
  }
  open_ = true;
  if (context.interrupt.raised) link.cancelRequested = true;
}

CliSession::~CliSession() {
  context_.interrupt.action = nullptr;
  if (open_) context_.link.endcomm(true, progOn_);
  context_.link.commJob = CommJob::None;
}

}  // namespace lokari
