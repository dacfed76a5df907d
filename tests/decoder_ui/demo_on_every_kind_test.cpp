// The demonstration's decoder, read whole from the decoder window through every kind of station.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QFile>
#include <QTest>

#include "base/text_file.h"
#include "base/ui/pictures.h"
#include "base/ui/window_scale.h"
#include "db/catalogue.h"
#include "db/cv_record.h"
#include "db/database.h"
#include "decoder/decoder_bench.h"
#include "decoder/ui/frm_decoder.h"
#include "sim/decoder_file.h"
#include "sim/network_session_fixture.h"
#include "support/activation_hook.h"
#include "support/places.h"
#include "support/recording_view.h"

namespace lokari {
namespace {

constexpr int kAdlerton = 97;

class DemoOnEveryKind : public test::NetworkSession,
                        public ::testing::WithParamInterface<StationKindRow> {
 protected:
  DemoOnEveryKind() : NetworkSession(GetParam().kind) {
    layout = sim::Layout();
    const auto text = readTextFile(places::demo() + QStringLiteral("/sim/decoder.txt"));
    EXPECT_EQ(sim::readDecoders(text.value_or(QString()), layout), "");
    settings.timeoutVal = 5;
    record.InitDcData();
    record.recManuf = kAdlerton;
    record.recDecoder = QStringLiteral("AT-SND16");
  }

  /// What the decoder holds in the CV of an internal index, its bank included.
  int held(CvIndex index) {
    const CvDescriptor& entry = bench.description.info(index);
    const sim::Decoder& decoder = *layout.onProgrammingTrack();
    const int number = bench.description.realNumber(index).value();
    if (!entry.inBank()) return decoder.stored(number);
    const CvBank& bank = bench.description.bankOf(entry);
    for (const sim::CvBankContents& contents : decoder.banks) {
      if (contents.select == std::vector<int>{bank.selectA, bank.selectB}) {
        return contents.values.at(number);
      }
    }
    return -1;
  }

  void click(const char* name) {
    auto* button = window.findChild<QAbstractButton*>(QString::fromLatin1(name));
    ASSERT_TRUE(button != nullptr && button->isEnabled()) << name;
    QTest::mouseClick(button, Qt::LeftButton);
  }

  QTemporaryDir folder;
  Database database{[this] {
    const QString path = folder.filePath(QStringLiteral("TEST.MDB"));
    EXPECT_TRUE(QFile::copy(places::emptyDatabase(), path));
    return path;
  }()};
  const Database* shown = &database;
  Catalogue catalogue{shown};
  const QString base = places::data();
  DecoderBench bench{{settings, clock, prompt, *link, catalogue, base, QStringList(256)}};
  WindowScale scale{folder.filePath(QStringLiteral("WINDOW.INI"))};
  FrmDecoder window{bench, *link, clock, Pictures(base), scale};
  CvRecord record;
};

INSTANTIATE_TEST_SUITE_P(Kinds, DemoOnEveryKind, ::testing::ValuesIn(kStationKinds),
                         [](const auto& row) {
                           return QString::fromUtf16(row.param.name).toStdString();
                         });

TEST_P(DemoOnEveryKind, IsReadWhole) {
  test::ActivationHook hook([&] {
    click("cmdReadAll");
    click("cmdDcRead");
    bench.cmdCancel();  // what was read is dropped without a question
  });
  window.installEventFilter(&hook);
  window.edit(record, QStringLiteral("64"));

  EXPECT_EQ(prompt.shown, QStringList());
  EXPECT_EQ(prompt.beeps, 0);
  EXPECT_EQ(link->commUseCount, 0);
  int verified = 0;
  for (int i = 2; i <= kHighestCvIndex; ++i) {
    const CvIndex index(i);
    const CvDescriptor& entry = bench.description.info(index);
    // A batch leaves out what no page shows, but for the fixed fields and the speed table.
    const bool onPage = i <= 6 || cv::inTable(index) || entry.cvPage >= page::kDrive;
    if (!entry.cvRead || !onPage) continue;
    ++verified;
    EXPECT_EQ(bench.sets.mark(index), CvMark::Verified) << i;
    EXPECT_EQ(bench.sets.value(index), held(index)) << i;
  }
  // A station that reaches no CV above 255 leaves the three banks out.
  EXPECT_EQ(verified, GetParam().readLimitedWithoutV36 ? 92 : 158);
}

}  // namespace
}  // namespace lokari
