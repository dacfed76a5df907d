// Whatever a station in its maker's form is sent, it keeps its head and understands what comes
// next.
#include <QRandomGenerator>

#include "makers_fixture.h"
#include "sim/makers/mx1_frames.h"
#include "sim/makers/xbus.h"
#include "sim/makers/z21_records.h"

namespace lokari::sim::makers {
namespace {

struct Kind {
  const char16_t* name;
  /// Makes a whole message of the kind's wire from its inside.
  QByteArray (*wrapped)(const QByteArray& inside);
  const char* question;
  const char* answer;
};

QByteArray z21(const QByteArray& inside) {
  return z21Bytes({kXBusHeader, inside});
}
QByteArray xpressNet(const QByteArray& inside) {
  QByteArray message = inside.left(16);
  message[0] = static_cast<char>((message[0] & 0xF0) | (message.size() - 1));
  return withXor(message);
}
QByteArray usb(const QByteArray& inside) {
  return QByteArray("\xFF\xFE") + xpressNet(inside);
}
QByteArray p50x(const QByteArray& inside) {
  QByteArray command = inside;
  command[0] = static_cast<char>(command[0] | 0x80);
  return 'x' + command;
}
QByteArray mx1(const QByteArray& inside) {
  return mx1Bytes({1, 0x10, static_cast<uchar>(inside[0]) % 0x20, inside.mid(1)});
}

void PrintTo(const Kind& kind, std::ostream* out) {
  *out << QString::fromUtf16(kind.name).toStdString();
}

class MakersNoise : public MakersFixture, public ::testing::WithParamInterface<Kind> {
 protected:
  MakersNoise() : MakersFixture(GetParam().name) {}

  QByteArray noise(int most) {
    QByteArray data(random_.bounded(1, most), '\0');
    for (char& byte : data) byte = static_cast<char>(random_.bounded(256));
    return data;
  }
  void hear(const QByteArray& data) {
    station->receive(data);
    clock.advance(50);
    answers.clear();
  }
  void expectTheAnswer() {
    // What the noise has begun ends.
    clock.advance(100000);
    const QString answer = reply(GetParam().question);
    EXPECT_TRUE(answer.endsWith(QLatin1String(GetParam().answer))) << answer.toStdString();
  }

  QRandomGenerator random_{4711};
};

TEST_P(MakersNoise, BytesWithoutAMeaningHarmNothing) {
  for (int i = 0; i < 2000; ++i) hear(noise(30));
  expectTheAnswer();
}

TEST_P(MakersNoise, MessagesWithAnyContentsHarmNothing) {
  for (int i = 0; i < 5000; ++i) hear(GetParam().wrapped(noise(9)));
  expectTheAnswer();
}

TEST_P(MakersNoise, APieceOfAMessageIsForgottenAfterAWhile) {
  const QByteArray question = fromHex(GetParam().question);
  for (qsizetype size = 1; size < question.size(); ++size) {
    station->receive(question.left(size));
    expectTheAnswer();
  }
}

INSTANTIATE_TEST_SUITE_P(
    EveryKind, MakersNoise,
    ::testing::Values(Kind{u"Z21IP", z21, "07 00 40 00 21 21 00", "09 00 40 00 63 21 30 12 60"},
                      Kind{u"LI100", xpressNet, "21 21 00", "63 21 30 00 72"},
                      Kind{u"LI100V3", xpressNet, "21 21 00", "63 21 36 00 74"},
                      Kind{u"LIUSB", usb, "FF FE 21 21 00", "ff fe 63 21 36 00 74"},
                      Kind{u"IBX", p50x, "78 C9", "80"}, Kind{u"TAMSMC", p50x, "78 C9", "80"},
                      Kind{u"MX1BIN", mx1, "01 01 21 10 30 00 10 21 17", "17"}),
    [](const auto& test) { return QString::fromUtf16(test.param.name).toStdString(); });

TEST(MakersKinds, EveryOneOfThemStandsTheNoise) {
  QStringList kinds;
  for (const StationRow& row : stationTable()) {
    if (row.makeMakers != nullptr) kinds << QString::fromUtf16(row.name);
  }
  EXPECT_EQ(kinds, (QStringList{"IBX", "LI100", "LI100V3", "LIUSB", "MX1BIN", "TAMSMC", "Z21IP"}));
}

}  // namespace
}  // namespace lokari::sim::makers
