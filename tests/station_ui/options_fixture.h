// The options dialog over a folder of its own: a settings file, a port table and adapters.
#pragma once

#include <gtest/gtest.h>

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>

#include "base/settings.h"
#include "base/ui/window_scale.h"
#include "station/ui/dlg_options.h"
#include "support/link_fixture.h"

namespace lokari::test {

class OptionsFixture : public LinkFixture {
 protected:
  explicit OptionsFixture(StationKind kind = StationKind::TamsMc) : LinkFixture(kind) {
    link.setView(nullptr);
    settings.dbPath = QStringLiteral("/home/a/Bahn.MDB");
    EXPECT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("adapters")));
  }

  void plugIn(const char* name) {
    QFile file(folder.filePath(QStringLiteral("adapters/") + QString::fromLatin1(name)));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
  }

  /// Opens the dialog on the settings as they are.
  void open() {
    dialog = std::make_unique<DlgOptions>(
        OptionsParts{settings, link, prompt, IniFile(iniPath()),
                     PortTable(folder.path(), folder.filePath(QStringLiteral("adapters")))},
        scale);
    dialog->show();
    dialog->activateWindow();
    QApplication::processEvents();
  }

  template <typename T>
  T* control(const QString& name) const {
    T* found = dialog->findChild<T*>(name);
    EXPECT_NE(found, nullptr) << name.toStdString();
    return found;
  }
  QRadioButton* radio(const char* name) const {
    return control<QRadioButton>(QString::fromLatin1(name));
  }
  QLineEdit* line_(const char* name) const { return control<QLineEdit>(QString::fromLatin1(name)); }
  QWidget* widget(const char* name) const { return control<QWidget>(QString::fromLatin1(name)); }
  QRadioButton* port(int number) const {
    return control<QRadioButton>(QStringLiteral("optComPort%1").arg(number));
  }
  void click(const char* name) const {
    auto* button = control<QAbstractButton>(QString::fromLatin1(name));
    // A radio button takes clicks on its mark and its text, which begin at the left.
    QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(10, button->height() / 2));
    QApplication::processEvents();
  }

  QString address() const {
    return line_("txtIP1")->text() + u'.' + line_("txtIP2")->text() + u'.' +
           line_("txtIP3")->text() + u'.' + line_("txtIP4")->text();
  }
  QString visiblePorts() const {
    QStringList shown;
    for (int n = 1; n <= 10; ++n) {
      if (port(n)->isVisible()) shown << QString::number(n);
    }
    return shown.join(u' ');
  }

  QString iniPath() const { return folder.filePath(QStringLiteral("LOKARI.INI")); }
  QString iniText() const {
    QFile file(iniPath());
    return file.open(QIODevice::ReadOnly) ? QString::fromLatin1(file.readAll()) : QString();
  }

  QTemporaryDir folder;
  WindowScale scale{folder.filePath(QStringLiteral("WINDOW.INI"))};
  std::unique_ptr<DlgOptions> dialog;
};

}  // namespace lokari::test
