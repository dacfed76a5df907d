#include "reports/sheet_painter.h"

#include <QImage>

#include <algorithm>
#include <array>

#include "db/picture_fit.h"
#include "reports/sheet_sign.h"
#include "reports/sheet_table.h"
#include "reports/sheet_vehicle.h"

namespace lokari {
namespace {

// Lengths in points.
constexpr double kHeadRow = 15;
constexpr double kHead = 5 * kHeadRow;
constexpr double kHeadMiddle = 0.68;  // of its width: where its right fields begin
constexpr double kPictureWidth = 112;
constexpr double kPictureGap = 10;
constexpr double kRuleBelowHead = 6;
constexpr double kRule = 1.2;
constexpr double kTable = kHead + 18;
constexpr double kFoot = 19;  // two lines
constexpr double kFootLine = 8;

/// What a picture on paper shows at most, in its own dots: 400 of them an inch.
constexpr QSize kPictureDots(622, 417);

// Sizes of type, in points.
constexpr double kCaptionType = 8.5;
constexpr double kHeadType = 9.5;

/// How much of a row a field of the head has.
enum class HeadPlace { Left, Right, Whole };

struct HeadField {
  int row;
  HeadPlace place;
  const char16_t* caption;
  QString (*text)(const SheetVehicle& vehicle);
};

const std::array kHeadFields{
    HeadField{0, HeadPlace::Left, u"Sammlung: ",
              [](const SheetVehicle& v) { return v.collection; }},
    HeadField{0, HeadPlace::Right, u"Adresse: ", [](const SheetVehicle& v) { return v.address; }},
    HeadField{1, HeadPlace::Left, u"Kurzbezeichnung: ",
              [](const SheetVehicle& v) { return v.shortName; }},
    HeadField{1, HeadPlace::Right, u"Gruppe: ", [](const SheetVehicle& v) { return v.group; }},
    HeadField{2, HeadPlace::Whole, u"Fahrzeugtype: ", [](const SheetVehicle& v) { return v.type; }},
    HeadField{
        3, HeadPlace::Whole, u"Decoder: ",
        [](const SheetVehicle& v) { return QString(v.manufacturer + u' ' + v.decoder).trimmed(); }},
    HeadField{4, HeadPlace::Whole, u"Langbezeichnung: ",
              [](const SheetVehicle& v) { return v.longName; }},
};

/// The picture as large as paper can show it; an empty one when there is none.
QImage pictureOf(const SheetVehicle& vehicle) {
  const QImage picture = QImage::fromData(vehicle.picture);
  const bool large =
      picture.width() > kPictureDots.width() || picture.height() > kPictureDots.height();
  return large ? picture.scaled(kPictureDots, Qt::KeepAspectRatio, Qt::SmoothTransformation)
               : picture;
}

}  // namespace

void SheetPainter::paint(const SheetVehicle& vehicle, std::span<const PrintCv> cvs) {
  SheetTable table(canvas_, vehicle, cvs);
  // The same one on all pages, so that a file holds it once.
  const QImage picture = pictureOf(vehicle);
  const double top = canvas_.dots(kTable);
  const size_t perPage = table.rowsIn(canvas_.size().height() - top - canvas_.dots(kFoot));
  const size_t pages = std::max<size_t>(1, (table.rows() + perPage - 1) / perPage);
  for (size_t page = 0; page < pages; ++page) {
    if (begun_) canvas_.newPage();
    begun_ = true;
    paintHead(vehicle, picture);
    paintFoot(vehicle, cvs, page + 1, pages);
    const size_t from = page * perPage;
    const size_t rows = std::min(perPage, table.rows() - from);
    if (rows > 0) table.paint(top, from, rows);
  }
}

void SheetPainter::paintHead(const SheetVehicle& vehicle, const QImage& picture) {
  QPainter& painter = canvas_.painter();
  double room = canvas_.size().width();
  if (!picture.isNull()) {
    room -= canvas_.dots(kPictureWidth);
    paintPicture(QRectF(room, 0, canvas_.dots(kPictureWidth), canvas_.dots(kHead)), picture);
    room -= canvas_.dots(kPictureGap);
  }
  const QFont captionFont = canvas_.font(kCaptionType, true);
  const QFont textFont = canvas_.font(kHeadType, true);
  std::array<double, 2> captions{};
  for (const HeadField& field : kHeadFields) {
    double& widest = captions[field.place == HeadPlace::Right ? 1 : 0];
    widest = std::max(widest, canvas_.width(captionFont, QString::fromUtf16(field.caption)));
  }
  const double spacing = canvas_.dots(kSheetSpacing);
  const double height = canvas_.dots(kHeadRow);
  const double middle = room * kHeadMiddle;
  for (const HeadField& field : kHeadFields) {
    const bool right = field.place == HeadPlace::Right;
    const double x = right ? middle : 0;
    const double end = field.place == HeadPlace::Left ? middle - spacing : room;
    const QRectF row(x, field.row * height, end - x, height);
    painter.setPen(kSheetGrey);
    canvas_.drawText(row, captionFont, QString::fromUtf16(field.caption));
    painter.setPen(Qt::black);
    canvas_.drawText(row.adjusted(captions[right ? 1 : 0] + spacing, 0, 0, 0), textFont,
                     field.text(vehicle));
  }
  painter.setPen(QPen(Qt::black, canvas_.dots(kRule)));
  const double y = canvas_.dots(kHead + kRuleBelowHead);
  painter.drawLine(QPointF(0, y), QPointF(canvas_.size().width(), y));
}

void SheetPainter::paintPicture(const QRectF& frame, const QImage& picture) {
  const QRectF place = fitPicture(QSizeF(picture.size()), frame.size()).translated(frame.topLeft());
  canvas_.painter().setRenderHint(QPainter::SmoothPixmapTransform);
  canvas_.painter().drawImage(place, picture);
}

void SheetPainter::paintFoot(const SheetVehicle& vehicle, std::span<const PrintCv> cvs, size_t page,
                             size_t pages) {
  const double height = canvas_.dots(kFootLine);
  const QRectF foot(0, canvas_.size().height() - height, canvas_.size().width(), height);
  const QFont small = canvas_.font(kSheetSmallType);
  paintLegend(canvas_, foot.translated(0, -height), vehicle, cvs);
  canvas_.painter().setPen(kSheetGrey);
  canvas_.drawText(foot, small,
                   QStringLiteral("CV-Satz „%1“, Stand %2")
                       .arg(vehicle.setName, date_.toString(QStringLiteral("dd.MM.yyyy"))));
  // An empty list is that of a description that is not there.
  canvas_.drawText(foot, small,
                   cvs.empty() ? QStringLiteral("Zu diesem Decoder fehlt die Beschreibungsdatei")
                               : QStringLiteral("Fett: weicht von der Vorgabe ab"),
                   Qt::AlignHCenter);
  canvas_.drawText(foot, small, QStringLiteral("Seite %1 von %2").arg(page).arg(pages),
                   Qt::AlignRight);
}

}  // namespace lokari
