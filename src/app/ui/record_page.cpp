#include "app/ui/record_page.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <algorithm>
#include <stdexcept>

#include "app/ui/form_place.h"
#include "app/ui/record_field.h"
#include "base/ui/option_group.h"
#include "base/ui/pictures.h"
#include "db/ui/picture_frame.h"

namespace lokari {
namespace {

constexpr std::array kTypes{u"Fahrzeug", u"Funktionsteil", u"Sonstiges"};
constexpr QSize kPicture(20, 20);
/// The columns' shares of the width: the long names stand in the second one.
constexpr std::array kColumnWidths{4, 5, 5};

QLineEdit* hiddenLine(const QString& name, QWidget* parent) {
  auto* line = new QLineEdit(parent);
  line->setObjectName(name);
  line->hide();
  return line;
}

QPushButton* pictureButton(const QString& name, const QString& caption, const QIcon& icon,
                           QWidget* parent) {
  auto* button = new QPushButton(icon, caption, parent);
  button->setObjectName(name);
  button->setIconSize(kPicture);
  return button;
}

}  // namespace

RecordPage::RecordPage(const Pictures& pictures, QWidget* parent)
    : QWidget(parent),
      dc_type_(hiddenLine(QStringLiteral("dc_type"), this)),
      dc_recno_(hiddenLine(QStringLiteral("dc_recno"), this)) {
  setObjectName(QStringLiteral("recordPage"));
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setSpacing(8);
  const auto fields = [this](FormGroup which, const char16_t* name, const char16_t* title) {
    return buildFields(which, QString::fromUtf16(name), QString::fromUtf16(title));
  };
  grid->addWidget(fields(FormGroup::Decoder, u"grpDecoder", u"Decoder und Adresse"), 0, 0);
  grid->addWidget(fields(FormGroup::Vehicle, u"grpVehicle", u"Fahrzeug"), 0, 1);
  QWidget* model = fields(FormGroup::Model, u"grpModel", u"Modell");
  QWidget* remark = fields(FormGroup::Remark, u"grpRemark", u"Bemerkung");
  QWidget* user = fields(FormGroup::User, u"grpUser", u"Benutzerinfos");
  grid->addWidget(buildPicture(pictures), 0, 2);
  grid->addWidget(model, 1, 0);
  grid->addWidget(remark, 1, 1);
  grid->addWidget(user, 1, 2);
  for (int column = 0; column < 3; ++column) grid->setColumnStretch(column, kColumnWidths[column]);
  alignHeights();
  grid->setRowStretch(0, 3);
  grid->setRowStretch(1, 2);
}

void RecordPage::alignHeights() {
  int height = 0;
  for (const RecordField* field : ordered_) {
    if (field->place().widget == FormWidget::Lines) continue;
    height = std::max(height, field->widget()->sizeHint().height());
  }
  for (const RecordField* field : ordered_) field->widget()->setMinimumHeight(height);
}

QGroupBox* RecordPage::group(const QString& name, const QString& title) {
  auto* box = new QGroupBox(title, this);
  box->setObjectName(name);
  return box;
}

QWidget* RecordPage::buildTypes() {
  auto* frame = new QFrame(this);
  frame->setObjectName(QStringLiteral("dc_type_grp"));
  frame->setAccessibleName(QStringLiteral("Art des Datensatzes"));
  auto* line = new QHBoxLayout(frame);
  line->setContentsMargins(0, 0, 0, 0);
  auto* exclusive = new OptionGroup(frame);
  for (const char16_t* caption : kTypes) {
    auto* option = new QRadioButton(QString::fromUtf16(caption), frame);
    options_ << option;
    option->setObjectName(QStringLiteral("dc_type_%1").arg(options_.size()));
    exclusive->add(option);
    line->addWidget(option);
  }
  line->addStretch();
  return frame;
}

QGroupBox* RecordPage::buildFields(FormGroup group, const QString& name, const QString& title) {
  QGroupBox* box = this->group(name, title);
  auto* grid = new QGridLayout(box);
  grid->setVerticalSpacing(4);
  grid->setHorizontalSpacing(8);
  grid->setColumnStretch(1, 1);
  int row = 0;
  if (group == FormGroup::Decoder) {
    grid->addWidget(buildTypes(), row++, 0, 1, 2);
  }
  for (const FormPlace& place : kFormPlaces) {
    if (place.group != group) continue;
    auto* field = new RecordField(place, box);
    fields_.insert(field->name(), field);
    ordered_ << field;
    if (place.widget == FormWidget::Lines) {
      grid->addWidget(field->widget(), row, 0, 1, 2);
      grid->setRowStretch(row++, 1);
      continue;
    }
    auto* label = new QLabel(field->label(), box);
    label->setObjectName(QStringLiteral("lab_") + field->name());
    label->setBuddy(field->widget());
    if (place.widget == FormWidget::LongLine) {
      grid->addWidget(label, row++, 0, 1, 2);
      grid->addWidget(field->widget(), row++, 0, 1, 2);
    } else {
      grid->addWidget(label, row, 0);
      grid->addWidget(field->widget(), row++, 1);
    }
  }
  // What is left over stays below the last line.
  grid->setRowStretch(row, group == FormGroup::Remark ? 0 : 1);
  return box;
}

QGroupBox* RecordPage::buildPicture(const Pictures& pictures) {
  QGroupBox* box = group(QStringLiteral("grpPicture"), QStringLiteral("Bild"));
  auto* grid = new QGridLayout(box);
  picture_ = new PictureFrame(box);
  butPicLink_ = pictureButton(QStringLiteral("butPicLink"), QStringLiteral("Bild &wählen..."),
                              pictures.icon(QStringLiteral("bild_n.bmp")), box);
  butPicDel_ = pictureButton(QStringLiteral("butPicDel"), QStringLiteral("Bild ent&fernen"),
                             pictures.icon(QStringLiteral("bildweg_n.bmp")), box);
  grid->addWidget(picture_, 0, 0, 1, 2);
  grid->addWidget(butPicLink_, 1, 0);
  grid->addWidget(butPicDel_, 1, 1);
  return box;
}

RecordField& RecordPage::field(const QString& name) const {
  RecordField* field = fields_.value(name);
  if (field == nullptr) throw std::logic_error("no field " + name.toStdString());
  return *field;
}

void RecordPage::selectOption(int type) {
  QButtonGroup* exclusive = options_.front()->group();
  exclusive->setExclusive(false);
  for (int i = 0; i < options_.size(); ++i) options_[i]->setChecked(i + 1 == type);
  exclusive->setExclusive(true);
}

}  // namespace lokari
