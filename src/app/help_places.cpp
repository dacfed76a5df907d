#include "app/help_places.h"

#include <algorithm>

namespace lokari {
namespace {

// A file dialog or a box has no row: it belongs to the window that it stands over.
constexpr HelpPlace kPlaces[] = {
    {u"main_win", u"fahrzeuge.html"},
    {u"frmAbout", u"index.html"},
    {u"frmEntry", u"index.html"},
    {u"frmHelp", u"index.html#hilfe"},
    {u"dlg_wait", u"fahren.html#warten"},
    {u"dlg_comm", u"decoder.html#fortschritt"},
    {u"dlgTable", u"suchen.html#liste"},
    {u"dlgFTypes", u"listen.html#auswahl"},
    {u"dlgLines", u"listen.html#auswahl"},
    {u"dlgEras", u"listen.html#auswahl"},
    {u"dlgManuf", u"listen.html#auswahl"},
    {u"dlgMotor", u"listen.html#auswahl"},
    {u"dlgDcManuf", u"listen.html#hersteller"},
    {u"dlgDcDecoder", u"listen.html#typen"},
    {u"frmDecoder", u"decoder.html"},
    {u"dlgBit", u"decoder.html#bits"},
    {u"dlgFuncMap", u"decoder.html#matrix"},
    {u"dlgSpdTab", u"decoder.html#kurve"},
    {u"dlgCopy", u"decoder.html#saetze"},
    {u"dlgCalc", u"decoder.html#rechner"},
    {u"dlgManufSel", u"einspielen.html#beschreibung"},
    {u"frmCab", u"fahren.html#bedienen"},
    {u"frmPanel", u"fahren.html#schaltpult"},
    {u"dlgOptions", u"einstellungen.html"},
    {u"dlgPrint", u"drucken.html#dialog"},
    {u"dlgPreview", u"drucken.html#vorschau"},
};

}  // namespace

std::span<const HelpPlace> helpPlaces() {
  return kPlaces;
}

QString helpPlaceOf(const QString& window) {
  const auto* const row = std::ranges::find_if(
      kPlaces, [&](const HelpPlace& place) { return window == QStringView(place.window); });
  return row == std::end(kPlaces) ? QString() : QString::fromUtf16(row->page);
}

QString searchFormPage() {
  return QStringLiteral("suchen.html#formular");
}

QString messagesPage() {
  return QStringLiteral("fehlermeldungen.html");
}

}  // namespace lokari
