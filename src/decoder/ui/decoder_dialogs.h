// The dialogs of the decoder window that the bench opens.
#pragma once

class QWidget;

namespace lokari {

class DecoderBench;
class StationLink;
class WindowScale;

/// Plugs the dialogs for bits, function mapping, calculating and copying into the bench; they come
/// up above `window`. All arguments must outlive the bench's work.
void plugInDialogs(DecoderBench& bench, StationLink& link, const WindowScale& scale,
                   QWidget* window);

}  // namespace lokari
