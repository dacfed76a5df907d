// The trace's file: when it is written, what it begins with, and how it ends.
#include "link/trace.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <sys/stat.h>

#include "base/settings.h"
#include "link/trace_head.h"
#include "support/no_larger_files.h"
#include "support/virtual_clock.h"

namespace lokari {
namespace {

class TraceTest : public ::testing::Test {
 protected:
  TraceTest() {
    settings.baseUnit = StationKind::TamsMc;
    settings.comPort = 4;
    settings.timeoutVal = 2;
    settings.dbPath = QStringLiteral("/home/Erika Muster/Bahn.MDB");
    trace.onFailure = [this](const QString& text) { notes << text; };
  }

  QString path(const char* name = "TRACE.log") const {
    return folder.filePath(QString::fromLatin1(name));
  }
  void put(const char* name, const QByteArray& text) const {
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
  }
  QByteArray read(const QString& name) const {
    QFile file(name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(name);
    return file.readAll();
  }
  QStringList lines() const { return QString::fromUtf8(read(path())).split(u'\n'); }
  void write(const QString& text) {
    if (trace.wants(Transport::Serial)) trace.write(Transport::Serial, clock.localTime(), text);
  }

  test::VirtualClock clock;
  QTemporaryDir folder;
  Settings settings;
  QStringList notes;
  Trace trace{folder.path(), clock};
};

TEST_F(TraceTest, IsOffUnlessItIsAskedFor) {
  trace.follow(settings);
  EXPECT_FALSE(trace.isOn());
  for (const Transport each : {Transport::Serial, Transport::Udp, Transport::Can}) {
    EXPECT_FALSE(trace.wants(each));
  }
  EXPECT_FALSE(QFile::exists(path()));
}

TEST_F(TraceTest, EachTransportHasACategoryOfItsOwn) {
  EXPECT_STREQ(trace.category(Transport::Serial).categoryName(), "lokari.line.serial");
  EXPECT_STREQ(trace.category(Transport::Udp).categoryName(), "lokari.line.udp");
  EXPECT_STREQ(trace.category(Transport::Can).categoryName(), "lokari.line.can");
}

TEST_F(TraceTest, ALoggingRuleOutlivesTheFile) {
  QLoggingCategory::setFilterRules(QStringLiteral("lokari.line.*.debug=true"));
  Trace ruled(folder.path(), clock);
  EXPECT_TRUE(ruled.wants(Transport::Serial));
  settings.trace = true;
  ruled.follow(settings);
  settings.trace = false;
  ruled.follow(settings);
  EXPECT_TRUE(ruled.wants(Transport::Serial));
  QLoggingCategory::setFilterRules({});
  EXPECT_FALSE(ruled.wants(Transport::Serial));
}

TEST_F(TraceTest, TheSettingsSwitchItOnAndOff) {
  settings.trace = true;
  trace.follow(settings);
  write(QStringLiteral("> 78 A0"));
  settings.trace = false;
  trace.follow(settings);
  write(QStringLiteral("> 78 A2"));
  EXPECT_TRUE(lines().contains("10:00:00.000 > 78 A0")) << qPrintable(lines().join('|'));
  EXPECT_FALSE(read(path()).contains("A2"));
}

TEST_F(TraceTest, TheEnvironmentAsksForOneWhateverTheSettingsSay) {
  for (const char* none : {"", "0"}) {
    trace.requestBy(QString::fromLatin1(none));
    trace.follow(settings);
    EXPECT_FALSE(trace.isOn()) << none;
  }
  trace.requestBy(QStringLiteral("1"));
  trace.follow(settings);
  EXPECT_TRUE(trace.isOn());
  EXPECT_EQ(trace.path(), path());
  Trace other(folder.path(), clock);
  other.requestBy(path("anders.log"));
  other.follow(settings);
  EXPECT_TRUE(QFile::exists(path("anders.log")));
}

TEST_F(TraceTest, TheHeadTellsVersionDateStationPortAndSettings) {
  settings.lenzV36 = true;
  trace.request();
  trace.follow(settings);
  EXPECT_EQ(lines().mid(0, 3), (QStringList{"Lokari-Mitschrift: " + QString::fromUtf16(kTitle) +
                                                ", 21.11.2026 10:00:00",
                                            "# Zentrale: TAMSMC an COM4, 2400 Baud, RTS/CTS",
                                            "# Einstellungen: Timeout=2 Delay=1 LenzV36=1 "
                                            "MakerForm=0 AddressCheck=1 ManufacturerCheck=1 "
                                            "ContinueOnError=1 Zimo12Functions=1"}))
      << qPrintable(lines().join('|'));
  settings.baseUnit = StationKind::Z21Ip;
  settings.ipAddr = QStringLiteral("192.168.000.111");
  trace.follow(settings);
  EXPECT_TRUE(lines().contains("# Zentrale: Z21IP an 192.168.000.111"));
}

TEST_F(TraceTest, NothingOfItsOwnerStandsInTheHead) {
  settings.baseUnit = StationKind::Z21Ip;
  settings.ipAddr = QStringLiteral("093.184.216.034");
  trace.request();
  trace.follow(settings);
  const QByteArray text = read(path());
  EXPECT_FALSE(text.contains("Erika"));
  EXPECT_FALSE(text.contains("Bahn.MDB"));
  EXPECT_FALSE(text.contains("184")) << "an address by which he is found";
  EXPECT_FALSE(text.contains(folder.path().toUtf8()));
}

TEST_F(TraceTest, ASecondRunIsAddedWithAHeadOfItsOwn) {
  put("TRACE.log", "Lokari-Mitschrift: alt\n");
  trace.request();
  trace.follow(settings);
  EXPECT_EQ(lines()[0], "Lokari-Mitschrift: alt");
  EXPECT_TRUE(lines()[1].startsWith("Lokari-Mitschrift: Lokari"));
}

TEST_F(TraceTest, SettingsThatStayGetNoSecondHead) {
  trace.request();
  trace.follow(settings);
  trace.follow(settings);
  EXPECT_EQ(read(path()).count("Lokari-Mitschrift"), 1);
}

TEST_F(TraceTest, AFileThatIsNoTraceStaysAsItIsAndOneNoteSaysSo) {
  put("liste.csv", "Sammlung;Adresse\n");
  trace.request(path("liste.csv"));
  trace.follow(settings);
  trace.follow(settings);
  EXPECT_EQ(read(path("liste.csv")), "Sammlung;Adresse\n");
  EXPECT_EQ(notes,
            QStringList{"Die Verbindung wird nicht mehr mitgeschrieben!\n" + path("liste.csv") +
                        " ist keine Mitschrift und bleibt, wie sie ist."});
}

TEST_F(TraceTest, APipeIsPassedOver) {
  ASSERT_EQ(::mkfifo(QFile::encodeName(path()).constData(), 0600), 0);
  trace.request();
  trace.follow(settings);
  EXPECT_FALSE(trace.isOn());
  EXPECT_EQ(notes.size(), 1);
}

TEST_F(TraceTest, AFolderThatIsNotThereEndsItWithOneNote) {
  trace.request(path("fehlt/TRACE.log"));
  trace.follow(settings);
  write(QStringLiteral("> 78 A0"));
  trace.follow(settings);
  EXPECT_EQ(notes, QStringList{"Die Verbindung wird nicht mehr mitgeschrieben!\n" +
                               path("fehlt/TRACE.log") +
                               " lässt sich nicht schreiben: den Ordner "
                               "oder die Datei gibt es nicht."});
}

TEST_F(TraceTest, AFullDiskEndsItWithOneNote) {
  trace.request();
  trace.follow(settings);
  const QByteArray before = read(path());
  {
    const test::NoLargerFiles full(before.size() + 20);
    write(QStringLiteral("> 78 A0 und noch viel mehr als zwanzig Bytes"));
    write(QStringLiteral("> 78 A2"));
  }
  write(QStringLiteral("> 78 A5"));
  EXPECT_FALSE(trace.isOn());
  ASSERT_EQ(notes.size(), 1);
  EXPECT_TRUE(notes[0].contains("lässt sich nicht weiterschreiben")) << qPrintable(notes[0]);
  EXPECT_FALSE(read(path()).contains("A5"));
}

TEST_F(TraceTest, SwitchedOffAndOnAgainItTriesAnew) {
  settings.trace = true;
  ASSERT_TRUE(QDir(folder.path()).mkdir("TRACE.log"));
  trace.follow(settings);
  EXPECT_FALSE(trace.isOn());
  ASSERT_TRUE(QDir(folder.path()).rmdir("TRACE.log"));
  settings.trace = false;
  trace.follow(settings);
  settings.trace = true;
  trace.follow(settings);
  EXPECT_TRUE(trace.isOn());
}

TEST_F(TraceTest, AFileThatHasGrownTooLargeBecomesTheOlderPart) {
  put("TRACE.log.1", "Lokari-Mitschrift: noch älter\n");
  trace.request();
  trace.follow(settings);
  const QString line(999, u'x');
  for (int i = 0; i < 2 * Trace::kMostBytes / 1000; ++i) write(line);
  write(QStringLiteral("zuletzt"));
  EXPECT_TRUE(notes.isEmpty());
  EXPECT_LE(QFile(path()).size(), Trace::kMostBytes);
  EXPECT_LE(QFile(path("TRACE.log.1")).size(), Trace::kMostBytes);
  EXPECT_FALSE(read(path("TRACE.log.1")).contains("noch älter"));
  EXPECT_TRUE(lines()[0].endsWith(", davor: TRACE.log.1"));
  EXPECT_TRUE(lines()[1].startsWith("# Zentrale: TAMSMC"));
  EXPECT_TRUE(read(path()).endsWith("zuletzt\n"));
}

TEST_F(TraceTest, AnOlderPartThatIsNoTraceEndsItAndStays) {
  put("TRACE.log.1", "etwas Wichtiges");
  trace.request();
  trace.follow(settings);
  const QString line(999, u'x');
  for (int i = 0; i <= Trace::kMostBytes / 1000; ++i) write(line);
  EXPECT_EQ(notes.size(), 1);
  EXPECT_EQ(read(path("TRACE.log.1")), "etwas Wichtiges");
}

TEST_F(TraceTest, ALineOfTheNextDayTellsItsDate) {
  trace.request();
  trace.follow(settings);
  trace.write(Transport::Udp, clock.localTime().addDays(1), QStringLiteral("> 04 00 10 00"));
  EXPECT_TRUE(read(path()).endsWith("\n# 22.11.2026\n10:00:00.000 > 04 00 10 00\n"))
      << read(path()).constData();
}

TEST(TraceHeadTest, AnAddressOfAPrivateNetworkIsTold) {
  Settings settings;
  settings.baseUnit = StationKind::Mx10Ip;
  for (const char* address : {"010.000.000.005", "172.031.000.001", "192.168.001.145",
                              "127.000.000.001", "169.254.001.001"}) {
    settings.ipAddr = QString::fromLatin1(address);
    EXPECT_TRUE(stationText(settings).endsWith(settings.ipAddr)) << address;
  }
  for (const char* address : {"172.032.000.001", "008.008.008.008", "193.168.000.001"}) {
    settings.ipAddr = QString::fromLatin1(address);
    EXPECT_EQ(stationText(settings), "MX10IP an einer Adresse außerhalb des eigenen Netzes");
  }
  for (const char* none : {"000.000.000.000", "Erikas Z21", ""}) {
    settings.ipAddr = QString::fromLatin1(none);
    EXPECT_EQ(stationText(settings), "MX10IP an keiner Adresse");
  }
}

TEST(TraceHeadTest, TheUsersFolderIsNotNamed) {
  EXPECT_EQ(withoutHome(QDir::homePath() + "/sim/tams fehlt"),
            QDir::homePath().size() > 1 ? "~/sim/tams fehlt" : "/sim/tams fehlt");
}

}  // namespace
}  // namespace lokari
