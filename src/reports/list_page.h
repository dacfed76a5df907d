// One page of a list: what the template made of some vehicles, laid out for the paper.
#pragma once

#include <QSizeF>
#include <QString>
#include <QTextDocument>

#include <string>
#include <vector>

class QPagedPaintDevice;
class QPainter;
class QTextTable;

namespace lokari {

class ListPage {
 public:
  /// `html` shows `vehicles` vehicles, `room` is in dots of the paper; pictures are looked for in
  /// `folder`. Throws ReportError when the vehicles are not the rows of a table.
  ListPage(const std::string& html, const QString& folder, size_t vehicles,
           QPagedPaintDevice& paper, QSizeF room);

  /// How many of the vehicles have room, each of them whole.
  size_t vehiclesWithRoom() const;
  /// Whether what stands above the vehicles takes the room that the first of them needs, and would
  /// have on a page of its own.
  bool isCrowdedOut() const;
  /// Whether all that the template made has room.
  bool fits() const { return text_.size().height() <= room_.height(); }
  /// Leaves out what stands below that many of the vehicles.
  void cutBehind(size_t vehicles);

  void draw(QPainter& painter);

 private:
  void findRows(size_t vehicles);
  void findBounds(const QTextTable& table, int rowsOfVehicle);

  QSizeF room_;  // in dots of the paper
  QTextDocument text_;
  double begin_ = 0;  // of the first vehicle, from the top of the page
  // Where each vehicle ends, from the top of the page.
  std::vector<double> ends_;
  double height_ = 0;  // of what is drawn
};

}  // namespace lokari
