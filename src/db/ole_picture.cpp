#include "db/ole_picture.h"

#include <algorithm>
#include <initializer_list>

namespace lokari {
namespace {

constexpr quint64 kEmbedded = 2;
constexpr quint64 kPackage = 2;

bool startsWithOneOf(const QByteArray& data, std::initializer_list<QByteArrayView> heads) {
  return std::any_of(heads.begin(), heads.end(),
                     [&](QByteArrayView head) { return data.startsWith(head); });
}

/// Reads on and on; behind the end it gives nothing and says so.
class Reader {
 public:
  explicit Reader(QByteArray data) : data_(std::move(data)) {}

  bool good() const { return good_; }
  void seek(quint64 position) {
    good_ = good_ && position <= static_cast<quint64>(data_.size());
    if (good_) position_ = static_cast<qsizetype>(position);
  }
  quint64 number(int bytes) {
    const QByteArray field = take(static_cast<quint64>(bytes));
    quint64 number = 0;
    for (qsizetype i = field.size(); i-- > 0;)
      number = number << 8U | static_cast<quint8>(field[i]);
    return number;
  }
  QByteArray counted() { return take(number(4)); }
  void skipText() {
    const qsizetype end = data_.indexOf('\0', position_);
    good_ = good_ && end >= 0;
    if (good_) position_ = end + 1;
  }

 private:
  QByteArray take(quint64 bytes) {
    good_ = good_ && bytes <= static_cast<quint64>(data_.size() - position_);
    if (!good_) return {};
    position_ += static_cast<qsizetype>(bytes);
    return data_.mid(position_ - static_cast<qsizetype>(bytes), static_cast<qsizetype>(bytes));
  }

  QByteArray data_;
  qsizetype position_ = 0;
  bool good_ = true;
};

QByteArray packagedFile(const QByteArray& data) {
  Reader reader(data);
  if (reader.number(2) != kPackage) return {};
  reader.skipText();
  reader.skipText();
  reader.number(4);
  reader.counted();
  return reader.counted();
}

}  // namespace

bool isPictureFile(const QByteArray& data) {
  return startsWithOneOf(data, {"BM", "\xFF\xD8\xFF", "\x89PNG\r\n\x1A\n"});
}

bool isOleWrapped(const QByteArray& data) {
  return data.startsWith("\x15\x1C");
}

std::optional<QByteArray> pictureInOle(const QByteArray& data) {
  Reader reader(data);
  reader.number(2);
  reader.seek(reader.number(2));
  reader.number(4);
  if (reader.number(4) != kEmbedded) return std::nullopt;
  for (int name = 0; name < 3; ++name) reader.counted();
  const QByteArray object = reader.counted();
  for (const QByteArray& file : {object, packagedFile(object)}) {
    if (reader.good() && isPictureFile(file)) return file;
  }
  return std::nullopt;
}

}  // namespace lokari
