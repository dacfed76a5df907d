#include "link/trace.h"

#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <exception>

#include "base/clock.h"
#include "base/file_fault.h"
#include "base/plain_file.h"
#include "base/settings.h"
#include "link/trace_head.h"

namespace lokari {
namespace {

/// What every trace begins with: nothing else is ever added to or replaced.
constexpr char kBeginning[] = "Lokari-Mitschrift";

/// Whether a file may be added to or replaced: there is none, or it is empty, or a trace.
bool isOurs(const QString& path) {
  const QFileInfo info(path);
  if (!info.exists()) return true;
  // A pipe would hold the program up until somebody reads it.
  if (!info.isFile()) return false;
  if (info.size() == 0) return true;
  PlainFile file(path);
  return file.open() && file.read(sizeof kBeginning - 1) == kBeginning;
}

QString firstLine(const QDateTime& time) {
  return QStringLiteral("%1: %2, %3")
      .arg(QLatin1String(kBeginning), QString::fromUtf16(kTitle),
           time.toString(QStringLiteral("dd.MM.yyyy HH:mm:ss")));
}

}  // namespace

Trace::Trace(const QString& folder, const Clock& clock)
    : path_(folder + QStringLiteral("/TRACE.log")),
      clock_(clock),
      categories_{QLoggingCategory("lokari.line.serial", QtWarningMsg),
                  QLoggingCategory("lokari.line.can", QtWarningMsg),
                  QLoggingCategory("lokari.line.udp", QtWarningMsg)} {}

void Trace::request(const QString& path) {
  requested_ = true;
  if (!path.isEmpty()) path_ = path;
}

void Trace::requestBy(const QString& variable) {
  if (variable.isEmpty() || variable == QLatin1String("0")) return;
  request(variable == QLatin1String("1") ? QString() : variable);
}

void Trace::follow(const Settings& settings) {
  if (!requested_ && !settings.trace) {
    end();
    failed_ = false;
    return;
  }
  if (failed_) return;
  const QString head = traceHead(settings);
  if (isOn() && head == head_) return;
  begin(head);
}

void Trace::begin(const QString& head) {
  head_ = head;
  if (!isOn() && !open()) return;
  put(firstLine(clock_.localTime()) + u'\n' + head_);
}

bool Trace::open() {
  if (!isOurs(path_)) {
    fail(QStringLiteral("ist keine Mitschrift und bleibt, wie sie ist"));
    return false;
  }
  file_.setFileName(path_);
  if (!file_.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered)) {
    fail(QStringLiteral("lässt sich nicht schreiben: ") + fileFault(errno));
    return false;
  }
  size_ = file_.size();
  date_ = clock_.localTime().date();
  enable(true);
  return true;
}

void Trace::end() {
  if (!isOn()) return;
  file_.close();
  enable(false);
}

void Trace::giveUp() {
  file_.close();
  enable(false);
  failed_ = true;
}

void Trace::fail(const QString& reason) {
  giveUp();
  if (onFailure) {
    onFailure(QStringLiteral("Die Verbindung wird nicht mehr mitgeschrieben!\n%1 %2.")
                  .arg(path_, reason));
  }
}

void Trace::write(Transport transport, const QDateTime& time, const QString& text) noexcept {
  try {
    const QString line = time.toString(QStringLiteral("HH:mm:ss.zzz ")) + text;
    if (!isOn()) {
      QMessageLogger().debug(category(transport)).noquote() << line;
      return;
    }
    // Lines have the time alone.
    const bool isNewDay = date_ != time.date();
    date_ = time.date();
    put(isNewDay ? date_.toString(QStringLiteral("'# 'dd.MM.yyyy")) + u'\n' + line : line);
  } catch (const std::exception&) {
    // No memory for a line: the work goes on without a trace.
    giveUp();
  }
}

void Trace::put(const QString& text) {
  const QByteArray line = text.toUtf8() + '\n';
  if (!makeRoom(line.size())) return;
  errno = 0;
  const qint64 written = file_.write(line);
  size_ += line.size();
  if (written != line.size()) {
    fail(QStringLiteral("lässt sich nicht weiterschreiben: ") +
         fileFault(errno != 0 ? errno : ENOSPC));
  }
}

bool Trace::makeRoom(qint64 bytes) {
  if (size_ == 0 || size_ + bytes <= kMostBytes) return true;
  file_.close();
  const QString older = olderPart(path_);
  errno = 0;
  if (!isOurs(older) || std::rename(QFile::encodeName(path_).constData(),
                                    QFile::encodeName(older).constData()) != 0) {
    fail(QStringLiteral("ist voll, und %1 lässt sich nicht ersetzen").arg(older));
    return false;
  }
  if (!open()) return false;
  put(firstLine(clock_.localTime()) + QStringLiteral(", davor: ") + QFileInfo(older).fileName() +
      u'\n' + head_);
  return isOn();
}

void Trace::enable(bool on) {
  if (on == enabled_) return;
  enabled_ = on;
  for (size_t i = 0; i < categories_.size(); ++i) {
    if (on) ruled_[i] = categories_[i].isDebugEnabled();
    categories_[i].setEnabled(QtDebugMsg, on || ruled_[i]);
  }
}

}  // namespace lokari
