// `Data1`: moves through the vehicle record set and tells where it stands.
#pragma once

#include <QFrame>

class QLabel;

namespace lokari {

class Pictures;

class Navigator final : public QFrame {
  Q_OBJECT

 public:
  Navigator(const Pictures& pictures, QWidget* parent);

  QString caption() const;
  void setCaption(const QString& caption);
  /// The colour of tool tips while a filter is on: the only sign of it.
  void setFiltered(bool on);

 signals:
  void first();
  void previous();
  void next();
  void last();

 private:
  QLabel* caption_;
};

}  // namespace lokari
