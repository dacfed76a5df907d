#include "decoder/speed_table_list.h"

#include <algorithm>

#include "base/numbers.h"
#include "base/prompt.h"
#include "decoder/decoder_bench.h"

namespace lokari {
namespace {

constexpr CvIndex kFirst{cv::kFirstTable};

}  // namespace

SpeedTableList::SpeedTableList(DecoderBench& bench, Prompt& prompt)
    : bench_(bench), prompt_(prompt), table_(bench), saved_(bench.sets) {}

bool SpeedTableList::usable() const {
  return bench_.controls.at(QStringLiteral("optDcDrvSpdTblYes")).checked;
}

int SpeedTableList::limit() const {
  return toInt16(numericPrefix(bench_.controls.at(QStringLiteral("lblDcDrvLeg2")).caption));
}

QString SpeedTableList::text(int box) const {
  return QString::number(bench_.sets.value(cvOf(box)));
}

TextColour SpeedTableList::colour(int box) const {
  return bench_.colourOf(cvOf(box));
}

bool SpeedTableList::take(int box, const QString& text) {
  const auto number = parseNumber(text);
  if (!number || *number < 0 || *number > limit()) return false;
  table_.store(cvOf(box), toCvByte(*number));
  return true;
}

bool SpeedTableList::leave(int box, const QString& text) {
  if (take(box, text)) return true;
  prompt_.message(QStringLiteral("Eingabe außerhalb des Wertebereichs!"));
  return false;
}

void SpeedTableList::ok(const QStringList& texts) {
  const int boxes = std::min(count(), static_cast<int>(texts.size()));
  for (int box = 1; box <= boxes; ++box) take(box, texts[box - 1]);
}

void SpeedTableList::cancel() {
  for (int i = 0; i < kBoxes; ++i) {
    const CvIndex cv(kFirst.value() + i);
    bench_.sets.takeCv(saved_, cv);
    bench_.setCvval(saved_.value(cv), cv.arrayIndex());
  }
}

}  // namespace lokari
