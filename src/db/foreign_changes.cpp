#include "db/foreign_changes.h"

#include <QStringList>

#include <algorithm>

#include "db/column_values.h"
#include "db/cv_record.h"
#include "db/form_fields.h"

namespace lokari {
namespace {

constexpr qsizetype kMostLines = 8;
constexpr qsizetype kMostCvs = 4;

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

QString shown(const QString& text) {
  return text.isEmpty() ? QStringLiteral("nichts") : u'"' + text + u'"';
}

/// The CVs in which two arrays differ, by their internal index.
QString changedCvs(const QByteArray& there, const QByteArray& here) {
  QStringList parts;
  qsizetype count = 0;
  for (qsizetype i = 0; i < std::max(there.size(), here.size()); ++i) {
    const int other = i < there.size() ? static_cast<quint8>(there[i]) : 0;
    const int own = i < here.size() ? static_cast<quint8>(here[i]) : 0;
    if (other == own) continue;
    if (++count <= kMostCvs) {
      parts << QStringLiteral("CV %1 dort %2, hier %3").arg(i + 1).arg(other).arg(own);
    }
  }
  if (count > kMostCvs) parts << QStringLiteral("%1 weitere").arg(count - kMostCvs);
  return parts.isEmpty() ? QStringLiteral("dort anders abgelegt")
                         : parts.join(QStringLiteral("; "));
}

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

QString foreignChanges(const RecordSet& records, const RowValues& stored) {
  QStringList lines;
  for (const ColumnInfo& info : records.table().columns) {
    const auto there = stored.constFind(info.name);
    if (there == stored.constEnd()) continue;
    const QVariant here = records.value(info.name);
    QString what;
    if (info.type != ColumnType::Binary) {
      what = QStringLiteral("dort %1, hier %2")
                 .arg(shown(shownValue(info, *there)), shown(shownValue(info, here)));
    } else if (info.name == QStringLiteral("MD_PIC")) {
      what = QStringLiteral("dort ein anderes");
    } else {
      what = changedCvs(there->toByteArray(), here.toByteArray());
    }
    lines << QStringLiteral("%1: %2").arg(captionOf(info.name), what);
  }
  if (lines.size() > kMostLines) {
    const qsizetype more = lines.size() - kMostLines;
    lines = lines.mid(0, kMostLines);
    lines << QStringLiteral("und %1 weitere").arg(more);
  }
  return lines.join(u'\n');
}

}  // namespace lokari
