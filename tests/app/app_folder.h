// A data folder with a database of a few vehicles, and a workbench on it.
#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <optional>

#include "app/workbench.h"
#include "base/desktop.h"
#include "db/database_session.h"
#include "db/old_format.h"
#include "db/record_set.h"
#include "link/can_log.h"
#include "support/memory_can.h"
#include "support/memory_line.h"
#include "support/memory_socket.h"
#include "support/places.h"
#include "support/scripted_prompt.h"
#include "support/virtual_clock.h"

namespace lokari::test {

/// Writes down what leaves the program.
class RecordingDesktop final : public Desktop {
 public:
  bool openFile(const QString& path) override {
    log << QStringLiteral("file ") + path;
    return works;
  }
  bool openWebPage(const QString& url) override {
    log << QStringLiteral("web ") + url;
    return works;
  }
  void setClipboardPicture(const QByteArray& picture) override { clipboard = picture; }
  QByteArray clipboardPicture() const override { return clipboard; }
  void showHelpContents(const QString& helpFile) override {
    log << QStringLiteral("contents ") + helpFile;
  }
  void showHelpSearch(const QString& helpFile) override {
    log << QStringLiteral("search ") + helpFile;
  }
  void showHelp(const QString& /*helpFile*/, const HelpQuestion& question) override {
    log << QStringLiteral("help ") + question.page;
    message = question.message;
  }

  QStringList log;
  QByteArray clipboard;
  QString message;  ///< of the box that help was last asked for
  bool works = true;
};

struct Vehicle {
  QVariant collection;  ///< invalid: Null
  int address;
  QString shortName;
};

class AppFolder {
 public:
  AppFolder() {
    EXPECT_TRUE(QDir(path()).mkpath(QStringLiteral("DB")));
    copyTemplate(QStringLiteral("EMPTY.MDB"));
    copyTemplate(databaseName());
    write(QStringLiteral("LOKARI.qhc"), "");
  }

  QString path() const { return folder_.path(); }
  QString file(const QString& name) const { return folder_.filePath(name); }
  static QString databaseName() { return QStringLiteral("DB/LOKARIV3.MDB"); }

  void copyTemplate(const QString& name) const {
    EXPECT_TRUE(QFile::copy(places::emptyDatabase(), file(name)));
    QFile::setPermissions(file(name), QFile::ReadOwner | QFile::WriteOwner);
  }

  /// A file that an installation carries.
  void copyData(const QString& name) const {
    EXPECT_TRUE(QFile::copy(places::data() + QStringLiteral("/") + name, file(name)));
  }

  void write(const QString& name, const QByteArray& text) const {
    EXPECT_TRUE(QDir().mkpath(QFileInfo(file(name)).path()));
    QFile out(file(name));
    EXPECT_TRUE(out.open(QIODevice::WriteOnly));
    out.write(text);
  }

  QByteArray read(const QString& name) const {
    QFile in(file(name));
    EXPECT_TRUE(in.open(QIODevice::ReadOnly)) << qPrintable(name);
    return in.readAll();
  }

  void settings(const QByteArray& keys) const {
    write(QStringLiteral("LOKARI.INI"), "[LOKARI]\r\n" + keys);
  }

  void add(const QList<Vehicle>& vehicles) const {
    Database database(file(databaseName()));
    RecordSet records;
    records.open(database, QStringLiteral("SELECT * FROM LOCO_DAT"));
    for (const Vehicle& vehicle : vehicles) {
      records.AddNew();
      records.setValue(QStringLiteral("DC_COLL"), vehicle.collection);
      records.setValue(QStringLiteral("DC_ADR"), vehicle.address);
      records.setValue(QStringLiteral("DC_TYPE"), 1);
      records.setValue(QStringLiteral("ST_SNAME"), vehicle.shortName);
      records.Update();
    }
  }

  /// Columns of the vehicle with that address.
  void change(int address, const QList<std::pair<QString, QVariant>>& columns) const {
    Database database(file(databaseName()));
    RecordSet records;
    records.open(database, QStringLiteral("SELECT * FROM LOCO_DAT"));
    records.FindFirst(QStringLiteral("DC_ADR=%1").arg(address));
    records.Edit();
    for (const auto& [column, value] : columns) records.setValue(column, value);
    records.Update();
  }

  /// A column of the vehicle with that address, as stored.
  QVariant stored(int address, const QString& column) const {
    Database database(file(databaseName()));
    RecordSet records;
    records.open(database, QStringLiteral("SELECT * FROM LOCO_DAT"));
    records.FindFirst(QStringLiteral("DC_ADR=%1").arg(address));
    return records.NoMatch() ? QVariant() : records.value(column);
  }

 private:
  QTemporaryDir folder_;
};

/// Everything a workbench needs, scripted.
class Outside {
 public:
  WorkbenchParts parts(const AppFolder& folder, const QString& commandLine = {}) {
    return {appPathsFor(folder.path(), commandLine),
            clock,
            prompt,
            desktop,
            {serial, udp, can, &canLog.emplace(folder.file(QStringLiteral("CAN.log")), clock)},
            oldFormat,
            QDBusConnection(QStringLiteral("none"))};
  }

  VirtualClock clock;
  ScriptedPrompt prompt;
  RecordingDesktop desktop;
  MemoryLine serial{clock};
  MemorySocket udp{clock};
  MemoryCan can;
  std::optional<CanLog> canLog;
  NoOldFormat oldFormat;
};

}  // namespace lokari::test
