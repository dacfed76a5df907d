// Databases that this program does not work on, and how what stands in them comes into its own.
#pragma once

#include <QString>

#include <optional>

namespace lokari {

class DatabaseSession;

class OldFormat {
 public:
  virtual ~OldFormat() = default;

  /// The number of vehicles when the file is a database of format V2, else nothing.
  virtual std::optional<int> vehicles(const QString& path) = 0;
  /// Takes the vehicles of that file into the database that is open in `session`, with its own
  /// messages.
  virtual void ConvertDB(const QString& path, DatabaseSession& session) = 0;

  /// Takes a database of Access over into a new one beside it, with its own question and messages.
  /// Gives the path of the database to open instead; an empty one when there is none, which the
  /// user knows; nothing when this program reads no such files.
  virtual std::optional<QString> takeOver(const QString& path) = 0;
};

/// For a program that reads no other database: it recognises none, so that such a file is refused
/// by a message like every foreign one.
class NoOldFormat final : public OldFormat {
 public:
  std::optional<int> vehicles(const QString&) override { return std::nullopt; }
  void ConvertDB(const QString&, DatabaseSession&) override {}
  std::optional<QString> takeOver(const QString&) override { return std::nullopt; }
};

}  // namespace lokari
