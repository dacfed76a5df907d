#include "base/ui/qt_prompt.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include <exception>
#include <memory>

#include "base/paths.h"
#include "base/settings.h"

namespace lokari {
namespace {

/// A window that only stands beside the others gets no boxes: it may go while one is open.
bool takesBoxes(const QWidget* window) {
  return !window->property(kOnlyBeside).toBool();
}

QWidget* windowInFront() {
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  QWidget* active = QApplication::activeWindow();
  if (active != nullptr && takesBoxes(active)) return active;
  // Another program has the focus, or nobody has: the box still belongs to our window.
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->isVisible() && window->windowType() == Qt::Window && takesBoxes(window))
      return window;
  }
  return nullptr;
}

QMessageBox::Icon boxIcon(Icon icon) {
  switch (icon) {
    case Icon::Information:
      return QMessageBox::Information;
    case Icon::Warning:
      return QMessageBox::Warning;
    case Icon::Question:
      return QMessageBox::Question;
    case Icon::None:
      break;
  }
  return QMessageBox::NoIcon;
}

constexpr int kAskAgainMs = 300;

/// What each kind of box offers; the first answer is the one of the Enter key, the last one that
/// of a closed box.
struct Offer {
  Answer answer;
  const char16_t* caption;
  QMessageBox::ButtonRole role;
};

QList<Offer> offersOf(Buttons buttons) {
  switch (buttons) {
    case Buttons::OkCancel:
      return {{Answer::Ok, u"OK", QMessageBox::AcceptRole},
              {Answer::Cancel, u"Abbruch", QMessageBox::RejectRole}};
    case Buttons::YesNo:
      return {{Answer::Yes, u"&Ja", QMessageBox::YesRole},
              {Answer::No, u"&Nein", QMessageBox::NoRole}};
    case Buttons::YesNoCancel:
      return {{Answer::Yes, u"&Ja", QMessageBox::YesRole},
              {Answer::No, u"&Nein", QMessageBox::NoRole},
              {Answer::Cancel, u"Abbruch", QMessageBox::RejectRole}};
    case Buttons::Ok:
      break;
  }
  return {{Answer::Ok, u"OK", QMessageBox::AcceptRole}};
}

/// A button of a box.
struct Caption {
  QString text;
  QMessageBox::ButtonRole role;
};

/// A carriage return separates the lines of the system's texts.
QString withLineFeeds(QString text) {
  return text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
}

/// Shows a box and returns the index of the button. Enter presses `preset`, closing the box counts
/// as `closed`.
int runBox(Icon icon, const QString& title, const QString& text, const QString& more,
           const QList<Caption>& captions, int preset, int closed) {
  QMessageBox box(boxIcon(icon), title.isEmpty() ? QString::fromUtf16(kTitle) : title,
                  withLineFeeds(text), QMessageBox::NoButton, windowInFront());
  box.setTextFormat(Qt::PlainText);
  box.setInformativeText(withLineFeeds(more));
  QHash<QAbstractButton*, int> answers;
  for (int i = 0; i < static_cast<int>(captions.size()); ++i) {
    QPushButton* button = box.addButton(captions[i].text, captions[i].role);
    if (i == preset) box.setDefaultButton(button);
    if (i == closed) box.setEscapeButton(button);
    answers.insert(button, i);
  }
  // A busy pointer over a question would say that nobody listens.
  const bool busy = QApplication::overrideCursor() != nullptr;
  if (busy) QApplication::setOverrideCursor(Qt::ArrowCursor);
  box.exec();
  if (busy) QApplication::restoreOverrideCursor();
  return answers.value(box.clickedButton(), closed);
}

/// "*.mdb" as "*.[mM][dD][bB]".
QString caseBlindMask(const QString& mask) {
  if (mask == QStringLiteral("*.*")) return QStringLiteral("*");
  QString result;
  for (const QChar c : mask) {
    if (c.toLower() == c.toUpper()) {
      result += c;
    } else {
      result += QStringLiteral("[%1%2]").arg(c.toLower()).arg(c.toUpper());
    }
  }
  return result;
}

