// The record form: every control of the record on show.
#pragma once

#include <QHash>
#include <QWidget>

#include "app/ui/form_place.h"

class QGroupBox;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace lokari {

class PictureFrame;
class Pictures;
class RecordField;

class RecordPage final : public QWidget {
  Q_OBJECT

 public:
  RecordPage(const Pictures& pictures, QWidget* parent);

  /// A name that is not on the form is a programming error: std::logic_error.
  RecordField& field(const QString& name) const;
  const QList<RecordField*>& fields() const { return ordered_; }

  /// The hidden controls `dc_type` and `dc_recno`.
  QLineEdit* dc_type() const { return dc_type_; }
  QLineEdit* dc_recno() const { return dc_recno_; }
  /// `dc_type_1` to `dc_type_3`.
  QRadioButton* option(int type) const { return options_[type - 1]; }
  /// Selects an option; any other number clears all three.
  void selectOption(int type);

  PictureFrame& picture() const { return *picture_; }
  QPushButton* butPicLink() const { return butPicLink_; }
  QPushButton* butPicDel() const { return butPicDel_; }

 private:
  QGroupBox* group(const QString& name, const QString& title);
  QWidget* buildTypes();
  /// One height for all lines and lists.
  void alignHeights();
  QGroupBox* buildFields(FormGroup group, const QString& name, const QString& title);
  QGroupBox* buildPicture(const Pictures& pictures);

  QHash<QString, RecordField*> fields_;
  QList<RecordField*> ordered_;
  QLineEdit* dc_type_;
  QLineEdit* dc_recno_;
  QList<QRadioButton*> options_;
  PictureFrame* picture_ = nullptr;
  QPushButton* butPicLink_ = nullptr;
  QPushButton* butPicDel_ = nullptr;
};

}  // namespace lokari
