// A settings file in a folder of its own, for tests.
#pragma once

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace lokari::test {

class IniText {
 public:
  explicit IniText(const QByteArray& text) {
    QFile file(path());
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
  }

  QString path() const { return folder_.filePath(QStringLiteral("LOKARI.INI")); }

  QByteArray text() const {
    QFile file(path());
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
  }

 private:
  QTemporaryDir folder_;
};

}  // namespace lokari::test
