// The MX1 in its two generations with a line protocol, which differ in the handshaking only.
#pragma once

#include <memory>

#include "link/open_questions.h"
#include "link/serial_protocol.h"

namespace lokari {

class Mx1TextProtocol final : public SerialProtocol {
 public:
  using SerialProtocol::SerialProtocol;

  void beginSession() override;
  /// A refusal among what waits is kept: it answers a command that nobody waits for.
  void dropInput() override;
  std::unique_ptr<CvExchange> readCv(const CvRequest& request) override;
  std::unique_ptr<CvExchange> writeCv(const CvRequest& request) override;
  int addrIndex(int address) override;

  /// Drops what waits and tells whether an output's switching has been refused since the last call.
  bool takeSwitchRefusal();
  /// A main-track write goes out; its refusal is told by the farewell.
  void mainWriteGoesOut() { mainWritten_ = true; }
  /// The questions of the CV commands.
  OpenQuestions& cvQuestions() { return cvQuestions_; }

 protected:
  void greet() override;
  void sayGoodbye(bool leaveMode) override;

 private:
  void reportRefusal();

  OpenQuestions cvQuestions_;
  OpenQuestions indexQuestions_;
  bool mainWritten_ = false;     ///< in this session
  bool addressRefused_ = false;  ///< a main-track write of this session
  bool switchRefused_ = false;
};

std::unique_ptr<StationProtocol> makeMx1TextProtocol(StationLink& link);

}  // namespace lokari
