// Look-ups in the decoder catalogue: makers (DCMANUFS) and decoder types (DECODERS).
//
// Nothing here throws: a storage failure gives nothing, like a row that is not there, since a
// window that asks has the same way on in both cases.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace lokari {

class Database;

/// All makers: those with a sequence number in its order, then the others by name.
inline constexpr char16_t kMakersQuery[] =
    u"SELECT * FROM DCMANUFS ORDER BY ISNULL(DC_MANUF_SEQ) DESC, DC_MANUF_SEQ, DC_MANUF_TEXT";

/// The types of one maker: those with a sequence number in its order, then the others by name.
QString typesQuery(int maker);

struct Maker {
  int number = 0;  ///< 0 to 255; maker 0 has no types
  QString name;    ///< also the name of the folder of its description files

  friend bool operator==(const Maker&, const Maker&) = default;
};

class Catalogue {
 public:
  /// Without a database every list is empty.
  explicit Catalogue(const Database* database = nullptr) : database_(database) {}

  /// Changes to another database, which must outlive the catalogue or the next bind().
  void bind(const Database* database) { database_ = database; }

  /// All makers in the order of kMakersQuery.
  QList<Maker> makers() const;

  /// The maker of a number.
  std::optional<Maker> makerByNumber(int number) const;

  /// The first maker of makers() with that name, without regard to case.
  std::optional<Maker> makerByName(const QString& name) const;

  /// The types of one maker in the order of typesQuery().
  QStringList types(int maker) const;

  /// The type "DC_MANUF = maker AND DC_DECODER = 'type'" as it is stored; case does not count.
  std::optional<QString> type(int maker, const QString& type) const;

 private:
  const Database* database_;
};

}  // namespace lokari
