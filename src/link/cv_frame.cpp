#include "link/cv_frame.h"

#include "link/cv_exchange.h"
#include "link/station_link.h"
#include "link/station_protocol.h"

namespace lokari {
namespace {

void repeat(StationLink& link, CvExchange& exchange) {
  link.protocol().dropInput();
  exchange.secondChance();
  link.WaitForData(exchange.want(), exchange.timeoutSeconds());
  if (exchange.pausesAfterSecondChance()) link.Delay(1);
}

void waitWithSecondChance(StationLink& link, CvExchange& exchange) {
  link.WaitForData(exchange.want(), exchange.timeoutSeconds());
  const bool tooLittle = link.getBufferCount() < exchange.want();
  if (tooLittle && !link.cancelRequested && exchange.secondChanceHelps()) repeat(link, exchange);
}

}  // namespace

int runCvFrame(StationLink& link, CvExchange& exchange) {
  if (link.settings().delayFlag) link.Delay(1);
  link.lastCvFailed = false;
  link.lastCvRefused = false;

  CvStep step = CvStep::fromStart();
  for (;;) {
    switch (step.next) {
      case CvStep::Next::Start:
        step = exchange.send();
        continue;
      case CvStep::Next::Wait:
        waitWithSecondChance(link, exchange);
        break;
      case CvStep::Next::SecondChance:
        repeat(link, exchange);
        break;
      case CvStep::Next::Finish:
        exchange.epilogue();
        return step.result;
      case CvStep::Next::FinishAtOnce:
        return step.result;
    }
    step = exchange.evaluate();
    link.lastCvRefused = step.refused;
  }
}

}  // namespace lokari
