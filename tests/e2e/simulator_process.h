// Built programs as processes: lokari-sim in the background, others to their end.
#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include <csignal>

#include "base/station_kind.h"

namespace lokari::test {

/// A built program by its name, another one by its path.
inline QString programPath(const QString& name) {
  return QDir(QCoreApplication::applicationDirPath()).absoluteFilePath(name);
}

/// A simulated station, from its first "bereit" to the end of the object.
class SimulatorProcess {
 public:
  explicit SimulatorProcess(const QStringList& arguments) {
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process_.start(programPath(QStringLiteral("lokari-sim")), arguments);
    EXPECT_TRUE(process_.waitForReadyRead()) << "the simulator did not start";
    greeting_ = process_.readLine();
  }
  ~SimulatorProcess() { stop(); }
  SimulatorProcess(const SimulatorProcess&) = delete;
  SimulatorProcess& operator=(const SimulatorProcess&) = delete;

  QByteArray greeting() const { return greeting_; }

  /// The next line that it prints.
  QByteArray nextLine() {
    while (!process_.canReadLine() && process_.waitForReadyRead()) {
    }
    return process_.readLine();
  }

  /// What it has printed since, once it has stopped.
  QByteArray rest() { return process_.readAllStandardOutput(); }

  void stop() {
    if (process_.state() == QProcess::NotRunning) return;
    process_.terminate();
    EXPECT_TRUE(process_.waitForFinished());
  }

 private:
  QProcess process_;
  QByteArray greeting_;
};

struct ProgramRun {
  int status = -1;
  QByteArray output;
  QByteArray errors;
};

/// What standard error begins with where the command switches the layout on of a kind; else
/// nothing.
inline QByteArray switchingNote(const char* kind, const char* command, StationUse use) {
  const StationKindRow* row = stationKindByName(QString::fromLatin1(kind));
  if (row == nullptr || !switchesOn(*row, use, false)) return {};
  return QByteArray("Achtung: ") + command + " schaltet an " + kind +
         " die Anlage ein, auch eine angehaltene.\n";
}

/// A program in a data folder of its own.
class RunningProgram {
 public:
  /// `outputFile` takes the standard output instead of finish().
  RunningProgram(const QString& name, const QStringList& arguments, const QString& appPath,
                 const QString& outputFile = {}) {
    if (!outputFile.isEmpty()) process_.setStandardOutputFile(outputFile);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LOKARI_APP"), appPath);
    process_.setProcessEnvironment(environment);
    process_.start(programPath(name), arguments);
    EXPECT_TRUE(process_.waitForStarted());
  }

  void interrupt() const { ::kill(static_cast<pid_t>(process_.processId()), SIGINT); }

  ProgramRun finish() {
    EXPECT_TRUE(process_.waitForFinished(60000)) << "the program did not end";
    EXPECT_EQ(process_.exitStatus(), QProcess::NormalExit);
    return {process_.exitCode(), process_.readAllStandardOutput(), process_.readAllStandardError()};
  }

 private:
  QProcess process_;
};

/// Runs a program to its end.
inline ProgramRun runProgram(const QString& name, const QStringList& arguments,
                             const QString& appPath) {
  return RunningProgram(name, arguments, appPath).finish();
}

}  // namespace lokari::test
