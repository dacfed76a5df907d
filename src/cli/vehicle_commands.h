// `vehicle read` and `vehicle write`: the decoder window's batch jobs on one vehicle of the
// database, without the window.
#pragma once

#include "cli/context.h"

namespace lokari {

class Call;

/// COLLECTION ADDRESS [--main] [--cv LIST]. Reads the CVs into the vehicle's current set and stores
/// it; progress goes to the messages. Then prints "CV⇥value⇥mark" for each CV of the job: mark 1
/// verified, 2 failed, 0 not reached. A CV in a bank is written "257 (2)". Without --cv the job is
/// all CVs that the description has on its pages. In LIST numbers and spans are separated by ",",
/// bank CVs are N:BANK, and 1 is the address.
ExitStatus vehicleRead(const Call& call, CliContext& context);

/// The same for writing the set's values, verified; what is stored are the marks. The address is
/// written only when LIST names it.
ExitStatus vehicleWrite(const Call& call, CliContext& context);

}  // namespace lokari
