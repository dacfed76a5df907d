#include "app/ui/main_menu.h"

#include <QAction>
#include <QMenu>

#include <array>
#include <stdexcept>
#include <vector>

namespace lokari {
namespace {

struct Entry {
  const char16_t* name;
  const char16_t* caption;
  const char16_t* shortcut = u"";
  bool lineAbove = false;
};

struct Menu {
  const char16_t* name;
  const char16_t* caption;
  std::vector<Entry> entries;
};

const std::array<Menu, 4>& menus() {
  static const std::array<Menu, 4> table{{
      {u"mnuFile",
       u"&Datei",
       {
           {u"mnuDbOpen", u"Datenbank ö&ffnen...", u"Ctrl+O"},
           {u"mnuDbNew", u"&Neue Datenbank anlegen..."},
           {u"mnuImpDec", u"Decodertyp &importieren...", u"", true},
           {u"mnuUpdDB", u"Datenbank aktualisieren..."},
           {u"mnuExpRZK", u"Datenbank nach &RZK exportieren..."},
           {u"mnuFirmware", u"Fir&mware einspielen...", u"", true},
           {u"mnuDbPrint", u"&Drucken...", u"Ctrl+P", true},
           {u"mnuFileQuit", u"&Beenden", u"Ctrl+Q", true},
       }},
      {u"mnuEdit",
       u"&Bearbeiten",
       {
           {u"mnuEditNew", u"&Neu", u"Ctrl+N"},
           {u"mnuEditCopy", u"&Kopieren", u"Ctrl+Shift+C"},
           {u"mnuEditInsert", u"&Einfügen", u"Ctrl+Shift+V"},
           {u"mnuEditDelete", u"&Löschen", u"Ctrl+Shift+Del"},
           {u"mnuEditFind", u"&Suchen...", u"Ctrl+F", true},
           {u"mnuEditFindNext", u"&Weitersuchen", u"F3"},
           {u"mnuEditUndo", u"Löschen &rückgängig machen", u"", true},
       }},
      {u"mnuPara",
       u"&Parameter",
       {
           {u"mnuDcManufValues", u"&Decoderhersteller..."},
           {u"mnuDcTypeValues", u"Decoder&typen..."},
           {u"mnuFzTypeValues", u"&Fahrzeugtypen...", u"", true},
           {u"mnuLineValues", u"&Bahnverwaltungen..."},
           {u"mnuEraValues", u"&Epochen..."},
           {u"mnuManufValues", u"&Hersteller..."},
           {u"mnuMotorValues", u"&Motortypen..."},
           {u"mnuParaOptions", u"&Optionen...", u"", true},
       }},
      {u"mnuHelp",
       u"&?",
       {
           {u"mnuHelpContents", u"&Inhalt..."},
           {u"mnuHelpSearch", u"&Suchen...", u"Shift+F1"},
           {u"mnuReadMe", u"&ReadMe-Datei anzeigen", u"", true},
           {u"mnuWeb", u"Lokari &Webseite"},
           {u"mnuHelpInfo", u"&Info zu Lokari", u"", true},
       }},
  }};
  return table;
}

}  // namespace

MainMenu::MainMenu(QWidget* parent) : QMenuBar(parent) {
  setObjectName(QStringLiteral("menuBar"));
  for (const Menu& row : menus()) {
    QMenu* menu = addMenu(QString::fromUtf16(row.caption));
    menu->setObjectName(QString::fromUtf16(row.name));
    for (const Entry& entry : row.entries) {
      if (entry.lineAbove) menu->addSeparator();
      QAction* action = menu->addAction(QString::fromUtf16(entry.caption));
      action->setObjectName(QString::fromUtf16(entry.name));
      action->setShortcut(QKeySequence(QString::fromUtf16(entry.shortcut)));
      action->setEnabled(false);
    }
  }
}

QAction* MainMenu::entry(const QString& name) const {
  auto* action = findChild<QAction*>(name);
  if (action == nullptr) throw std::logic_error("no menu entry " + name.toStdString());
  return action;
}

}  // namespace lokari
