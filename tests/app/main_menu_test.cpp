#include "app/ui/main_menu.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QMenu>

#include <stdexcept>

namespace lokari {
namespace {

/// "name caption" of every entry of a menu.
QStringList entriesOf(const MainMenu& bar, const char16_t* name) {
  const auto* menu = bar.findChild<QMenu*>(QString::fromUtf16(name));
  QStringList result{menu->title()};
  for (const QAction* action : menu->actions()) {
    if (!action->isSeparator()) {
      result << action->objectName() + u' ' + action->text();
    }
  }
  return result;
}

TEST(MainMenu, TheFileMenuHasItsEntries) {
  const MainMenu bar(nullptr);
  EXPECT_EQ(entriesOf(bar, u"mnuFile"),
            QStringList({QStringLiteral("&Datei"), QStringLiteral("mnuDbOpen Datenbank ö&ffnen..."),
                         QStringLiteral("mnuDbNew &Neue Datenbank anlegen..."),
                         QStringLiteral("mnuImpDec Decodertyp &importieren..."),
                         QStringLiteral("mnuUpdDB Datenbank aktualisieren..."),
                         QStringLiteral("mnuExpRZK Datenbank nach &RZK exportieren..."),
                         QStringLiteral("mnuFirmware Fir&mware einspielen..."),
                         QStringLiteral("mnuDbPrint &Drucken..."),
                         QStringLiteral("mnuFileQuit &Beenden")}));
}

TEST(MainMenu, TheEditMenuHasItsEntries) {
  const MainMenu bar(nullptr);
  EXPECT_EQ(entriesOf(bar, u"mnuEdit"),
            QStringList(
                {QStringLiteral("&Bearbeiten"), QStringLiteral("mnuEditNew &Neu"),
                 QStringLiteral("mnuEditCopy &Kopieren"), QStringLiteral("mnuEditInsert &Einfügen"),
                 QStringLiteral("mnuEditDelete &Löschen"), QStringLiteral("mnuEditFind &Suchen..."),
                 QStringLiteral("mnuEditFindNext &Weitersuchen"),
                 QStringLiteral("mnuEditUndo Löschen &rückgängig machen")}));
}

TEST(MainMenu, TheParameterMenuHasItsEntries) {
  const MainMenu bar(nullptr);
  EXPECT_EQ(entriesOf(bar, u"mnuPara"),
            QStringList({QStringLiteral("&Parameter"),
                         QStringLiteral("mnuDcManufValues &Decoderhersteller..."),
                         QStringLiteral("mnuDcTypeValues Decoder&typen..."),
                         QStringLiteral("mnuFzTypeValues &Fahrzeugtypen..."),
                         QStringLiteral("mnuLineValues &Bahnverwaltungen..."),
                         QStringLiteral("mnuEraValues &Epochen..."),
                         QStringLiteral("mnuManufValues &Hersteller..."),
                         QStringLiteral("mnuMotorValues &Motortypen..."),
                         QStringLiteral("mnuParaOptions &Optionen...")}));
}

TEST(MainMenu, TheHelpMenuHasItsEntries) {
  const MainMenu bar(nullptr);
  EXPECT_EQ(entriesOf(bar, u"mnuHelp"),
            QStringList({QStringLiteral("&?"), QStringLiteral("mnuHelpContents &Inhalt..."),
                         QStringLiteral("mnuHelpSearch &Suchen..."),
                         QStringLiteral("mnuReadMe &ReadMe-Datei anzeigen"),
                         QStringLiteral("mnuWeb Lokari &Webseite"),
                         QStringLiteral("mnuHelpInfo &Info zu Lokari")}));
}

TEST(MainMenu, AnEntryIsDisabledUntilItDoesSomething) {
  MainMenu bar(nullptr);
  QAction* entry = bar.entry(QStringLiteral("mnuDbOpen"));
  EXPECT_FALSE(entry->isEnabled());
  int runs = 0;
  bar.enable(QStringLiteral("mnuDbOpen"), [&] { ++runs; });
  EXPECT_TRUE(entry->isEnabled());
  entry->trigger();
  EXPECT_EQ(runs, 1);
}

TEST(MainMenu, AnUnknownEntryIsAProgrammingError) {
  const MainMenu bar(nullptr);
  EXPECT_THROW(bar.entry(QStringLiteral("mnuNone")), std::logic_error);
}

}  // namespace
}  // namespace lokari
