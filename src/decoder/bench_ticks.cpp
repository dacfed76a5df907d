// Ticks that no job acts upon: why, how that is shown, and what a job says about them beforehand.
#include <map>

#include "decoder/decoder_bench.h"
#include "decoder/fixed_fields.h"

namespace lokari {
namespace {

/// CVs whose boxes stand among the fixed controls.
constexpr int kBoxCvs[] = {2, 3, 4, 5, 6, 9, 19, 29};

QString boxName(bool write, const QString& of) {
  return (write ? QStringLiteral("chkWrt_") : QStringLiteral("chkRd_")) + of;
}

/// "7, 40-44, 257 (2)": plain CVs that follow each other stand together.
class CvList {
 public:
  void add(const DecoderDescription& description, CvIndex cv) {
    const bool plain = !description.info(cv).inBank();
    if (plain && last_ > 0 && cv.value() == last_ + 1) {
      last_ = cv.value();
      texts_.last() = QStringLiteral("%1-%2").arg(first_).arg(last_);
      return;
    }
    texts_ << description.numberText(cv);
    first_ = last_ = plain ? cv.value() : 0;
  }
  QString text() const { return texts_.join(QStringLiteral(", ")); }

 private:
  QStringList texts_;
  int first_ = 0;
  int last_ = 0;
};

}  // namespace

QString DecoderBench::idleReason(CvIndex cv) const {
  const CvIndex handled = cv == CvIndex(cv::kUserRow) ? userRowCv_ : cv;
  if (description.reachable(handled)) {
    // The spare row of the drive page has one box, whichever CV stands in it.
    const bool spare = description.info(cv).cvPage == page::kDrive && !cv::inTable(cv) &&
                       cv.value() > 6 && cv != CvIndex(cv::kUserRow);
    return spare ? QStringLiteral("es gilt das Kästchen der Seite Fahren") : QString();
  }
  if (description.PROGMODE != 0)
    return QStringLiteral("mit der Programmierart dieses Decoders nicht erreichbar");
  if (cv::inTable(cv)) return QStringLiteral("die Tabelle dieses Decoders ist kürzer");
  return QStringLiteral("steht auf keiner Seite dieses Decoders");
}

void DecoderBench::showIdleTicks() {
  const auto show = [this](const QString& box, CvIndex cv) {
    // A box that cannot be ticked looks so already.
    controls.setIdle(box, controls.at(box).enabled ? idleReason(cv) : QString());
  };
  for (const bool write : {false, true}) {
    for (const int boxCv : kBoxCvs) show(boxName(write, QString::number(boxCv)), CvIndex(boxCv));
    show(boxName(write, QStringLiteral("Tbl")), CvIndex(cv::kFirstTable));
  }
  for (PageRow& row : rows_) row.idle = idleReason(row.cv);
}

QString DecoderBench::leftOut(bool write) const {
  std::map<QString, CvList> cvs;
  for (int i = 2; i <= kHighestCvIndex; ++i) {
    const CvIndex cv(i);
    const CvDescriptor& entry = description.info(cv);
    if (!(write ? entry.cvWrite : entry.cvRead) || isPlanned(write, cv)) continue;
    // The points beyond a short table are no CVs of the decoder, and "Alle" ticks them.
    const bool beyondTable = entry.ofTable && description.PROGMODE == 0;
    const QString reason = idleReason(cv);
    if (!reason.isEmpty() && !beyondTable) cvs[reason].add(description, cv);
  }
  QStringList lines;
  for (const auto& [reason, list] : cvs)
    lines << QStringLiteral("CV %1: %2").arg(list.text(), reason);
  const QString table = idleReason(CvIndex(cv::kFirstTable));
  if (description.table.of(write) && !table.isEmpty())
    lines << QStringLiteral("Geschwindigkeitstabelle: %1").arg(table);
  return lines.join(u'\n');
}

}  // namespace lokari
