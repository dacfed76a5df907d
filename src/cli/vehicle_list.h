// `vehicles`: the vehicles of the database, one a line.
#pragma once

#include "cli/context.h"

namespace lokari {

class Call;

/// Prints "DC_COLL⇥DC_ADR⇥ST_SNAME⇥FZ_LNAME⇥FZ_FTYPE⇥DC_DECODER" for each vehicle, in the default
/// order; with --csv separated by commas, below a line of the columns' names. --where takes a
/// condition in the query language. A condition that is not understood is a wrong call.
ExitStatus vehicles(const Call& call, CliContext& context);

}  // namespace lokari
