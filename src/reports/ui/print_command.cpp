#include "reports/ui/print_command.h"

#include <QProcessEnvironment>

namespace lokari {
namespace {

/// A server that is there answers at once; one far away may take its time.
constexpr Millis kPatience = 30'000;

QProcessEnvironment plainWords() {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
  return environment;
}

}  // namespace

PrintCommand::PrintCommand(const QString& program, const QStringList& arguments, Words words,
                           Clock& clock, std::function<void()> ended)
    : tell_(std::move(ended)), clock_(clock) {
  if (words == Words::Plain) process_.setProcessEnvironment(plainWords());
  process_.setStandardInputFile(QProcess::nullDevice());
  QObject::connect(&process_, &QProcess::finished, &process_,
                   [this](int code, QProcess::ExitStatus status) {
                     const bool good = status == QProcess::NormalExit && code == 0;
                     end(good ? Outcome::Done : Outcome::Refused);
                   });
  QObject::connect(&process_, &QProcess::errorOccurred, &process_,
                   [this](QProcess::ProcessError error) {
                     if (error == QProcess::FailedToStart) end(Outcome::Missing);
                   });
  limit_ = clock.after(kPatience, [this] { end(Outcome::Silent); });
  process_.start(program, arguments);
}

PrintCommand::~PrintCommand() {
  stop();
}

void PrintCommand::stop() {
  process_.disconnect();
  if (process_.state() == QProcess::NotRunning) return;
  // It waits for a server and holds nothing of ours: its end takes no time.
  process_.kill();
  process_.waitForFinished();
}

void PrintCommand::end(Outcome outcome) {
  if (ended_) return;
  ended_ = true;
  outcome_ = outcome;
  output_ = QString::fromLocal8Bit(process_.readAllStandardOutput());
  errors_ = QString::fromLocal8Bit(process_.readAllStandardError()).trimmed();
  // Whoever is told may end the command, and no program's signal stands on the stack then.
  telling_ = clock_.after(0, [this] {
    const auto tell = tell_;
    if (outcome_ == Outcome::Silent) stop();
    if (tell) tell();
  });
}

}  // namespace lokari
