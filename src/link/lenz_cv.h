// Reading and writing one CV through a Lenz interface.
#pragma once

#include <memory>

#include "link/cv_exchange.h"

namespace lokari {

class LenzFraming;

std::unique_ptr<CvExchange> lenzReadCv(StationLink& link, LenzFraming& framing,
                                       const CvRequest& request);
/// On the programming track, or on the main track while `commJob` is WriteMain.
std::unique_ptr<CvExchange> lenzWriteCv(StationLink& link, LenzFraming& framing,
                                        const CvRequest& request);

}  // namespace lokari
