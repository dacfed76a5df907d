#include "decoder/read_batch.h"

#include "decoder/decoder_bench.h"
#include "link/station_link.h"

namespace lokari {
namespace {

constexpr int kHighestAddress = 10239;
constexpr int kAddressInstead = 1;

QString yesNo(const char* group, bool yes) {
  return QString::fromLatin1(group) + (yes ? QStringLiteral("Yes") : QStringLiteral("No"));
}

}  // namespace

ReadBatch::ReadBatch(DecoderBench& bench, bool progOn)
    : BatchRun(bench, progOn,
               {.write = false,
                .verb = u"Lese",
                .nothingToDo = u"Keine Daten zum Lesen ausgewählt!",
                .addressSteps = 1}) {}

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
  auto found = readAddress();
  if (!found) return false;
  const bool known = !link().lastCvFailed;
  if (bench_.addressNumber() != found && !acceptAddress(*found)) return endAs(End::Orderly);
  if (!addressMarked() || !known) return true;
  if (*found > kHighestAddress) found = kAddressInstead;
  bench_.sets.setMark(CvIndex(cv::kAddress), CvMark::Verified);
  bench_.refillField(QStringLiteral("dc_adr"), QString::number(*found));
  done_ = 1;
  return true;
}

bool ReadBatch::checkMaker() {
  status(QStringLiteral("Herstellerkontrolle ..."));
  const auto maker = read(cv::kMaker);
  if (!maker) return false;
  switch (askMaker(*maker)) {
    case MakerAnswer::Cancel:
      return endAs(End::Orderly);
    case MakerAnswer::TakeOver:
      takeOverMaker(*maker);
      break;
    case MakerAnswer::Same:
      break;
  }
  bench_.sets.setValue(CvIndex(cv::kMaker), *maker);
  const auto version = read(cv::kVersion);
  if (!version) return false;
  const QString field = QStringLiteral("txtDcComVersion");
  bench_.controls.setText(field, QString::number(*version));
  bench_.sets.setValue(CvIndex(cv::kVersion), *version);
  if (*maker == kMakerWithSubVersion) readSubVersion();
  bench_.controls.setEnabled(field, true);
  return true;
}

void ReadBatch::readSubVersion() {
  // Decoders of this maker need not have these two: a failure is none.
  const QString field = QStringLiteral("txtDcComVersion");
  const int sub = link().ReadCV(cv::kSubVersion, address_);
  if (sub >= 0) {
    bench_.sets.setValue(CvIndex(cv::kSubVersion), sub);
    bench_.controls.setText(field, bench_.controls.at(field).text + u'.' + QString::number(sub));
  }
  const int type = link().ReadCV(cv::kDecoderType, address_);
  const QString name = type >= 0 ? bench_.decoderTypeText(type) : QString();
  if (!name.isEmpty()) {
    bench_.sets.setValue(CvIndex(cv::kDecoderType), type);
    bench_.controls.setText(field, bench_.controls.at(field).text + name);
  }
}

bool ReadBatch::consist() {
  status(QStringLiteral("Lese Verbundadresse (CV 19)"));
  const auto value = read(cv::kConsist);
  if (!value) return false;
  const CvIndex cv(cv::kConsist);
  takeMark(cv);
  constexpr int kDirectionBit = 128;
  bench_.setOption((*value & kDirectionBit) != 0 ? QStringLiteral("optDcConsistDirReverse")
                                                 : QStringLiteral("optDcConsistDirNormal"));
  const QString field = QStringLiteral("txtDcComConsist");
  bench_.refillField(field, QString::number(*value & ~kDirectionBit));
  bench_.CheckDcField(field, cv, consistRange());
  countDone();
  return true;
}

bool ReadBatch::config() {
  status(QStringLiteral("Lese Grundeinstellungen (CV 29)"));
  const auto value = read(cv::kConfig);
  if (!value) return false;
  takeMark(CvIndex(cv::kConfig));
  showConfig(*value);
  bench_.switchDirectionOverAndBack();
  countDone();
  return true;
}

void ReadBatch::showConfig(int value) {
  const bool failed = link().lastCvFailed;
  const auto has = [](int of, int bit) { return (of & bit) != 0; };
  bench_.setOption(has(value, config_bit::kDirection) ? QStringLiteral("optDcComDirReverse")
                                                      : QStringLiteral("optDcComDirNormal"));
  bench_.setOption(has(value, config_bit::kSteps) ? QStringLiteral("optDcComSteps28")
                                                  : QStringLiteral("optDcComSteps14"));
  bench_.setOption(yesNo("optDcComAnalog", has(value, config_bit::kAnalog)));
  bench_.setOption(yesNo("optDcComSpdTbl", has(value, config_bit::kSpeedTable)));
  if (failed) {
    bench_.setOption(QStringLiteral("optDcComRailComNo"));
    bench_.setOption(QStringLiteral("optDcComDetectPulseNo"));
    bench_.setOption(QStringLiteral("optDcComManBitYes"));
    return;
  }
  // RailCom follows the configuration of the address check, which is all ones without one; bit 6
  // goes to the pulse option as well and overrides bit 3 there. Both are kept as they are known.
  bench_.setOption(yesNo("optDcComRailCom", has(config_, config_bit::kPulseOrRailCom)));
  bench_.setOption(yesNo("optDcComDetectPulse", has(value, config_bit::kPulseOrRailCom)));
  bench_.setOption(yesNo("optDcComDetectPulse", has(value, config_bit::kManBit)));
}

bool ReadBatch::tablePoint(CvIndex cv) {
  status(QStringLiteral("Lese Geschwindigkeitstabelle (CV %1)").arg(cv.value()));
  const auto value = read(cv.value());
  if (!value) return false;
  bench_.sets.setValue(cv, *value);
  takeMark(cv);
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
      const auto result = read(description().realNumber(cv).value());
      if (!result) return false;
      value = *result;
    }
  }
  takeMark(cv);
  showInControl(cv, value);
  countDone();
  return true;
}

void DecoderBench::RdComm() {
  ReadBatch(*this, parts_.link.commJob == CommJob::ReadProgTrack).run();
}

}  // namespace lokari
