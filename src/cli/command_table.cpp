#include <array>

#include "cli/check_command.h"
#include "cli/command.h"
#include "cli/cv_commands.h"
#include "cli/drive_command.h"
#include "cli/export_commands.h"
#include "cli/firmware_command.h"
#include "cli/import_command.h"
#include "cli/switch_command.h"
#include "cli/test_command.h"
#include "cli/vehicle_commands.h"
#include "cli/vehicle_list.h"

namespace lokari {
namespace {

// clang-format off
constexpr std::array kCommands{
    Command{u"cv read",  u"[--main] [--address N] [--mode direct|paged|register] CV…",      u"liest CVs", cvRead},
    Command{u"cv write", u"[--main] [--address N] [--mode direct|paged|register] CV=WERT…", u"schreibt CVs", cvWrite},
    Command{u"test",     u"",                            u"prüft die Verbindung und nennt die Zentrale", testStation},
    Command{u"vehicles", u"[--where BEDINGUNG] [--csv]", u"nennt die Fahrzeuge der Datenbank", vehicles},
    Command{u"vehicle read",  u"SAMMLUNG ADRESSE [--main] [--cv LISTE]", u"liest CVs in ein Fahrzeug der Datenbank", vehicleRead},
    Command{u"vehicle write", u"SAMMLUNG ADRESSE [--main] [--cv LISTE]", u"schreibt CVs eines Fahrzeugs der Datenbank", vehicleWrite},
    Command{u"export csv", u"DATEI", u"schreibt die Fahrzeuge in eine CSV-Datei für Tabellenprogramme", exportCsvFile},
    Command{u"export rzk", u"DATEI", u"übernimmt die Fahrzeuge in eine RZK-Fahrzeugdatei", exportRzk},
    Command{u"import access", u"DATEI", u"übernimmt eine Access-Datenbank in eine neue daneben, V2 in die eingestellte", importAccess},
    Command{u"drive",    u"ADRESSE [--speed N] [--back] [--function N=on|off]… [--stop]", u"fährt ein Fahrzeug, 0 bis 127", drive},
    Command{u"switch",   u"ADRESSE N=on|off…",           u"schaltet die Ausgänge 1 bis 4 eines Funktionsteils", switchOutputs},
    Command{u"firmware", u"DATEI",                       u"spielt Firmware in ein MX1-2000-Basisgerät ein", firmware},
    Command{u"check",    u"",                            u"prüft die Datenbank und die Beschreibungsdateien", check},
};
// clang-format on

}  // namespace

std::span<const Command> commandTable() {
  return kCommands;
}

}  // namespace lokari
