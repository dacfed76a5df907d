// The tolerant loader of description files. It guesses in silence, as the decoder window wants it;
// told where to put them, it also says what it was silent about.
#pragma once

#include <QString>

#include "decoder/dec_reader.h"
#include "decoder/description.h"

namespace lokari {

/// Reads a description file's text into `description`, which holds the defaults. False when the
/// reading stopped at a number that does not fit 16 bits: what was read so far then stays, and the
/// window is not to be adapted.
bool loadDescription(const QString& text, DecoderDescription& description,
                     DecFaults* faults = nullptr);

}  // namespace lokari
