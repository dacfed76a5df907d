// What the user is told when a job is over, and about values that are known better than their
// colours say.
#include <algorithm>

#include "base/prompt.h"
#include "decoder/decoder_bench.h"
#include "decoder/fixed_fields.h"

namespace lokari {
namespace {

const QString& unprovedText() {
  static const QString text = QStringLiteral("geschrieben, nicht geprüft");
  return text;
}

/// In a list, so many neighbours become a span.
constexpr size_t kSpan = 3;

}  // namespace

QString DecoderBench::listOfCvs(const std::vector<CvIndex>& cvs) const {
  QStringList parts;
  for (size_t i = 0; i < cvs.size();) {
    size_t last = i;
    while (last + 1 < cvs.size() && cvs[last + 1].value() == cvs[last].value() + 1 &&
           description.info(cvs[last + 1]).cvBank == description.info(cvs[i]).cvBank) {
      ++last;
    }
    if (last - i + 1 >= kSpan) {
      parts << QStringLiteral("%1 bis %2")
                   .arg(description.numberText(cvs[i]), description.numberText(cvs[last]));
      i = last + 1;
    } else {
      parts << description.numberText(cvs[i++]);
    }
  }
  if (parts.isEmpty()) return {};
  const QString tail = parts.takeLast();
  const QString head = parts.join(QStringLiteral(", "));
  return QStringLiteral("CV ") + (head.isEmpty() ? tail : head + QStringLiteral(" und ") + tail);
}

QString DecoderBench::noteOf(CvIndex cv) const {
  return sets.isUnproved(cv) ? unprovedText() : QString();
}

void DecoderBench::showReport() {
  controls.setCaption(QStringLiteral("lblReport"), report_.remarks.join(u' '));
  showLegend();
}

void DecoderBench::clearReport() {
  report_ = {};
  showReport();
}

void DecoderBench::showLegend() {
  const std::vector<CvIndex> unproved = sets.unproved();
  QString text = QStringLiteral("Blau: gelesen oder geprüft.");
  if (!unproved.empty()) {
    text = QStringLiteral("Blau: gelesen, geprüft oder nur geschrieben (%1: %2).")
               .arg(listOfCvs(unproved), unprovedText());
  }
  controls.setCaption(QStringLiteral("lblLegend"), text + QStringLiteral(" Rot: misslungen."));
}

void DecoderBench::settleLostValues() {
  const std::vector<LostValue> lost = sets.lostValues();
  if (lost.empty()) return;
  QStringList lines;
  for (int i = 1; i <= SetNumber::kCount; ++i) {
    std::vector<CvIndex> cvs;
    for (const LostValue& each : lost) {
      if (each.set == SetNumber(i)) cvs.push_back(each.cv);
    }
    if (!cvs.empty()) {
      lines << QStringLiteral("%1: %2").arg(sets.setNames(SetNumber(i)), listOfCvs(cvs));
    }
  }
  const int answer = parts_.prompt.choose(
      {.text = QStringLiteral("Einige CVs ließen sich nicht lesen. Sollen sie die Werte behalten, "
                              "die vorher bekannt waren?"),
       .more = lines.join(u'\n') + QStringLiteral("\nIm Fenster stehen dafür die Ersatzwerte (0, "
                                                  "bei CV 29 64). Was rot ist, bleibt rot."),
       .answers = {QStringLiteral("Bekannte behalten"), QStringLiteral("Ersatzwerte übernehmen")},
       .safe = 0});
  if (answer == 0) sets.restoreLostValues();
}

}  // namespace lokari
