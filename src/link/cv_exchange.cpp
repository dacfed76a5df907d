#include "link/cv_exchange.h"

#include "link/comm_view.h"
#include "link/serial_line.h"
#include "link/station_link.h"

namespace lokari {

int CvExchange::timeoutSeconds() const {
  return link_.settings().timeoutVal;
}

CvStep CvExchange::shortReply() const {
  if (CommView* view = link_.view()) {
    view->setStatus(QStringLiteral("Keine / falsche Antwort vom Basisgerät!"));
  }
  return CvStep::finish(link_.cancelRequested ? cv_result::kCancelled : cv_result::kNoReply);
}

CvStep ReplyExchange::evaluate() {
  const QByteArray reply = takeReply();
  return reply.size() < want() ? shortReply() : parse(reply);
}

QByteArray ReplyExchange::takeReply() {
  return link().serial().read();
}

}  // namespace lokari
