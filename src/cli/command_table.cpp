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

constexpr int kHighestAddress = 10239;
constexpr int kHighestCv = 1024;
constexpr int kHighestSpeed = 127;
constexpr int kHighestFunction = 28;
constexpr int kOutputs = 4;

// clang-format off

// ---- Rows that several commands have -------------------------------------------------------------

constexpr ArgumentRow kJson{u"--json", u"", Form::Flag, u"Ergebnisse als JSON, ein Objekt je Zeile"};
constexpr ArgumentRow kMain{u"--main", u"", Form::Flag, u"auf dem Hauptgleis statt auf dem Programmiergleis"};
constexpr ArgumentRow kCvAddress{u"--address", u"N", Form::Number, u"Adresse des Fahrzeugs; auf dem Hauptgleis nötig", 1, kHighestAddress};
constexpr ArgumentRow kMode{u"--mode", u"direct|paged|register", Form::Choice, u"Programmierart; ohne Angabe direct"};
constexpr ArgumentRow kCollection{u"SAMMLUNG", u"", Form::Text, u"Sammlung des Fahrzeugs; \"\" für keine", 0, 0, false, 0, u"Es fehlen Sammlung und Adresse!"};
constexpr ArgumentRow kVehicleAddress{u"ADRESSE", u"", Form::Number, u"Adresse des Fahrzeugs", 1, kHighestAddress, false, 0, u"Es fehlen Sammlung und Adresse!"};
constexpr ArgumentRow kCvList{u"--cv", u"LISTE", Form::Text, u"nur diese CVs: Nummern und Bereiche mit Komma, wie 3,67-94; 257:2 ist CV 257 der Bank 2, 1 die Adresse"};

// ---- The commands --------------------------------------------------------------------------------

constexpr std::array kCvRead{
    ArgumentRow{u"CV", u"", Form::Numbers, u"Nummern, auch Bereiche wie 1-28", 1, kHighestCv, true, 0, u"Es fehlt die Nummer der CV!"},
    kMain, kCvAddress, kMode, kJson};
constexpr std::array kCvWrite{
    ArgumentRow{u"CV=WERT", u"", Form::Setting, u"die CV, hinter = ein Wert von 0 bis 255", 1, kHighestCv, true, 0, u"Es fehlt CV=Wert!"},
    kMain, kCvAddress, kMode, kJson};
constexpr std::array kTest{kJson};
constexpr std::array kVehicles{
    ArgumentRow{u"--where", u"BEDINGUNG", Form::Text, u"nur Fahrzeuge, für die sie gilt, wie \"DC_COLL='Anlage'\""},
    ArgumentRow{u"--csv", u"", Form::Flag, u"durch Komma getrennt, mit einer Zeile der Namen", 0, 0, false, 1},
    ArgumentRow{u"--json", u"", Form::Flag, u"Ergebnisse als JSON, ein Objekt je Zeile", 0, 0, false, 1}};
constexpr std::array kVehicleJob{kCollection, kVehicleAddress, kMain, kCvList, kJson};
constexpr std::array kExportCsv{
    ArgumentRow{u"DATEI", u"", Form::Text, u"die CSV-Datei", 0, 0, false, 0, u"export csv braucht einen Dateinamen!"}};
constexpr std::array kExportRzk{
    ArgumentRow{u"DATEI", u"", Form::Text, u"die Fahrzeugdatei; eine neue wird mit --yes angelegt", 0, 0, false, 0, u"export rzk braucht einen Dateinamen!"}};
constexpr std::array kImportAccess{
    ArgumentRow{u"DATEI", u"", Form::Text, u"die Access-Datenbank; mit --yes kommen Beschreibungsdateien mit, die neben ihr liegen und hier fehlen", 0, 0, false, 0, u"import access braucht einen Dateinamen!"}};
constexpr std::array kDrive{
    ArgumentRow{u"ADRESSE", u"", Form::Number, u"Adresse des Fahrzeugs", 1, kHighestAddress, false, 0, u"Es fehlt die Adresse!"},
    ArgumentRow{u"--speed", u"N", Form::Number, u"Stellung des Reglers; die Richtung bleibt", 0, kHighestSpeed},
    ArgumentRow{u"--forward", u"", Form::Flag, u"vorwärts", 0, 0, false, 1},
    ArgumentRow{u"--back", u"", Form::Flag, u"rückwärts", 0, 0, false, 1},
    ArgumentRow{u"--function", u"N=on|off", Form::Switching, u"Funktion ein oder aus, soweit die Zentrale sie hat", 0, kHighestFunction, true},
    ArgumentRow{u"--stop", u"", Form::Flag, u"hält die ganze Anlage an, noch bevor etwas gelesen wird", 0, 0, false, 2},
    ArgumentRow{u"--go", u"", Form::Flag, u"gibt die Anlage wieder frei, wenn alles andere gesendet ist", 0, 0, false, 2},
    kJson};
constexpr std::array kSwitch{
    ArgumentRow{u"ADRESSE", u"", Form::Number, u"Adresse des Funktionsteils", 1, kHighestAddress, false, 0, u"Es fehlen Adresse und Ausgang!"},
    ArgumentRow{u"N=on|off", u"", Form::Switching, u"Ausgang ein oder aus; es wird immer gesendet", 1, kOutputs, true, 0, u"Es fehlen Adresse und Ausgang!"},
    kJson};
constexpr std::array kFirmware{
    ArgumentRow{u"DATEI", u"", Form::Text, u"Intel-HEX-Datei; ohne --yes wird nichts gesendet", 0, 0, false, 0, u"Es fehlt der Name der Firmware-Datei!"}};
constexpr std::array kCheck{kJson};

constexpr std::array kCommands{
    Command{u"cv read",       u"liest CVs", kCvRead, true, cvRead, StationUse::CvJob},
    Command{u"cv write",      u"schreibt CVs", kCvWrite, true, cvWrite, StationUse::CvJob},
    Command{u"test",          u"prüft die Verbindung und nennt die Zentrale", kTest, true, testStation, StationUse::Test},
    Command{u"vehicles",      u"nennt die Fahrzeuge der Datenbank", kVehicles, false, vehicles},
    Command{u"vehicle read",  u"liest CVs in ein Fahrzeug der Datenbank", kVehicleJob, true, vehicleRead, StationUse::CvJob},
    Command{u"vehicle write", u"schreibt CVs eines Fahrzeugs der Datenbank", kVehicleJob, true, vehicleWrite, StationUse::CvJob},
    Command{u"export csv",    u"schreibt die Fahrzeuge in eine CSV-Datei für Tabellenprogramme", kExportCsv, false, exportCsvFile},
    Command{u"export rzk",    u"übernimmt die Fahrzeuge in eine RZK-Fahrzeugdatei", kExportRzk, false, exportRzk},
    Command{u"import access", u"übernimmt eine Access-Datenbank in eine neue daneben, V2 in die eingestellte", kImportAccess, false, importAccess},
    Command{u"drive",         u"fährt ein Fahrzeug und nennt seinen Zustand", kDrive, true, drive, StationUse::Cab},
    Command{u"switch",        u"schaltet die Ausgänge eines Funktionsteils und nennt sie", kSwitch, true, switchOutputs, StationUse::Panel},
    Command{u"firmware",      u"spielt Firmware in ein MX1-2000-Basisgerät ein", kFirmware, true, firmware},
    Command{u"check",         u"prüft die Datenbank und die Beschreibungsdateien", kCheck, false, check},
};
// clang-format on

}  // namespace

std::span<const Command> commandTable() {
  return kCommands;
}

}  // namespace lokari
