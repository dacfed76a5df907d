// The strict checker of description files: everything the loader is silent about, and what is
// wrong inside the fields of a CV line.
#pragma once

#include <QString>

#include "decoder/dec_reader.h"

namespace lokari {

/// The faults of a file's text in the order of their lines; empty for a good file. The text is read
/// by the reader and the loader that the decoder window uses.
DecFaults checkDescription(const QString& text);

/// The fault of a range text, or empty: items are numbers and from-to pairs of 0 to 255.
QString rangeFault(const QString& range);

/// The fault of a bit description, or empty.
QString bitsFault(const QString& bits);

}  // namespace lokari
