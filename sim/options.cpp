#include "sim/options.h"

#include <QHash>

#include <functional>

#include "sim/station_table.h"

namespace lokari::sim {
namespace {

QString stationNames() {
  QStringList names;
  for (const StationRow& row : stationTable()) names << QString::fromUtf16(row.name);
  return names.join(QStringLiteral(", "));
}

QString makersNames() {
  QStringList names;
  for (const StationRow& row : stationTable()) {
    if (row.makeMakers != nullptr) names << QString::fromUtf16(row.name);
  }
  return names.join(QStringLiteral(", "));
}

int numberOf(const QString& text, Options& options, int first = 0, int last = 65535) {
  bool valid = false;
  const int number = text.toInt(&valid);
  if (!valid || number < first || number > last) {
    options.error =
        QStringLiteral("\"%1\" ist keine Zahl von %2 bis %3!").arg(text).arg(first).arg(last);
  }
  return number;
}

void takeForm(Options& options, const QString& name) {
  static const QHash<QString, bool> kForms{{QStringLiteral("ours"), false},
                                           {QStringLiteral("makers"), true}};
  if (!kForms.contains(name)) {
    options.error = QStringLiteral("Die Form \"%1\" gibt es nicht!").arg(name);
    return;
  }
  options.makersForm = kForms[name];
}

void takeConfirmation(Options& options, const QString& name) {
  static const QHash<QString, Confirmation> kPlaces{
      {QStringLiteral("none"), Confirmation::None},
      {QStringLiteral("ahead"), Confirmation::Ahead},
      {QStringLiteral("behind"), Confirmation::Behind},
  };
  if (!kPlaces.contains(name)) {
    options.error = QStringLiteral("Die Bestätigung \"%1\" gibt es nicht!").arg(name);
    return;
  }
  options.makers.confirmation = kPlaces[name];
}

void takeStationVersion(Options& options, const QString& text) {
  static const QHash<QString, int> kVersions{{QStringLiteral("3.0"), 0x30},
                                             {QStringLiteral("3.6"), 0x36}};
  if (!kVersions.contains(text)) {
    options.error = QStringLiteral("Die Version \"%1\" gibt es nicht!").arg(text);
    return;
  }
  options.makers.stationVersion = kVersions[text];
}

void takeState(Options& options, const QString& name) {
  static const QHash<QString, bool Options::*> kStates{
      {QStringLiteral("off"), &Options::powerOff},
      {QStringLiteral("stop"), &Options::stopped},
      {QStringLiteral("overload"), &Options::overloaded},
  };
  if (!kStates.contains(name)) {
    options.error = QStringLiteral("Den Zustand \"%1\" gibt es nicht!").arg(name);
    return;
  }
  options.*kStates[name] = true;
}

using Setter = std::function<void(Options&, const QString&)>;

const QHash<QString, Setter>& settersWithValue() {
  static const QHash<QString, Setter> kSetters{
      {QStringLiteral("--station"), [](Options& o, const QString& v) { o.station = v; }},
      {QStringLiteral("--link"), [](Options& o, const QString& v) { o.link = v; }},
      {QStringLiteral("--port"),
       [](Options& o, const QString& v) { o.udpPort = static_cast<quint16>(numberOf(v, o)); }},
      {QStringLiteral("--decoder"), [](Options& o, const QString& v) { o.decoders << v; }},
      {QStringLiteral("--delay"),
       [](Options& o, const QString& v) { o.answerDelay = numberOf(v, o); }},
      {QStringLiteral("--image"), [](Options& o, const QString& v) { o.image = v; }},
      {QStringLiteral("--state"), takeState},
      {QStringLiteral("--form"), takeForm},
      {QStringLiteral("--state-size"),
       [](Options& o, const QString& v) { o.makers.stateSize = numberOf(v, o, 14, 21); }},
      {QStringLiteral("--repeat"),
       [](Options& o, const QString& v) { o.makers.broadcastsInARow = numberOf(v, o, 1, 3); }},
      {QStringLiteral("--confirm"), takeConfirmation},
      {QStringLiteral("--station-version"), takeStationVersion},
      {QStringLiteral("--access-time"),
       [](Options& o, const QString& v) { o.makers.accessTime = numberOf(v, o, 0, 90000); }},
      {QStringLiteral("--fault"),
       [](Options& o, const QString& v) {
         if (const auto fault = faultFromText(v)) {
           o.faults << *fault;
         } else {
           o.error = QStringLiteral("Die Störung \"%1\" gibt es nicht!").arg(v);
         }
       }},
  };
  return kSetters;
}

const QHash<QString, bool MakersOptions::*>& makersFlags() {
  static const QHash<QString, bool MakersOptions::*> kFlags{
      {QStringLiteral("--subscribers"), &MakersOptions::subscribersOnly},
      {QStringLiteral("--bundle"), &MakersOptions::bundled},
      {QStringLiteral("--few-versions"), &MakersOptions::fewVersions},
  };
  return kFlags;
}

void check(Options& options) {
  if (options.help || !options.error.isEmpty()) return;
  const StationRow* row = stationByName(options.station);
  if (row == nullptr) {
    options.error = options.station.isEmpty()
                        ? QStringLiteral("--station fehlt!")
                        : QStringLiteral("Die Zentrale \"%1\" gibt es nicht! Vorhanden: %2")
                              .arg(options.station, stationNames());
  } else if (row->wire == Wire::Serial && options.link.isEmpty()) {
    options.error = QStringLiteral("--link fehlt!");
  } else if (!row->takesFirmware && !options.image.isEmpty()) {
    options.error = QStringLiteral("%1 nimmt keine Firmware an!").arg(options.station);
  } else if (options.makersForm && row->makeMakers == nullptr) {
    options.error = QStringLiteral(
                        "%1 gibt es nur mit --form ours: über die Nachrichten dieser "
                        "Zentrale sagen keine Herstellerunterlagen genug!")
                        .arg(options.station);
  } else if (!options.makersForm && options.makers != MakersOptions()) {
    options.error = QStringLiteral("Einstellungen der Form makers gelten nur mit --form makers!");
  }
}

}  // namespace

Options parseOptions(const QStringList& arguments) {
  Options options;
  for (qsizetype i = 0; i < arguments.size() && options.error.isEmpty(); ++i) {
    const QString& argument = arguments[i];
    if (argument == QLatin1String("--help") || argument == QLatin1String("-h")) {
      options.help = true;
    } else if (argument == QLatin1String("--log")) {
      options.log = true;
    } else if (const auto flag = makersFlags().find(argument); flag != makersFlags().end()) {
      options.makers.** flag = true;
    } else if (const auto setter = settersWithValue().find(argument);
               setter == settersWithValue().end()) {
      options.error = QStringLiteral("Die Option \"%1\" gibt es nicht!").arg(argument);
    } else if (i + 1 == arguments.size()) {
      options.error = QStringLiteral("Hinter %1 fehlt der Wert!").arg(argument);
    } else {
      (*setter)(options, arguments[++i]);
    }
  }
  check(options);
  return options;
}

QString helpText() {
  return QStringLiteral(R"(Aufruf: lokari-sim --station NAME [Optionen]

Simuliert eine Digitalzentrale mit Programmiergleis, Hauptgleis und Decodern.

  --station NAME   Zentrale: %1
  --form ours      so, wie Lokari die Zentrale kennt (Vorgabe)
  --form makers    streng nach den Herstellerunterlagen; für %2
  --link PFAD      serielle Zentralen: hier erscheint der Anschluss
  --port NUMMER    Netzwerk-Zentralen: anderer Port auf 127.0.0.1
  --decoder DATEI  Fahrzeuge aus einer Datei statt der eingebauten; auch mehrmals
  --fault STÖRUNG  eine Störung, auch mehrmals: NAME[:ANZAHL[:MASS]][@NACH]
                   ANZAHL "immer" hört nicht auf, NACH lässt so viele Anlässe vorher aus.
                   Leitung: silence (keine Antwort), late (MASS ms später), garbage (Unsinn),
                   short (nur MASS Bytes), split (Byte für Byte, MASS ms Abstand),
                   flip (Bit MASS falsch), stray (mit ungefragter Nachricht: MASS 0 davor,
                   1 mittendrin, 2 dahinter), unplugged (abgezogen)
                   Gleis: busy, shortcircuit, nodecoder, noack, wrongvalue
                   Firmware: blockerror (Block abgelehnt), banklost (Bank noch einmal)
  --image DATEI    MX1, MX1V25: hier landet der Speicherinhalt nach dem Einspielen von Firmware
  --state NAME     Zustand des Gleises am Anfang, auch mehrmals:
                   off (Fahrspannung aus), stop (Nothalt), overload (Überstrom)
  --delay MS       Zeit bis zur Antwort (Vorgabe 20)
  --log            schreibt jede Nachricht mit
  --help           diese Hilfe

Nur mit --form makers:
  --access-time MS Zeit für eine CV, bis 90000 (Vorgabe 250)
  --subscribers    Z21IP: Rundmeldungen und CV-Ergebnisse nur an Abonnenten (Flag 1)
  --bundle         Z21IP: alle Antworten auf ein Datagramm in einem
  --state-size N   Z21IP: 14 bis 21 Bytes für den Zustand eines Fahrzeugs (Vorgabe 15)
  --repeat N       XpressNet: jede Rundmeldung 1- bis 3-mal (Vorgabe 1)
  --confirm ORT    XpressNet: was eine Rundmeldung beantwortet, wird auch bestätigt:
                   none (gar nicht, Vorgabe), ahead (davor), behind (dahinter)
  --station-version NUMMER
                   XpressNet: Zentrale 3.0 oder 3.6 (Vorgabe 3.6, für LI100 3.0)
  --few-versions   IBX, TAMSMC: eine kurze Liste der Versionen
)")
      .arg(stationNames(), makersNames());
}

}  // namespace lokari::sim
