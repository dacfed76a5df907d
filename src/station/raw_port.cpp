#include "station/raw_port.h"

namespace lokari {

void RawPort::OpenComm() {
  line_.open(left_);
  open_ = true;
}

void RawPort::CloseComm() {
  if (!open_) return;
  open_ = false;
  line_.close();
}

void RawPort::FlushComm(CommQueue queue) {
  if (queue == CommQueue::Receive) line_.read();
}

void RawPort::EscapeCommFunction(CommEscape code) {
  switch (code) {
    case CommEscape::ClearRts:
      line_.setRtsEnable(false);
      break;
    case CommEscape::ClearDtr:
      line_.setDtrEnable(false);
      break;
  }
}

}  // namespace lokari