/// A typed name stays as it is, and need not be that of a file: who asked adds an extension, and
/// tells what is missing.
QString runFileDialog(const FileQuestion& question, QFileDialog::AcceptMode mode) {
  QFileDialog dialog(windowInFront(), question.title);
  dialog.setObjectName(QStringLiteral("CommonDialog1"));
  const bool opening = mode == QFileDialog::AcceptOpen;
  dialog.setAcceptMode(mode);
  dialog.setFileMode(QFileDialog::AnyFile);
  dialog.setOption(QFileDialog::HideNameFilterDetails);
  dialog.setOption(QFileDialog::DontConfirmOverwrite);
  dialog.setNameFilters(nameFilters(question.filter));
  const QString folder = findFile(question.folder);
  if (!folder.isEmpty()) dialog.setDirectory(folder);
  if (!question.presetName.isEmpty()) dialog.selectFile(question.presetName);
  dialog.setLabelText(QFileDialog::LookIn, QStringLiteral("Suchen in:"));
  dialog.setLabelText(QFileDialog::FileName, QStringLiteral("Datei&name:"));
  dialog.setLabelText(QFileDialog::FileType, QStringLiteral("Dateityp:"));
  dialog.setLabelText(QFileDialog::Accept,
                      opening ? QStringLiteral("Ö&ffnen") : QStringLiteral("&Speichern"));
  dialog.setLabelText(QFileDialog::Reject, QStringLiteral("Abbruch"));
  if (dialog.exec() != QDialog::Accepted) return {};
  const QStringList files = dialog.selectedFiles();
  return files.isEmpty() ? QString() : files.front();
}

}  // namespace

Answer QtPrompt::ask(const Box& asked) {
  const QList<Offer> offers = offersOf(asked.buttons);
  QList<Caption> captions;
  int preset = 0;
  for (qsizetype i = 0; i < offers.size(); ++i) {
    captions << Caption{QString::fromUtf16(offers[i].caption), offers[i].role};
    if (asked.preset == offers[i].answer) preset = static_cast<int>(i);
  }
  const int closed = static_cast<int>(offers.size()) - 1;
  return offers[runBox(asked.icon, asked.title, asked.text, asked.more, captions, preset, closed)]
      .answer;
}

int QtPrompt::choose(const Choice& choice) {
  QList<Caption> captions;
  for (qsizetype i = 0; i < choice.answers.size(); ++i) {
    captions << Caption{choice.answers[i],
                        i == choice.safe ? QMessageBox::RejectRole : QMessageBox::AcceptRole};
  }
  return runBox(choice.icon, {}, choice.text, choice.more, captions, choice.safe, choice.safe);
}

bool QtPrompt::waitUntil(const QString& text, const std::function<bool()>& done) {
  QMessageBox box(QMessageBox::Information, QString::fromUtf16(kTitle), withLineFeeds(text),
                  QMessageBox::NoButton, windowInFront());
  box.setTextFormat(Qt::PlainText);
  box.setEscapeButton(box.addButton(QStringLiteral("Abbruch"), QMessageBox::RejectRole));
  bool finished = false;
  // An exception must not cross the event loop.
  std::exception_ptr failure;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, &box, [&] {
    try {
      finished = done();
    } catch (...) {
      failure = std::current_exception();
    }
    if (finished || failure) box.done(0);
  });
  timer.start(kAskAgainMs);
  box.exec();
  if (failure) std::rethrow_exception(failure);
  return finished;
}

QString QtPrompt::openFile(const FileQuestion& question) {
  return runFileDialog(question, QFileDialog::AcceptOpen);
}

QString QtPrompt::saveFile(const FileQuestion& question) {
  return runFileDialog(question, QFileDialog::AcceptSave);
}

void QtPrompt::beep() {
  QApplication::beep();
}

QStringList nameFilters(const QString& filter) {
  const QStringList parts = filter.split(u'|');
  QStringList result;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    QStringList masks;
    for (const QString& mask : parts[i + 1].split(u';', Qt::SkipEmptyParts)) {
      masks << caseBlindMask(mask.trimmed());
    }
    result << QStringLiteral("%1 (%2)").arg(parts[i], masks.join(u' '));
  }
  return result;
}

}  // namespace lokari
