#include "cli/cli_session.h"

#include "cli/console.h"

namespace lokari {

CliSession::CliSession(CliContext& context, CommJob job, bool progOn)
    : context_(context), progOn_(progOn) {
  // Somebody who has given up before it began wants no station to be woken.
  if (context.interrupt.raised) return;
  StationLink& link = context.link;
  link.commJob = job;
  const QString failure = link.openForJob(progOn);
  open_ = failure.isEmpty();
  if (open_) return;
  context.console.message(failure);
  if (!link.openFailureReason().isEmpty()) context.console.message(link.openFailureReason());
}

CliSession::~CliSession() {
  close();
  context_.link.commJob = CommJob::None;
}

ExitStatus CliSession::failure() const {
  return context_.interrupt.raised ? ExitStatus::Failed : ExitStatus::WrongCall;
}

QString CliSession::close() {
  if (!open_) return {};
  open_ = false;
  context_.link.endcomm(true, progOn_);
  return context_.link.lateRefusal;
}

}  // namespace lokari
