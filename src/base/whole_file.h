// A file that is written beside its place and takes it only when it is whole on the medium.
#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QString>

namespace lokari {

/// What was there before stands until commit(), and stays for good without it. A link is followed;
/// the mode and the group of a file that is replaced are kept. Nothing but plain files is replaced.
///
/// The first write that does not take every byte is the file's fault for good: whoever paints or
/// streams into it may pass over the failure, commit() does not.
class WholeFile final : public QIODevice {
  Q_OBJECT

 public:
  /// `temporary` is the name that the new file has until it is whole, and stays behind with without
  /// commit(); empty for a name of its own in the folder of `place`, which leaves nothing behind.
  explicit WholeFile(const QString& place, QString temporary = {});
  ~WholeFile() override;

  /// Makes the new file. False with fault().
  bool begin();
  /// Brings everything to the medium and proves that all of it has arrived. False with fault();
  /// readBack() gives what is there.
  bool bringToDisk();
  /// bringToDisk(), then takes the place. False with fault(): the old file stands then.
  bool commit();

  /// The bytes of the new file from `at` on, fewer at its end.
  QByteArray readBack(qint64 at, qint64 count) const;
  /// Bytes that were handed over.
  qint64 length() const { return length_; }

  /// What went wrong first, in German; empty for nothing.
  const QString& fault() const { return fault_; }
  /// Makes it a file that is not whole.
  void fail(const QString& fault);

  bool isSequential() const override { return true; }

 protected:
  qint64 readData(char* data, qint64 count) override;
  qint64 writeData(const char* data, qint64 count) override;

 private:
  bool failed(int error);
  bool writeOut();
  bool keepModeAndGroup();

  QString place_;
  QString temporary_;
  const bool staysBehind_;
  QByteArray waiting_;
  qint64 length_ = 0;
  int file_ = -1;
  bool onDisk_ = false;
  QString fault_;
};

}  // namespace lokari
