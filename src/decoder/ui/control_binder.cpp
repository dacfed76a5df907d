#include "decoder/ui/control_binder.h"

#include <QApplication>
#include <QCheckBox>
#include <QGraphicsOpacityEffect>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

#include <utility>

#include "decoder/ui/choice_list.h"
#include "decoder/ui/text_colour.h"
#include "decoder/ui/value_edit.h"

namespace lokari {
namespace {

template <typename T>
T* named(T* control, const QString& name, const QString& accessibleName) {
  control->setObjectName(name);
  control->setAccessibleName(accessibleName);
  return control;
}

}  // namespace

QPushButton* disabledButton(QWidget* parent, const QString& name, const QString& text) {
  auto* button = named(new QPushButton(text, parent), name, {});
  button->setAutoDefault(false);
  button->setEnabled(false);
  return button;
}

void showIdle(QCheckBox* box, const QString& reason) {
  const QString said = reason.isEmpty() ? QString() : QStringLiteral("Ohne Wirkung: ") + reason;
  box->setToolTip(said);
  box->setAccessibleDescription(said);
  if (reason.isEmpty()) {
    box->setGraphicsEffect(nullptr);
  } else if (box->graphicsEffect() == nullptr) {
    auto* pale = new QGraphicsOpacityEffect(box);
    pale->setOpacity(kIdleOpacity);
    box->setGraphicsEffect(pale);
  }
}

QLabel* holdsLabel(QWidget* parent, const QString& field) {
  auto* label = named(new QLabel(parent), QStringLiteral("holds_") + field, {});
  label->setTextFormat(Qt::PlainText);
  label->setAutoFillBackground(true);
  label->setContentsMargins(4, 0, 4, 0);
  colourText(label, TextColour::Normal, Ground::NotTaken);
  label->hide();
  return label;
}

void showHolds(QLabel* label, const std::optional<QString>& holds) {
  label->setVisible(holds.has_value());
  if (holds)
    label->setText(QStringLiteral("gilt ") + (holds->isEmpty() ? QStringLiteral("keine") : *holds));
}

void showValueState(ValueEdit* field, TextColour colour, bool locked,
                    const std::optional<QString>& holds) {
  field->setReadOnly(locked);
  const Ground ground = locked ? Ground::ReadOnly : Ground::Plain;
  colourText(field, colour, holds ? Ground::NotTaken : ground);
  QString said;
  if (locked) said = QStringLiteral("nur lesbar");
  if (holds) said = QStringLiteral("nicht übernommen, es gilt %1").arg(*holds);
  field->setAccessibleDescription(said);
}

void showState(QWidget* control, const Control& state) {
  control->setEnabled(state.enabled);
  if (control->isHidden() == state.visible) control->setVisible(state.visible);
}

ControlBinder::ControlBinder(DecoderBench& bench, QObject* parent)
    : QObject(parent), bench_(bench) {
  connect(&bench.controls, &BenchControls::changed, this, [this](const QString& name) {
    const auto show = shows_.constFind(name);
    if (show != shows_.cend()) (*show)(bench_.controls.at(name));
  });
  connect(&bench, &DecoderBench::focusRequested, this, [this] { ++refusals_; });
}

void ControlBinder::bind(const QString& name, std::function<void(const Control&)> show) {
  show(bench_.controls.at(name));
  shows_.emplace(name, std::move(show));
}

void ControlBinder::bindState(QWidget* control) {
  bind(control->objectName(), [control](const Control& state) { showState(control, state); });
}

QLabel* ControlBinder::label(QWidget* parent, const QString& name, const QString& text) {
  auto* label = named(new QLabel(text, parent), name, {});
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  bind(name, [label, text](const Control& control) {
    label->setText(control.caption.isEmpty() ? text : control.caption);
    showState(label, control);
  });
  return label;
}

ValueEdit* ControlBinder::field(QWidget* parent, const QString& name,
                                const QString& accessibleName) {
  auto* field = named(new ValueEdit(parent), name, accessibleName);
  bind(name, [field](const Control& control) {
    if (field->text() != control.text) field->setText(control.text);
    showState(field, control);
    showValueState(field, control.colour, control.locked, control.holds);
  });
  connect(field, &ValueEdit::textEdited, this,
          [this, name](const QString& text) { bench_.fieldEdited(name, text); });
  connect(field, &ValueEdit::calculatorWanted, this, [this, name] { bench_.fieldF2(name); });
  onLeft(field, [this, name] { bench_.fieldLeft(name); });
  tips(field, [this, name] { return bench_.controls.at(name).tag; });
  return field;
}

QLabel* ControlBinder::holds(QWidget* parent, const QString& name) {
  QLabel* label = holdsLabel(parent, name);
  // The field shows the same control, so the two share its changes.
  connect(&bench_.controls, &BenchControls::changed, label, [this, label, name](const QString& of) {
    if (of == name) showHolds(label, bench_.controls.at(name).holds);
  });
  return label;
}

QCheckBox* ControlBinder::checkBox(QWidget* parent, const QString& name, const QString& text,
                                   const QString& accessibleName) {
  auto* box = named(new QCheckBox(text, parent), name, accessibleName);
  bind(name, [box](const Control& control) {
    box->setChecked(control.checked);
    showState(box, control);
    showIdle(box, control.idle);
  });
  connect(box, &QCheckBox::clicked, this,
          [this, name](bool checked) { bench_.checkBoxToggled(name, checked); });
  return box;
}

QRadioButton* ControlBinder::option(QWidget* parent, const QString& name, const QString& text,
                                    const QString& accessibleName) {
  auto* option = named(new QRadioButton(text, parent), name, accessibleName);
  bind(name, [option](const Control& control) {
    option->setChecked(control.checked);
    option->setToolTip(control.tag);
    option->setAccessibleDescription(control.tag);
    showState(option, control);
    colourText(option, control.colour);
  });
  connect(option, &QRadioButton::clicked, this, [this, name] { bench_.optionClicked(name); });
  return option;
}

QPushButton* ControlBinder::button(QWidget* parent, const QString& name, const QString& text) {
  auto* button = named(new QPushButton(text, parent), name, {});
  button->setAutoDefault(false);
  if (bench_.controls.has(name)) bindState(button);
  connect(button, &QPushButton::clicked, this,
          [this, name] { act([this, name] { bench_.buttonClicked(name); }); });
  return button;
}

QPushButton* ControlBinder::copyButton(QWidget* parent, const QString& suffix) {
  QPushButton* made = button(parent, QStringLiteral("cmdCopy") + suffix,
                             QStringLiteral("Auf andere Fahrzeuge ..."));
  made->setEnabled(bench_.canCopyToVehicles());
  return made;
}

ChoiceList* ControlBinder::list(QWidget* parent, const QString& name, const QString& accessibleName,
                                std::function<bool(const QString&)> chosen) {
  auto* list = named(new ChoiceList(parent), name, accessibleName);
  bind(name, [list](const Control& control) {
    list->showEntries(control);
    showState(list, control);
  });
  // A turn of the wheel above a closed list would change the decoder unasked.
  list->setFocusPolicy(Qt::StrongFocus);
  list->installEventFilter(this);
  connect(list, &ChoiceList::chosen, this,
          [this, name, list, chosen = std::move(chosen)](const QString& entry) {
            // The list has the focus, and its own text is the choice.
            if (takeLeftFields() && !chosen(entry)) ++refusals_;
            list->showEntries(bench_.controls.at(name));  // the choice may have been refused
          });
  connect(list, &ChoiceList::leftUndecided, this,
          [this, list] { takeLater([list] { list->takeShown(); }); });
  return list;
}

void ControlBinder::onLeft(ValueEdit* field, std::function<void()> action) {
  // Not taken inside the change of focus: a message box there would swallow the click that caused
  // it and leave its button pressed.
  connect(field, &ValueEdit::left, this, [this, action = std::move(action)] { takeLater(action); });
}

void ControlBinder::takeLater(const std::function<void()>& action) {
  leftFields_ << action;
  QMetaObject::invokeMethod(this, &ControlBinder::takeLeftFields, Qt::QueuedConnection);
}

void ControlBinder::tips(ValueEdit* field, std::function<QString()> tag) {
  const auto show = [this, field, tag = std::move(tag)] { emit tipWanted(field, tag()); };
  connect(field, &ValueEdit::entered, this, show);
  connect(field, &ValueEdit::left, this, &ControlBinder::tipUnwanted);
  connect(field, &ValueEdit::hovered, this, [this, show](bool over) {
    if (over) {
      show();
    } else {
      emit tipUnwanted();
    }
  });
}

bool ControlBinder::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Wheel) {
    event->ignore();
    return true;
  }
  return QObject::eventFilter(watched, event);
}

bool ControlBinder::takeLeftFields() {
  const int before = refusals_;
  while (!leftFields_.isEmpty()) leftFields_.takeFirst()();
  return refusals_ == before;
}

void ControlBinder::act(const std::function<void()>& action) {
  // A mnemonic presses a button without taking the focus from the field.
  QWidget* focus = QApplication::focusWidget();
  if (auto* list = qobject_cast<ChoiceList*>(focus)) {
    if (list->undecided()) takeLater([list] { list->takeShown(); });
    focus = list->lineEdit();
  }
  if (auto* field = qobject_cast<ValueEdit*>(focus)) emit field->left();
  if (takeLeftFields()) action();
}

}  // namespace lokari
