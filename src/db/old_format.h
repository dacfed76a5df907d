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

}  // namespace lokari
