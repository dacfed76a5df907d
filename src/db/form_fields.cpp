#include "db/form_fields.h"

#include <algorithm>
#include <iterator>

namespace lokari {
namespace {

// clang-format off
constexpr FormField kFields[] = {
    // control       column            binding            keys                   max  check  select label
    {u"dc_recno",    u"DC_RECNO",    Binding::Bound,    KeyFilter::All,        0,   false, false, u""},
    {u"dc_adr",      u"DC_ADR",      Binding::Bound,    KeyFilter::Digits,     5,   true,  true,  u"Adresse (1-10239):"},
    {u"dc_coll",     u"DC_COLL",     Binding::DropDown, KeyFilter::Collection, 0,   false, false, u"Sammlung:"},
    {u"dc_type",     u"DC_TYPE",     Binding::Bound,    KeyFilter::All,        0,   false, false, u""},
    {u"dc_decoder",  u"DC_DECODER",  Binding::Bound,    KeyFilter::All,        0,   false, false, u""},
    {u"st_sname",    u"ST_SNAME",    Binding::Bound,    KeyFilter::All,        6,   true,  true,  u"Kurzname:"},
    {u"st_group",    u"ST_GROUP",    Binding::Bound,    KeyFilter::Digits,     2,   true,  true,  u"Fahrzeug-Gruppe:"},
    {u"fz_lname",    u"FZ_LNAME",    Binding::Bound,    KeyFilter::All,        40,  true,  true,  u"Langbezeichnung:"},
    {u"fz_ftype",    u"FZ_FTYPE",    Binding::DropDown, KeyFilter::All,        0,   false, false, u"Fahrzeug-Type:"},
    {u"fz_code",     u"FZ_CODE",     Binding::Bound,    KeyFilter::All,        12,  true,  true,  u"Baureihe:"},
    {u"fz_opcode",   u"FZ_OPCODE",   Binding::Bound,    KeyFilter::All,        8,   true,  true,  u"Betriebsnummer:"},
    {u"fz_maxspeed", u"FZ_MAXSPEED", Binding::Bound,    KeyFilter::Digits,     3,   true,  true,  u"Max. Geschwindigkeit:"},
    {u"fz_line",     u"FZ_LINE",     Binding::DropDown, KeyFilter::All,        0,   false, false, u"Bahnverwaltung:"},
    {u"fz_era",      u"FZ_ERA",      Binding::DropDown, KeyFilter::All,        0,   false, false, u"Epoche:"},
    {u"md_manuf",    u"MD_MANUF",    Binding::DropDown, KeyFilter::All,        0,   false, false, u"Hersteller:"},
    {u"md_catno",    u"MD_CATNO",    Binding::Bound,    KeyFilter::All,        16,  true,  true,  u"Katalog-Nr.:"},
    {u"md_scale",    u"MD_SCALE",    Binding::Bound,    KeyFilter::All,        0,   true,  false, u"Maßstab:"},
    {u"md_price",    u"MD_PRICE",    Binding::Bound,    KeyFilter::Price,      8,   true,  true,  u"Preis:"},
    {u"md_motor",    u"MD_MOTOR",    Binding::DropDown, KeyFilter::All,        0,   false, false, u"Motortype:"},
    {u"md_info",     u"MD_INFO",     Binding::Bound,    KeyFilter::All,        240, true,  false, u"Bemerkung:"},
    {u"md_user_1",   u"MD_USER_1",   Binding::Bound,    KeyFilter::All,        40,  true,  true,  u"Benutzerinfo 1:"},
    {u"md_user_2",   u"MD_USER_2",   Binding::Bound,    KeyFilter::All,        40,  true,  true,  u"Benutzerinfo 2:"},
    {u"md_user_3",   u"MD_USER_3",   Binding::Bound,    KeyFilter::All,        40,  true,  true,  u"Benutzerinfo 3:"},
};
// clang-format on

}  // namespace

std::span<const FormField> formFields() {
  return kFields;
}

const FormField* formField(QStringView control) {
  const auto* found =
      std::find_if(std::begin(kFields), std::end(kFields),
                   [&](const FormField& field) { return control == QStringView(field.control); });
  return found == std::end(kFields) ? nullptr : found;
}

QStringList scaleSuggestions() {
  return {QStringLiteral("1:22.5"), QStringLiteral("1:32"), QStringLiteral("1:43,5"),
          QStringLiteral("1:45"),   QStringLiteral("1:64"), QStringLiteral("1:72"),
          QStringLiteral("1:76"),   QStringLiteral("1:87"), QStringLiteral("1:120"),
          QStringLiteral("1:160"),  QStringLiteral("1:220")};
}

}  // namespace lokari
