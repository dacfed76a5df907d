// Programs that are killed at random moments while they write. Afterwards the database passes
// `lokari-cli check`, no file is torn, and what was told as stored is there.
//
// LOKARI_KILLS says how many kills there are, LOKARI_KILL_SEED what the moments are drawn from.
#include <QDir>
#include <QFile>
#include <QSqlQuery>

#include <array>
#include <chrono>
#include <map>
#include <random>
#include <sys/wait.h>
#include <unistd.h>

#include "base/ini_file.h"
#include "base/settings.h"
#include "db/catalogue_update.h"
#include "db/cv_record.h"
#include "db/database.h"
#include "db/record_set.h"
#include "decoder/vehicle_copy.h"
#include "simulator_process.h"
#include "support/places.h"

namespace lokari {
namespace {

constexpr int kUsualKills = 22;
constexpr int kVehicles = 60;

QString str(const char* text) {
  return QString::fromUtf8(text);
}

int fromEnvironment(const char* name, int fallback) {
  return qEnvironmentVariableIsSet(name) ? qEnvironmentVariableIntValue(name) : fallback;
}

QByteArray contents(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class KillTest : public ::testing::Test {
 protected:
  KillTest() : random_(static_cast<unsigned>(seed_)) {
    EXPECT_TRUE(QDir(folder_.path()).mkpath(str("DB")));
    EXPECT_TRUE(QDir(folder_.path()).mkpath(str("Adlerton")));
    EXPECT_TRUE(QFile::copy(places::emptyDatabase(), path("EMPTY.MDB")));
    EXPECT_TRUE(QFile::copy(places::emptyDatabase(), database()));
    QFile::setPermissions(database(), QFile::ReadOwner | QFile::WriteOwner);
    for (const char* name : {"repl_ger.rpt", "repc_ger.rpt"}) {
      QFile::copy(places::data() + QChar(u'/') + str(name), path(name));
    }
    write("LOKARI.qhc", "");
    write("Default.dec", "[Default]\nCV_3=Zeit,0-255\nCV_5=Hoch,0-255\n");
    write("Adlerton/AT-ECO.dec", "[AT-ECO]\nCV_3=Zeit,0-255\nCV_5=Hoch,0-255\n");
    write("LOKARI.INI", "[LOKARI]\r\nBaseUnit=TAMSMC\r\nComPort=4\r\nTimeout=1\r\nDelay=0\r\n");
    write("PORTS.INI", "[PORTS]\r\nCOM4=" + path("tams").toLocal8Bit() + "\r\n");
    Database open(database());
    open.transaction([&] {
      for (int address = 1; address <= kVehicles; ++address) {
        open.write(str("INSERT INTO LOCO_DAT (DC_ADR, DC_COLL, DC_TYPE, ST_SNAME, DC_MANUF, "
                       "DC_DECODER, DC_CV, DC_CV_ST) VALUES (?, 'Anlage', 1, ?, 97, 'AT-ECO', ?, "
                       "?)"),
                   {address, QStringLiteral("L%1").arg(address), QByteArray(kCvFieldBytes, '\0'),
                    QByteArray(kCvFieldBytes, '\0')});
      }
    });
  }

  QString path(const char* name) const { return folder_.filePath(str(name)); }
  QString database() const { return path("DB/LOKARIV3.MDB"); }
  void write(const char* name, const QByteArray& text) const {
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
  }

  int drawn(int most) { return std::uniform_int_distribution<int>(0, most)(random_); }

  // ---- Killing ----------------------------------------------------------------------------------

  /// Runs a program, the first time to its end, later up to a random moment of that time. Gives
  /// its status, or nothing when it was killed.
  std::optional<int> runAndKill(const QString& program, const QStringList& arguments,
                                int longest = 60'000) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(str("LOKARI_APP"), folder_.path());
    environment.insert(str("QT_QPA_PLATFORM"), str("offscreen"));
    process.setProcessEnvironment(environment);
    const auto begun = std::chrono::steady_clock::now();
    process.start(test::programPath(program), arguments);
    EXPECT_TRUE(process.waitForStarted());
    const QString key = program + arguments.join(u' ');
    const bool known = lasts_.contains(key);
    if (!process.waitForFinished(known ? drawn(lasts_[key]) : longest)) {
      process.kill();
      process.waitForFinished();
      ++killed_;
      if (!known) lasts_[key] = longest;
      return std::nullopt;
    }
    if (!known) {
      const auto spent = std::chrono::steady_clock::now() - begun;
      lasts_[key] =
          static_cast<int>(std::chrono::duration_cast<std::chrono::milliseconds>(spent).count());
    }
    ++finished_;
    return process.exitCode();
  }
  std::optional<int> cli(const QStringList& arguments) {
    return runAndKill(str("lokari-cli"), arguments);
  }

  /// Lets a process of its own do `once` with 1, 2, 3 and on, and kills it in one of the first.
  /// Gives the last number that it told as done; 0 for none.
  int killWorker(const std::function<void(int number)>& once) {
    std::array<int, 2> ends{};
    EXPECT_EQ(pipe(ends.data()), 0);
    const pid_t child = fork();
    EXPECT_GE(child, 0);
    if (child == 0) {
      for (int number = 1;; ++number) {
        once(number);
        if (::write(ends[1], "x", 1) != 1) _exit(1);
      }
    }
    close(ends[1]);
    int told = 0;
    char byte = 0;
    const int enough = 1 + drawn(2);
    while (told < enough && read(ends[0], &byte, 1) == 1) ++told;
    const auto until = std::chrono::steady_clock::now() + std::chrono::microseconds(drawn(20'000));
    while (std::chrono::steady_clock::now() < until) {
    }
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    while (read(ends[0], &byte, 1) == 1) ++told;
    close(ends[0]);
    ++killed_;
    return told;
  }

  // ---- Looking ----------------------------------------------------------------------------------

  void expectSound() {
    const test::ProgramRun run = test::runProgram(str("lokari-cli"), {"check"}, folder_.path());
    EXPECT_EQ(run.status, 0) << run.output.toStdString() << run.errors.toStdString();
  }
  QVariantList column(const char* statement) const {
    QVariantList values;
    Database(database()).read(str(statement), {}, [&](const QSqlQuery& row) {
      values << row.value(0);
    });
    return values;
  }
  int count(const char* statement) const { return column(statement).value(0).toInt(); }
  void run(const char* statement) const { Database(database()).write(str(statement), {}); }

  // ---- The commands -----------------------------------------------------------------------------

  void store() {
    run("UPDATE LOCO_DAT SET FZ_LNAME = '0', FZ_CODE = '0' WHERE DC_ADR = 1");
    const int told = killWorker([this](int number) {
      static Database* const open = new Database(database());
      RecordSet records;
      records.open(*open, str("SELECT * FROM LOCO_DAT WHERE DC_ADR = 1"));
      records.Edit();
      records.setValue(str("FZ_LNAME"), QString::number(number));
      records.setValue(str("FZ_CODE"), QString::number(number));
      records.setValue(str("MD_PIC"), QByteArray(200'000, static_cast<char>(number)));
      records.Update();
    });
    const int name = count("SELECT FZ_LNAME FROM LOCO_DAT WHERE DC_ADR = 1");
    EXPECT_EQ(name, count("SELECT FZ_CODE FROM LOCO_DAT WHERE DC_ADR = 1"));
    EXPECT_TRUE(name == told || name == told + 1) << name << " for " << told;
  }

  void copyToVehicles() {
    const int told = killWorker([this](int number) {
      static Database* const open = new Database(database());
      copyCvsToVehicles(*open, {}, {{CvIndex(3), number}}, [](int, int) { return true; });
    });
    const QVariantList values = column("SELECT DISTINCT SUBSTR(DC_CV, 3, 1) FROM LOCO_DAT");
    ASSERT_EQ(values.size(), 1) << "all vehicles or none";
    const int value = static_cast<quint8>(values[0].toByteArray().at(0));
    EXPECT_TRUE(value == told || value == told + 1) << value << " for " << told;
  }

  void options() {
    const QString ini = path("OPTIONEN.INI");
    QFile::remove(ini);
    const int told = killWorker([&ini](int number) {
      QList<IniEntry> entries;
      for (int key = 0; key < 11; ++key) {
        entries << IniEntry{QStringLiteral("Key%1").arg(key), QString::number(number)};
      }
      if (!IniFile(ini).writeAll(str("LOKARI"), entries)) _exit(1);
    });
    const IniState state = IniFile(ini).read();
    const int first = state.getInt(str("LOKARI"), str("Key0"), -1);
    for (int key = 1; key < 11; ++key) {
      EXPECT_EQ(state.getInt(str("LOKARI"), QStringLiteral("Key%1").arg(key), -1), first);
    }
    EXPECT_TRUE(first == told || first == told + 1) << first << " for " << told;
  }

  void updateFromTemplate() {
    run("DELETE FROM DECODERS WHERE DC_MANUF = 145");
    const int before = count("SELECT COUNT(*) FROM DECODERS");
    const int told = killWorker([this](int) {
      static Database* const open = new Database(database());
      updateCatalogue(Database(path("EMPTY.MDB")), *open);
    });
    const int after = count("SELECT COUNT(*) FROM DECODERS");
    const int whole = [this] {
      int rows = 0;
      Database(path("EMPTY.MDB"))
          .read(str("SELECT COUNT(*) FROM DECODERS"), {},
                [&](const QSqlQuery& row) { rows = row.value(0).toInt(); });
      return rows;
    }();
    EXPECT_TRUE(after == whole || (told == 0 && after == before)) << after;
  }

  void importV2() {
    run("DELETE FROM LOCO_DAT WHERE DC_COLL = ''");
    const auto status = cli({"import", "access", places::accessFile(str("jet4_v2.mdb"))});
    const int imported = count("SELECT COUNT(*) FROM LOCO_DAT WHERE DC_COLL = ''");
    if (status) importedWhole_ = imported;
    EXPECT_GT(importedWhole_, 0);
    EXPECT_TRUE(imported == importedWhole_ || (!status && imported == 0)) << imported;
  }

  void takeOver() {
    const QString file = path("CLUB.MDB");
    if (!QFile::exists(file)) {
      ASSERT_TRUE(QFile::copy(places::accessFile(str("jet4_current.mdb")), file));
    }
    const auto status = cli({"import", "access", file});
    const QString target = path("CLUB_Lokari.MDB");
    EXPECT_TRUE(!status || QFile::exists(target));
    if (!QFile::exists(target)) return;
    {
      Database taken(target);
      EXPECT_TRUE(taken.integrityFaults().isEmpty());
      int vehicles = 0;
      taken.read(str("SELECT COUNT(*) FROM LOCO_DAT"), {},
                 [&](const QSqlQuery& row) { vehicles = row.value(0).toInt(); });
      EXPECT_EQ(vehicles, 45) << "whole, or not there";
    }
    EXPECT_TRUE(QFile::remove(target));
    if (status) {
      EXPECT_EQ(QDir(folder_.path())
                    .entryList({str(".lokari-uebernahme-*")}, QDir::Dirs | QDir::Hidden)
                    .size(),
                0);
    }
  }

  void readVehicle() {
    run("UPDATE LOCO_DAT SET DC_CV = zeroblob(4865), DC_CV_ST = zeroblob(4865) WHERE DC_ADR = 2");
    const auto status = cli({"vehicle", "read", "Anlage", "2", "--cv", "3,5", "--yes"});
    const QByteArray values =
        column("SELECT DC_CV FROM LOCO_DAT WHERE DC_ADR = 2").value(0).toByteArray();
    if (status && readWhole_.isEmpty()) {
      EXPECT_EQ(*status, 0);
      readWhole_ = values;
    }
    EXPECT_TRUE(values == readWhole_ || (!status && values == QByteArray(kCvFieldBytes, '\0')));
  }

  void writeVehicle() {
    run("UPDATE LOCO_DAT SET DC_CV_ST = zeroblob(4865) WHERE DC_ADR = 2");
    const QVariantList before = column("SELECT DC_CV FROM LOCO_DAT WHERE DC_ADR = 2");
    cli({"vehicle", "write", "Anlage", "2", "--cv", "3,5", "--yes"});
    EXPECT_EQ(column("SELECT DC_CV FROM LOCO_DAT WHERE DC_ADR = 2"), before);
  }

  void exportFile(const char* kind, const char* name, const QByteArray& old) {
    if (old.isEmpty()) {
      QFile::remove(path(name));
    } else {
      write(name, old);
    }
    // The same vehicles each time, whatever the other commands have left.
    run("DELETE FROM LOCO_DAT WHERE DC_COLL = ''");
    run("UPDATE LOCO_DAT SET FZ_LNAME = 'x', FZ_CODE = 'y', DC_CV = zeroblob(4865), "
        "DC_CV_ST = zeroblob(4865)");
    const auto status = cli({"export", kind, path(name), "--yes"});
    const QByteArray now = contents(path(name));
    QByteArray& whole = exported_[kind];
    if (status && whole.isEmpty()) {
      EXPECT_EQ(*status, 0);
      whole = now;
    }
    EXPECT_TRUE(now == whole || (!status && now == old)) << now.size() << " bytes";
  }

  void window() { runAndKill(str("lokari"), {}, 3'000); }

  const QTemporaryDir folder_;
  const int seed_ = fromEnvironment("LOKARI_KILL_SEED", static_cast<int>(std::random_device()()));
  std::mt19937 random_;
  std::map<QString, int> lasts_;  // how long a program runs that is left alone, in milliseconds
  int killed_ = 0;
  int finished_ = 0;
  int importedWhole_ = 0;
  QByteArray readWhole_;
  std::map<std::string, QByteArray> exported_;
};

TEST_F(KillTest, AtARandomMomentOfEveryWritingCommandLosesNothing) {
  struct Command {
    const char* name;
    std::function<void()> run;
  };
  const std::array commands{
      Command{"store", [this] { store(); }},
      Command{"copy to vehicles", [this] { copyToVehicles(); }},
      Command{"options", [this] { options(); }},
      Command{"update from the template", [this] { updateFromTemplate(); }},
      Command{"import of V2", [this] { importV2(); }},
      Command{"take-over", [this] { takeOver(); }},
      Command{"vehicle read", [this] { readVehicle(); }},
      Command{"vehicle write", [this] { writeVehicle(); }},
      Command{"export csv",
              [this] {
                exportFile("csv", "l.csv",
                           "\xEF\xBB\xBF"
                           "alt;alt\r\n");
              }},
      Command{"export rzk", [this] { exportFile("rzk", "RZK_LOCO.DAT", {}); }},
      Command{"window", [this] { window(); }},
  };
  const test::SimulatorProcess station({"--station", "TAMSMC", "--link", path("tams")});
  const int wanted = fromEnvironment("LOKARI_KILLS", kUsualKills);
  std::map<std::string, int> kills;
  for (size_t round = 0; killed_ < wanted && !HasFailure(); ++round) {
    const Command& command = commands[round % commands.size()];
    SCOPED_TRACE(std::string(command.name) + ", round " + std::to_string(round) + ", seed " +
                 std::to_string(seed_));
    const int before = killed_;
    command.run();
    kills[command.name] += killed_ - before;
    expectSound();
  }
  std::string report = std::to_string(killed_) + " kills, " + std::to_string(finished_) +
                       " runs to their end, seed " + std::to_string(seed_) + ":";
  for (const auto& [name, number] : kills)
    report += " " + name + " " + std::to_string(number) + ",";
  report.back() = '\n';
  std::fputs(report.c_str(), stdout);
}

}  // namespace
}  // namespace lokari
