#include "app/ui/record_binder.h"

#include <QAction>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>
#include <QToolButton>

#include <algorithm>

#include "app/ui/main_menu.h"
#include "app/ui/navigator.h"
#include "app/ui/record_field.h"
#include "app/ui/record_page.h"
#include "app/ui/tool_row.h"
#include "db/record_form.h"
#include "db/ui/picture_frame.h"

namespace lokari {
namespace {

struct Command {
  const char16_t* control;
  void (RecordForm::*run)();
};

constexpr std::array<Command, 7> kButtons{{
    {u"butFind", &RecordForm::butFind},
    {u"butNew", &RecordForm::butNew},
    {u"butDelete", &RecordForm::butDelete},
    {u"butOK", &RecordForm::butOK},
    {u"butFilter", &RecordForm::butFilter},
    {u"butCancel", &RecordForm::butCancel},
    {u"butUndo", &RecordForm::butUndo},
}};

constexpr std::array<Command, 7> kEntries{{
    {u"mnuEditNew", &RecordForm::butNew},
    {u"mnuEditCopy", &RecordForm::mnuEditCopy},
    {u"mnuEditInsert", &RecordForm::mnuEditInsert},
    {u"mnuEditDelete", &RecordForm::butDelete},
    {u"mnuEditFind", &RecordForm::butFind},
    {u"mnuEditFindNext", &RecordForm::mnuEditFindNext},
    {u"mnuEditUndo", &RecordForm::butUndo},
}};

/// Controls beside the fields whose state the form tells.
constexpr std::array kButtonNames{u"butTable", u"butFind",   u"butNew",    u"butDelete",
                                  u"butOK",    u"butCancel", u"butFilter", u"butProg",
                                  u"butDrive", u"butSwitch", u"butUndo"};
constexpr std::array kEntryNames{u"mnuDbPrint",    u"mnuEditNew",     u"mnuEditCopy",
                                 u"mnuEditInsert", u"mnuEditDelete",  u"mnuEditFind",
                                 u"mnuEditUndo",   u"mnuEditFindNext"};

template <typename Names>
bool listed(const Names& names, const QString& name) {
  return std::any_of(names.begin(), names.end(),
                     [&](const char16_t* one) { return name == QStringView(one); });
}

}  // namespace

RecordBinder::RecordBinder(RecordForm& form, RecordControls controls, QObject* parent)
    : QObject(parent), form_(form), controls_(controls) {
  connectForm();
  connectFields();
  connectCommands();
  connectEscape();
  showAll();
}

bool RecordBinder::hasField(const QString& control) const {
  const auto& fields = controls_.page.fields();
  return std::any_of(fields.begin(), fields.end(),
                     [&](const RecordField* field) { return field->name() == control; });
}

void RecordBinder::connectForm() {
  connect(&form_, &RecordForm::textChanged, this, &RecordBinder::showText);
  connect(&form_, &RecordForm::stateChanged, this, &RecordBinder::showState);
  connect(&form_, &RecordForm::listChanged, this, &RecordBinder::showList);
  connect(&form_, &RecordForm::pictureChanged, this,
          [this] { controls_.page.picture().showPicture(form_.picture()); });
  connect(&form_, &RecordForm::typeOptionChanged, this,
          [this](int option) { controls_.page.selectOption(option); });
  connect(&form_, &RecordForm::filteredChanged, this,
          [this](bool on) { controls_.data1.setFiltered(on); });
  connect(&form_, &RecordForm::focusWanted, this, &RecordBinder::focus);
  connect(&form_, &RecordForm::selectWanted, this, [this](const QString& control) {
    if (hasField(control)) controls_.page.field(control).selectAll();
  });
}

void RecordBinder::connectFields() {
  for (RecordField* field : controls_.page.fields()) {
    const QString name = field->name();
    connect(field, &RecordField::edited, this,
            [this, name](const QString& text) { form_.edited(name, text); });
    connect(field, &RecordField::entered, this, [this, name] { form_.focusGained(name); });
    connect(field, &RecordField::left, this, [this, name] { form_.focusLost(name); });
    field->takesKey = [this, name](QChar key, qsizetype replaced) {
      return form_.takesKey(name, key, replaced);
    };
    field->takesReturn = [this] {
      if (!form_.isSearching()) return false;
      form_.butOK();
      return true;
    };
  }
  for (int type = 1; type <= 3; ++type) {
    connect(controls_.page.option(type), &QRadioButton::clicked, this,
            [this, type] { form_.clickType(type); });
  }
}

void RecordBinder::connectCommands() {
  for (const Command& command : kButtons) {
    const QString name = QString::fromUtf16(command.control);
    connect(controls_.tools.button(name), &QToolButton::clicked, &form_, command.run);
    offer(name);
  }
  for (const Command& command : kEntries) {
    const QString name = QString::fromUtf16(command.control);
    connect(controls_.menu.entry(name), &QAction::triggered, &form_, command.run);
    offer(name);
  }
  connect(controls_.page.butPicLink(), &QPushButton::clicked, &form_, &RecordForm::butPicLink);
  connect(controls_.page.butPicDel(), &QPushButton::clicked, &form_, &RecordForm::butPicDel);
  connect(&controls_.data1, &Navigator::first, &form_, &RecordForm::MoveFirst);
  connect(&controls_.data1, &Navigator::previous, &form_, &RecordForm::MovePrevious);
  connect(&controls_.data1, &Navigator::next, &form_, &RecordForm::MoveNext);
  connect(&controls_.data1, &Navigator::last, &form_, &RecordForm::MoveLast);
}

// In new-record mode and in the search Esc is the button's.
void RecordBinder::connectEscape() {
  auto* escape = new QShortcut(Qt::Key_Escape, &controls_.page, &form_, &RecordForm::giveUp,
                               Qt::WindowShortcut);
  escape->setEnabled(false);
  const auto show = [this, escape] {
    controls_.tools.showUnsaved(form_.isUnsaved());
    escape->setEnabled(form_.isUnsaved() && !form_.isVisible(QStringLiteral("butCancel")));
  };
  connect(&form_, &RecordForm::unsavedChanged, this, show);
  connect(&form_, &RecordForm::stateChanged, this, show);
}

void RecordBinder::offer(const QString& control) {
  offered_ << control;
  showState(control);
}

void RecordBinder::showAll() {
  for (const RecordField* field : controls_.page.fields()) {
    showList(field->name());
    showText(field->name(), form_.text(field->name()));
  }
  for (const char16_t* name : {u"dc_type", u"dc_recno", u"Data1", u"butOK"}) {
    showText(QString::fromUtf16(name), form_.text(QString::fromUtf16(name)));
  }
  for (const char16_t* name : kButtonNames) showState(QString::fromUtf16(name));
  for (const char16_t* name : kEntryNames) showState(QString::fromUtf16(name));
  showState(QStringLiteral("Data1"));
  controls_.page.selectOption(form_.typeOption());
  controls_.page.picture().showPicture(form_.picture());
}

void RecordBinder::showText(const QString& control, const QString& text) {
  if (hasField(control)) {
    controls_.page.field(control).setText(text);
  } else if (control == QStringLiteral("dc_type")) {
    controls_.page.dc_type()->setText(text);
  } else if (control == QStringLiteral("dc_recno")) {
    controls_.page.dc_recno()->setText(text);
  } else if (control == QStringLiteral("Data1")) {
    controls_.data1.setCaption(text);
  } else if (listed(kButtonNames, control)) {
    controls_.tools.button(control)->setText(text);
  }
}

void RecordBinder::showState(const QString& control) {
  const bool enabled = form_.isEnabled(control);
  if (listed(kEntryNames, control)) {
    controls_.menu.entry(control)->setEnabled(enabled && offered_.contains(control));
  } else if (listed(kButtonNames, control)) {
    QToolButton* button = controls_.tools.button(control);
    button->setEnabled(enabled && offered_.contains(control));
    button->setVisible(form_.isVisible(control));
  } else if (control == QStringLiteral("Data1")) {
    controls_.data1.setEnabled(enabled);
    controls_.data1.setVisible(form_.isVisible(control));
  } else if (control == QStringLiteral("butPicLink")) {
    controls_.page.butPicLink()->setEnabled(enabled);
  } else if (hasField(control)) {
    controls_.page.field(control).widget()->setEnabled(enabled);
  }
}

void RecordBinder::showList(const QString& control) {
  if (hasField(control)) controls_.page.field(control).setItems(form_.list(control));
}

void RecordBinder::focus(const QString& control, bool selected) {
  if (hasField(control)) controls_.page.field(control).focus(selected);
}

}  // namespace lokari
