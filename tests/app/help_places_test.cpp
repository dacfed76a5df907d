// Every window of the program has its page of the manual.
#include "app/help_places.h"

#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFile>
#include <QHash>
#include <QRegularExpression>
#include <QSet>

#include "support/places.h"

namespace lokari {
namespace {

QString read(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
  return QString::fromUtf8(file.readAll());
}

QStringList allSources(const QString& mask) {
  QStringList result;
  QDirIterator each(places::source() + QStringLiteral("/src"), {mask}, QDir::Files,
                    QDirIterator::Subdirectories);
  while (each.hasNext()) result << each.next();
  return result;
}

QStringList captured(const QString& text, const QString& pattern) {
  QStringList result;
  auto each = QRegularExpression(pattern).globalMatch(text);
  while (each.hasNext()) result << each.next().captured(1);
  return result;
}

/// The names that windows get in the sources: their own objectName begins with frm, dlg or main_.
QSet<QString> windowNames() {
  QSet<QString> names;
  for (const QString& mask : {QStringLiteral("*.cpp"), QStringLiteral("*.h")}) {
    for (const QString& path : allSources(mask)) {
      for (const QString& name :
           captured(read(path), QStringLiteral("\"((?:frm|dlg|main_)[A-Za-z_]+)\""))) {
        names.insert(name);
      }
    }
  }
  return names;
}

/// The classes of the sources that are windows by themselves.
QStringList windowClasses() {
  QStringList result;
  for (const QString& path : allSources(QStringLiteral("*.h"))) {
    result << captured(
        read(path),
        QStringLiteral("class (\\w+) (?:final )?: public "
                       "(?:QDialog|QMainWindow|QProgressDialog|GridDialog|SlotForm)\\b"));
    // A QWidget is a window when it is named as one.
    result << captured(
        read(path),
        QStringLiteral("class ((?:Frm|Dlg)\\w+|\\w+Window) (?:final )?: public QWidget\\b"));
  }
  result.removeDuplicates();
  return result;
}

/// "DlgComm" and "dlg_comm" alike.
QString plainName(QString name) {
  return name.remove(u'_').toLower();
}

TEST(HelpPlaces, EveryNameOfAWindowHasAPageAndEveryPageAWindow) {
  QSet<QString> inTable;
  for (const HelpPlace& place : helpPlaces()) inTable.insert(QString::fromUtf16(place.window));
  EXPECT_EQ(inTable.size(), static_cast<qsizetype>(helpPlaces().size()));
  QSet<QString> named = windowNames();
  EXPECT_EQ(QStringList((named - inTable).values()), QStringList());
  EXPECT_EQ(QStringList((inTable - named).values()), QStringList());
}

TEST(HelpPlaces, EveryWindowClassOfTheProgramHasAPage) {
  // Named otherwise than their classes.
  const QHash<QString, QString> names{{QStringLiteral("HelpWindow"), QStringLiteral("frmHelp")},
                                      {QStringLiteral("DlgList"), QStringLiteral("dlgFTypes")}};
  // Their heirs are windows.
  const QStringList bases{QStringLiteral("GridDialog"), QStringLiteral("SlotForm")};
  QSet<QString> known;
  for (const HelpPlace& place : helpPlaces()) {
    known.insert(plainName(QString::fromUtf16(place.window)));
  }
  const QStringList classes = windowClasses();
  EXPECT_GE(classes.size(), 20);
  for (const QString& window : classes) {
    if (bases.contains(window)) continue;
    EXPECT_TRUE(known.contains(plainName(names.value(window, window)))) << qPrintable(window);
  }
}

TEST(HelpPlaces, EachPageAndAnchorExists) {
  QStringList pages{searchFormPage(), messagesPage()};
  for (const HelpPlace& place : helpPlaces()) pages << QString::fromUtf16(place.page);
  for (const QString& place : pages) {
    const QStringList parts = place.split(u'#');
    const QString page = read(places::source() + QStringLiteral("/docs/handbuch/") + parts[0]);
    if (parts.size() < 2) continue;
    EXPECT_EQ(page.count(QStringLiteral(" id=\"%1\"").arg(parts[1])), 1) << qPrintable(place);
  }
}

// Nobody who begins has to write a file.
TEST(HelpPlaces, TheFirstStepsBeginWithTheOptions) {
  const QString page =
      read(places::source() + QStringLiteral("/docs/handbuch/erste-schritte.html"));
  EXPECT_EQ(captured(page, QStringLiteral("<b>([^<]+)</b>")).value(0),
            QStringLiteral("Parameter – Optionen"));
  EXPECT_FALSE(page.contains(QStringLiteral(".INI")));
}

TEST(HelpPlaces, EveryLinkOfTheManualLeadsToAPlaceThatExists) {
  const QString folder = places::source() + QStringLiteral("/docs/handbuch/");
  QDirIterator each(folder, {QStringLiteral("*.html")}, QDir::Files);
  while (each.hasNext()) {
    const QString path = each.next();
    const QString page = read(path);
    for (const QString& link : captured(page, QStringLiteral("href=\"([^\"]+)\""))) {
      const QStringList parts = link.split(u'#');
      const QString target = parts[0].isEmpty() ? page : read(folder + parts[0]);
      if (parts.size() > 1) {
        EXPECT_TRUE(target.contains(QStringLiteral(" id=\"%1\"").arg(parts[1])))
            << qPrintable(path + QStringLiteral(": ") + link);
      }
    }
    for (const QString& heading : captured(page, QStringLiteral("<h2([^>]*)>"))) {
      EXPECT_TRUE(heading.startsWith(QStringLiteral(" id="))) << qPrintable(path);
    }
  }
}

}  // namespace
}  // namespace lokari
