// Reading and writing one CV on the programming track as the maker's documents have it.
#pragma once

#include <memory>

#include "link/cv_exchange.h"

namespace lokari {

class LenzFraming;

std::unique_ptr<CvExchange> lenzMakerReadCv(StationLink& link, LenzFraming& framing,
                                            const CvRequest& request);
std::unique_ptr<CvExchange> lenzMakerWriteCv(StationLink& link, LenzFraming& framing,
                                             const CvRequest& request);

}  // namespace lokari
