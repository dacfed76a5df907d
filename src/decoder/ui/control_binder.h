// Makes the controls of the decoder window and keeps each of them and its namesake on the bench the
// same: the bench's changes show, the user's acts are handed over.
#pragma once

#include <QHash>
#include <QObject>
#include <QString>

#include <functional>

#include "decoder/decoder_bench.h"

class QCheckBox;
class QLabel;
class QPushButton;
class QRadioButton;

namespace lokari {

class ChoiceList;
class ValueEdit;

class ControlBinder final : public QObject {
  Q_OBJECT

 public:
  explicit ControlBinder(DecoderBench& bench, QObject* parent = nullptr);

  // Each makes the control `name` as a child of `parent`. `text` stands while the bench gives none.
  QLabel* label(QWidget* parent, const QString& name, const QString& text);
  ValueEdit* field(QWidget* parent, const QString& name, const QString& accessibleName);
  /// `holds_<name>`: the value that holds beside a field whose text was not taken.
  QLabel* holds(QWidget* parent, const QString& name);
  QCheckBox* checkBox(QWidget* parent, const QString& name, const QString& text,
                      const QString& accessibleName = {});
  QRadioButton* option(QWidget* parent, const QString& name, const QString& text,
                       const QString& accessibleName);
  /// A button that forwards to the bench, after the field in hand has been taken.
  QPushButton* button(QWidget* parent, const QString& name, const QString& text);
  /// `cmdCopy<suffix>`, which copies a tab's CVs onto other vehicles if there are any.
  QPushButton* copyButton(QWidget* parent, const QString& suffix);
  /// A drop-down list that shows the bench's text even when it is none of the entries.
  /// `chosen` is false for a choice that the user took back.
  ChoiceList* list(QWidget* parent, const QString& name, const QString& accessibleName,
                   std::function<bool(const QString&)> chosen);

  /// Shows the bench's control `name` with `show`, now and at every change.
  void bind(const QString& name, std::function<void(const Control&)> show);
  /// Follows only whether the control is enabled and visible.
  void bindState(QWidget* control);
  /// Runs `action` when the user has left a field, ahead of anything that is done next.
  void onLeft(ValueEdit* field, std::function<void()> action);
  /// Asks for the tool tip of `tag` while a field has the focus or the mouse.
  void tips(ValueEdit* field, std::function<QString()> tag);

  /// Takes the field that has the focus, and the one that has just lost it, and then runs
  /// `action`; not when a field was refused and has the focus again.
  void act(const std::function<void()>& action);
  /// Takes no field that was left so far: the window closes, or the rows are others.
  void forgetLeft() { leftFields_.clear(); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 signals:
  /// A field has the focus or the mouse: its tool tip is wanted; or is not any more.
  void tipWanted(QWidget* field, const QString& tag);
  void tipUnwanted();

 private:
  void takeLater(const std::function<void()>& action);
  bool takeLeftFields();

  DecoderBench& bench_;
  QHash<QString, std::function<void(const Control&)>> shows_;
  QList<std::function<void()>> leftFields_;
  int refusals_ = 0;
};

/// A button that nothing can be done with yet: its dialog is not in the program.
QPushButton* disabledButton(QWidget* parent, const QString& name, const QString& text);

/// A tick that no job acts upon looks different and says why.
void showIdle(QCheckBox* box, const QString& reason);

/// A label for the value that holds beside a field, hidden until showHolds().
QLabel* holdsLabel(QWidget* parent, const QString& field);
void showHolds(QLabel* label, const std::optional<QString>& holds);

/// A value field's colours, and what is said about a text that was not taken.
void showValueState(ValueEdit* field, TextColour colour, bool locked,
                    const std::optional<QString>& holds);

/// Enabled and visible as the bench says.
void showState(QWidget* control, const Control& state);

}  // namespace lokari
