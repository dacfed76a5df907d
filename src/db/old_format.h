// Databases of the older format V2: how the program recognises one and takes its vehicles over.
#pragma once

#include <QString>

#include <optional>

namespace lokari {

class OldFormat {
 public:
  virtual ~OldFormat() = default;

  /// The number of vehicles when the file is a database of format V2, else nothing.
  virtual std::optional<int> vehicles(const QString& path) = 0;
  /// Takes the vehicles of that file into the open database, with its own messages.
  virtual void ConvertDB(const QString& path) = 0;
};

/// For a program that reads no old database: it recognises none, so that such a file is refused by
/// a message like every foreign one.
class NoOldFormat final : public OldFormat {
 public:
  std::optional<int> vehicles(const QString&) override { return std::nullopt; }
  void ConvertDB(const QString&) override {}
};

}  // namespace lokari
