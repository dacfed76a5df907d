// Whether a PDF file is whole: read back by its own table of contents.
#pragma once

namespace lokari {

class WholeFile;

/// Whether the finished file begins and ends as one does, and its table at the end finds each of
/// its objects where it says, whole. What was torn on the way has them elsewhere.
bool isWholePdf(const WholeFile& file);

}  // namespace lokari
