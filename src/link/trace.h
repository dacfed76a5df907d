// The trace: what goes over the line to the station, a line a message, in a file that a user can
// send. It is off unless the settings or requestTrace() want it, and replaces nothing of CAN.log.
#pragma once

#include <QDateTime>
#include <QFile>
#include <QLoggingCategory>
#include <QString>

#include <array>
#include <functional>

#include "base/station_kind.h"

namespace lokari {

class Clock;
struct Settings;

class Trace {
 public:
  /// A file that has grown to so many bytes becomes its own older part, in place of the part
  /// before.
  static constexpr qint64 kMostBytes = 2'000'000;

  /// `folder` is where the file stands that nobody has named, TRACE.log. `clock` must outlive the
  /// trace.
  Trace(const QString& folder, const Clock& clock);

  /// Wanted whatever the settings say; into the file of that name unless it is empty.
  void request(const QString& path = {});
  /// What an environment variable asks for: nothing or "0" for none, "1" for the file in the
  /// folder, else the file of that name.
  void requestBy(const QString& variable);

  /// Begins, or ends, as it is wanted now, with a head that tells of the station and the settings
  /// that matter to it. While it runs, settings that have changed get a head of their own.
  void follow(const Settings& settings);

  bool isOn() const { return file_.isOpen(); }
  /// Where it stands or would stand.
  const QString& path() const { return path_; }
  /// The older part of a file that has grown too large.
  static QString olderPart(const QString& path) { return path + QStringLiteral(".1"); }

  /// Whether anybody wants to know: the file, or a logging rule for "lokari.line.*", which sends
  /// the lines of a trace without a file to the logger.
  bool wants(Transport transport) const { return category(transport).isDebugEnabled(); }
  /// "lokari.line.serial", "lokari.line.can", "lokari.line.udp"
  const QLoggingCategory& category(Transport transport) const {
    return categories_[static_cast<size_t>(transport)];
  }

  /// "10:00:01.250 " in local time, and the text. Never throws: a file that takes no more ends the
  /// trace.
  void write(Transport transport, const QDateTime& time, const QString& text) noexcept;

  /// Told once when the trace cannot go on, a German sentence. It is called in the middle of an
  /// exchange: it must neither wait nor let events run.
  std::function<void(const QString&)> onFailure;

 private:
  void begin(const QString& head);
  void end();
  /// It is over until it is switched off and on again.
  void giveUp();
  /// giveUp(), and `reason`, the end of a sentence, is told.
  void fail(const QString& reason);
  bool open();
  /// Starts a new file when this one has grown too large. False when the trace has failed.
  bool makeRoom(qint64 bytes);
  void put(const QString& text);
  void enable(bool on);

  QString path_;
  const Clock& clock_;
  QFile file_;
  qint64 size_ = 0;
  QDate date_;    ///< of the last line
  QString head_;  ///< the last one, without its first line
  bool requested_ = false;
  bool failed_ = false;
  bool enabled_ = false;                        ///< the categories, for the file
  std::array<QLoggingCategory, 3> categories_;  ///< in the order of the transports
  std::array<bool, 3> ruled_{};                 ///< what logging rules have made of them
};

}  // namespace lokari
