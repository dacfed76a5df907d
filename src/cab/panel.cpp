#include "cab/panel.h"

#include <utility>

#include "base/prompt.h"
#include "cab/cab_line.h"
#include "link/link_error.h"

namespace lokari {

Panel::Panel(const PanelParts& parts, int address, const QString& shortName)
    : SlotUnit(parts.line, parts.prompt, address), parts_(parts) {
  state_.address = address;
  setTitle(shortName);
  protocol_ = parts_.makeProtocol(kind().family, line(), state_);
}

Panel::~Panel() = default;

void Panel::onLoad() {
  std::optional<quint8> mask;
  try {
    if (openSession()) mask = protocol_->readState();
  } catch (const LinkError& error) {
    // A port that did not open has told why already.
    if (!line().isGone()) line().noteGone(error.message());
  }
  emit answered();
  if (mask) return show(*mask);
  if (isGivenUp()) return unload();
  tellNoAnswer();
}

void Panel::show(quint8 mask) {
  hasState_ = true;
  for (int n = 0; n < PanelState::kOutputs; ++n) {
    // Two bits per output; the lower one set means off.
    const bool on = (mask >> (2 * n) & 1) == 0;
    state_.outOn[static_cast<size_t>(n)] = on;
    emit outputChanged(n, on);
  }
}

void Panel::cmdFunc(int n) {
  if (n < 0 || n >= PanelState::kOutputs || isUnloading()) return;
  bool& output = state_.outOn[static_cast<size_t>(n)];
  output = !output;
  const bool on = output;
  emit outputChanged(n, on);
  exchange(distinct(), [this, n, on] {
    // The reading at load may have told of what was before.
    if (std::exchange(state_.outOn[static_cast<size_t>(n)], on) != on) emit outputChanged(n, on);
    protocol_->sendOutput(n);
    if (std::exchange(state_.neverSwitched[static_cast<size_t>(n)], false)) {
      emit outputChanged(n, on);
    }
  });
}

bool Panel::keyDown(QChar key) {
  if (key < u'1' || key > u'4') return false;
  cmdFunc(key.unicode() - u'1');
  return true;
}

}  // namespace lokari
