#include "db/column_captions.h"

#include "db/cv_columns.h"
#include "db/form_fields.h"

namespace lokari {
namespace {

struct Caption {
  const char16_t* column;
  const char16_t* text;
};

/// Columns without a labelled field.
constexpr Caption kCaptions[] = {
    {u"DC_ADR", u"Adresse"},
    {u"DC_TYPE", u"Art des Datensatzes"},
    {u"DC_MANUF", u"Decoderhersteller (Nummer)"},
    {u"DC_DECODER", u"Decodertyp"},
    {u"DC_DEC_VER", u"Gewählter CV-Satz"},
    {u"MD_PIC", u"Bild"},
    {u"DC_RECNO", u"Satznummer"},
};

}  // namespace

QString captionOf(const QString& column) {
  for (const Caption& caption : kCaptions) {
    if (column == QStringView(caption.column)) return QString::fromUtf16(caption.text);
  }
  for (size_t set = 0; set < kCvSetCount; ++set) {
    const CvColumns& columns = kCvColumns[set];
    const auto text = [set](const char16_t* what) {
      return QStringLiteral("%1, Satz %2").arg(QString::fromUtf16(what)).arg(set + 1);
    };
    if (column == QStringView(columns.values)) return text(u"CV-Werte");
    if (column == QStringView(columns.marks)) return text(u"Kennzeichen der CV-Werte");
    if (column == QStringView(columns.name)) return text(u"Name");
  }
  for (const FormField& field : formFields()) {
    if (column != QStringView(field.column) || *field.label == u'\0') continue;
    QString label = QString::fromUtf16(field.label);
    label.chop(1);
    return label;
  }
  return column;
}

}  // namespace lokari
