// Says that a program works in a folder. The system gives it back when the program ends, however it
// ends, so that nothing has to be found out about the dead.
#pragma once

#include <QString>

namespace lokari {

class FolderLock {
 public:
  /// Takes the folder if nobody has it.
  explicit FolderLock(const QString& folder);
  ~FolderLock();
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;

  bool isHeld() const { return file_ >= 0; }

 private:
  int file_ = -1;
};

}  // namespace lokari
