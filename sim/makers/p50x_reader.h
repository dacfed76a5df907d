// Commands of the P50Xb protocol out of a stream. Each stands behind the letter x or X; what is
// text behind it, up to its 0D, is none of them, but the text ZzA1 (behind X) ends the need for the
// letter.
#pragma once

#include <QByteArray>
#include <QList>

#include <functional>

namespace lokari::sim::makers {

inline constexpr int kFirstP50xCommand = 0x80;

class P50xReader {
 public:
  /// `sizeOf` gives the bytes of a command by its first one, which is counted; 1 for an unknown
  /// one.
  explicit P50xReader(std::function<qsizetype(int)> sizeOf) : sizeOf_(std::move(sizeOf)) {}

  QList<QByteArray> feed(const QByteArray& data);
  void clear() { input_.clear(); }

 private:
  /// Takes what stands at the front; false when it is not whole yet.
  bool take(QList<QByteArray>& commands);
  bool takeCommand(qsizetype begin, QList<QByteArray>& commands);
  bool takeText();

  std::function<qsizetype(int)> sizeOf_;
  QByteArray input_;
  bool withoutLetter_ = false;
};

}  // namespace lokari::sim::makers
