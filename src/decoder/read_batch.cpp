#include "decoder/read_batch.h"

#include "db/form_names.h"
#include "decoder/decoder_bench.h"
#include "link/station_link.h"

namespace lokari {
namespace {

constexpr int kHighestShortAddress = 127;
constexpr int kConsistDirectionBit = 128;

}  // namespace

ReadBatch::ReadBatch(DecoderBench& bench, bool progOn)
    : BatchRun(bench, progOn,
               {.write = false,
                .verb = u"Lese",
                .nothingToDo = u"Keine Daten zum Lesen ausgewählt!",
                .takingOver = u"OK übernimmt diesen Hersteller und seinen ersten Decodertyp mit "
                              u"dessen Vorgabewerten. Die angekreuzten CVs werden dann nicht "
                              u"gelesen.",
                .addressSteps = 1,
                .leavesOut = u"Nicht gelesen werden, obwohl angekreuzt:"}) {}

bool ReadBatch::checks() {
  if (cancelled()) return endAs(End::Orderly);
  address_ = bench_.addressNumber().value_or(0);
  if ((settings().addressCheckNow || addressMarked()) && !checkAddress()) return false;
  if (cancelled()) return endAs(End::Orderly);
  if (settings().manufacturerCheckNow && !checkMaker()) return false;
  const bool functionDecoder = config_ >= 0 && (config_ & config_bit::kFunctionDecoder) != 0;
  if (functionDecoder && !acceptFunctionDecoder()) return endAs(End::Orderly);
  if (cancelled()) return endAs(End::Orderly);
  startProgress();
  return true;
}

bool ReadBatch::checkAddress() {
  status(QStringLiteral("Adresskontrolle ..."));
  const CvIndex cv(cv::kAddress);
  auto found = readAddress();
  if (!found) return false;
  const bool known = !link().lastCvFailed;
  if (bench_.addressNumber() != found && !acceptAddress(*found)) return endAs(End::Orderly);
  if (!addressMarked()) return true;
  if (!known) {
    bench_.report_.add({.cv = cv, .deed = CvDeed::Failed, .reason = {}});
    return true;
  }
  if (!form::isAddress(*found)) {
    const QString text =
        QStringLiteral("Die gelesene Adresse %1 kann kein Fahrzeug haben: nichts übernommen.")
            .arg(*found);
    bench_.report_.add({.cv = cv, .deed = CvDeed::Failed, .reason = text});
    remark(text);
    markAddressFailed();
    return true;
  }
  report(cv, CvDeed::Read, *found);
  // On the main track only the vehicle that was asked answers.
  if (progOn()) bench_.noteAddress(*found);
  bench_.sets.setMark(cv, CvMark::Verified);
  if (*found > kHighestShortAddress) {
    bench_.sets.setMark(CvIndex(cv::kLongAddressHigh), CvMark::Verified);
    bench_.sets.setMark(CvIndex(cv::kLongAddressLow), CvMark::Verified);
  }
  bench_.refillField(QStringLiteral("dc_adr"), QString::number(*found));
  done_ = 1;
  return true;
}

bool ReadBatch::checkMaker() {
  status(QStringLiteral("Herstellerkontrolle ..."));
  const auto maker = read(CvIndex(cv::kMaker));
  if (!maker) return false;
  const bool known = !link().lastCvFailed;
  switch (askMaker(*maker)) {
    case MakerAnswer::Cancel:
      return endAs(End::Orderly);
    case MakerAnswer::TakeOver:
      takeOverMaker(*maker);
      takenOver_ = true;
      break;
    case MakerAnswer::Same:
      break;
  }
  takeChecked(CvIndex(cv::kMaker), *maker, known);
  const auto version = read(CvIndex(cv::kVersion));
  if (!version) return false;
  const QString field = QStringLiteral("txtDcComVersion");
  bench_.controls.setText(field, QString::number(*version));
  takeChecked(CvIndex(cv::kVersion), *version, !link().lastCvFailed);
  if (*maker == kMakerWithSubVersion) readSubVersion();
  bench_.controls.setEnabled(field, true);
  return true;
}

void ReadBatch::takeChecked(CvIndex cv, int value, bool known) {
  if (!known) {
    bench_.sets.takeFailedRead(cv, value);
    return;
  }
  report(cv, CvDeed::Read, value);
  bench_.sets.setValue(cv, value);
  // These CVs have no mark of their own; that of a failure before is no longer true.
  if (bench_.sets.mark(cv) == CvMark::Failed) bench_.sets.setMark(cv, CvMark::Verified);
}

void ReadBatch::readSubVersion() {
  // Decoders of this maker need not have these two: a failure is none.
  const QString field = QStringLiteral("txtDcComVersion");
  const int sub = readCv(cv::kSubVersion);
  if (sub >= 0) {
    takeChecked(CvIndex(cv::kSubVersion), sub, true);
    bench_.controls.setText(field, bench_.controls.at(field).text + u'.' + QString::number(sub));
  }
  const int type = readCv(cv::kDecoderType);
  const QString name = type >= 0 ? bench_.decoderTypeText(type) : QString();
  if (!name.isEmpty()) {
    takeChecked(CvIndex(cv::kDecoderType), type, true);
    bench_.controls.setText(field, bench_.controls.at(field).text + name);
  }
}

void ReadBatch::addRemarks() {
  if (!takenOver_) return;
  remark(
      QStringLiteral("Hersteller und Decodertyp sind übernommen, mit den Vorgabewerten des Typs. "
                     "Gelesen wurde nichts außer %1.")
          .arg(bench_.listOfCvs(bench_.report_.with(CvDeed::Read))));
}

bool ReadBatch::consist() {
  status(QStringLiteral("Lese Verbundadresse (CV 19)"));
  const CvIndex cv(cv::kConsist);
  const auto value = read(cv);
  if (!value) return false;
  takeRead(cv, *value);
  bench_.showOptions(QStringLiteral("ConsistDir"), (*value & kConsistDirectionBit) != 0);
  const QString field = QStringLiteral("txtDcComConsist");
  bench_.refillField(field, QString::number(*value & ~kConsistDirectionBit));
  bench_.CheckDcField(field, cv, consistRange());
  bench_.showMark19();
  countDone();
  return true;
}

bool ReadBatch::config() {
  status(QStringLiteral("Lese Grundeinstellungen (CV 29)"));
  const CvIndex cv(cv::kConfig);
  const auto value = read(cv);
  if (!value) return false;
  if (link().lastCvFailed) {
    takeRead(cv, config_bit::kManBit);
    showUnknownConfig();
  } else {
    // Bit 5 follows from the address.
    takeRead(cv, *value & ~config_bit::kLongAddress);
    showConfig(*value);
  }
  bench_.configClicks_ = ConfigClicks(bench_.sets.value(cv));
  bench_.ColorCV29();
  bench_.valueChanged(cv);
  emit bench_.speedTableChanged();
  countDone();
  return true;
}

// The options are shown only. A kept value must not follow them: one group stands in for another
// bit here, and two groups share one.

void ReadBatch::showUnknownConfig() {
  for (const char* group : {"Dir", "Steps", "Analog", "SpdTbl", "RailCom", "DetectPulse"}) {
    bench_.showOptions(QString::fromLatin1(group), false);
  }
  bench_.showOptions(QStringLiteral("ManBit"), true);
}

void ReadBatch::showConfig(int value) {
  const auto show = [this](const char* group, int of, int bit) {
    bench_.showOptions(QString::fromLatin1(group), (of & bit) != 0);
  };
  show("Dir", value, config_bit::kDirection);
  show("Steps", value, config_bit::kSteps);
  show("Analog", value, config_bit::kAnalog);
  show("SpdTbl", value, config_bit::kSpeedTable);
  // RailCom follows the configuration of the address check, which is all ones without one; bit 6
  // goes to the pulse option, in place of bit 3.
  show("RailCom", config_, config_bit::kPulseOrRailCom);
  show("DetectPulse", value, config_bit::kManBit);
}

bool ReadBatch::tablePoint(CvIndex cv) {
  status(QStringLiteral("Lese Geschwindigkeitstabelle (CV %1)").arg(cv.value()));
  const auto value = read(cv);
  if (!value) return false;
  takeRead(cv, *value);
  bench_.showValue(cv);
  countDone();
  return true;
}

bool ReadBatch::plain(CvIndex cv) {
  plainStatus(cv);
  int value = 0;
  switch (selectBank(cv)) {
    case Bank::Ended:
      return false;
    case Bank::Missed:
      break;
    case Bank::Selected: {
      const auto result = read(cv);
      if (!result) return false;
      value = *result;
    }
  }
  takeRead(cv, value);
  showInControl(cv, value);
  countDone();
  return true;
}

void DecoderBench::RdComm() {
  ReadBatch(*this, parts_.link.commJob == CommJob::ReadProgTrack).run();
}

}  // namespace lokari
