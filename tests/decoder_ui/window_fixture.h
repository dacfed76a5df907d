// The decoder window on a bench of its own, with a description file written by the test and a
// simulated Tams MC. The catalogue is empty, so the file is Default.dec.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>

#include <functional>
#include <stdexcept>
#include <utility>

#include "base/ui/pictures.h"
#include "base/ui/window_scale.h"
#include "db/catalogue.h"
#include "db/cv_record.h"
#include "decoder/decoder_bench.h"
#include "decoder/ui/cv_table_view.h"
#include "decoder/ui/frm_decoder.h"
#include "decoder/ui/value_edit.h"
#include "link/station_link.h"
#include "sim/tams_station.h"
#include "support/activation_hook.h"
#include "support/memory_can.h"
#include "support/memory_socket.h"
#include "support/scripted_prompt.h"
#include "support/sim_line.h"
#include "support/virtual_clock.h"

namespace lokari::test {

class WindowFixture : public ::testing::Test {
 protected:
  WindowFixture() {
    settings.baseUnit = StationKind::TamsMc;
    settings.comPort = 3;
    settings.timeoutVal = 2;
    settings.delayFlag = false;
    record.InitDcData();
  }

  /// Writes Default.dec; lines end with "\n".
  void describe(const QByteArray& text) {
    QFile file(base.filePath(QStringLiteral("Default.dec")));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
  }

  /// `count` CVs from `first` on a page, named "Zeile <CV>".
  static QByteArray cvLines(int first, int count, int page) {
    QByteArray lines;
    for (int cv = first; cv < first + count; ++cv) {
      lines += "CV_" + QByteArray::number(cv) + "=Zeile " + QByteArray::number(cv) + ",0-255,0," +
               QByteArray::number(page) + "\n";
    }
    return lines;
  }

  void setValue(int cv, int value, char mark = 0, size_t set = 0) {
    record.recCvValues[set][cv - 1] = static_cast<char>(value);
    record.recCvMarks[set][cv - 1] = mark;
  }

  /// Opens the window and runs `script` in it. A window that the script leaves open is closed, and
  /// drops what it has without a question.
  bool edit(const std::function<void()>& script, const QString& address = QStringLiteral("3")) {
    ActivationHook hook([&] {
      script();
      if (window.isVisible()) bench.cmdCancel();
    });
    window.installEventFilter(&hook);
    return window.edit(record, address);
  }

  template <typename T>
  T* control(const QString& name) {
    T* found = window.findChild<T*>(name);
    if (!found) throw std::logic_error("no control " + name.toStdString());
    return found;
  }
  ValueEdit* field(const char* name) { return control<ValueEdit>(QString::fromLatin1(name)); }
  QAbstractButton* button(const char* name) {
    return control<QAbstractButton>(QString::fromLatin1(name));
  }
  QComboBox* list(const char* name) { return control<QComboBox>(QString::fromLatin1(name)); }
  QLabel* label(const char* name) { return control<QLabel>(QString::fromLatin1(name)); }
  QTabWidget* tabs() { return control<QTabWidget>(QStringLiteral("ssDecoder")); }
  CvTableView* grid() { return control<CvTableView>(QStringLiteral("cvTable")); }

  void click(QWidget* control) {
    QCoreApplication::processEvents();  // the layout of a tab that was just chosen
    QTest::mouseClick(control, Qt::LeftButton);
  }
  void click(const char* name) { click(button(name)); }
  /// Replaces a field's text as a user does, and stays in it.
  void type(ValueEdit* into, const QString& text) {
    into->setFocus();
    into->selectAll();
    QTest::keyClicks(into, text);
  }
  /// Goes on to the next field and lets what the window does on leaving one happen.
  void leave(ValueEdit* from) {
    QTest::keyClick(from, Qt::Key_Tab);
    QCoreApplication::processEvents();
  }

  /// Clicks the head of a column of the grid.
  void clickHead(GridColumn column) {
    QHeaderView* heads = grid()->horizontalHeader();
    const int section = static_cast<int>(column);
    QTest::mouseClick(
        heads->viewport(), Qt::LeftButton, Qt::NoModifier,
        QPoint(heads->sectionViewportPosition(section) + heads->sectionSize(section) / 2,
               heads->height() / 2));
  }

  int value(int cv) const { return bench.sets.value(CvIndex(cv)); }

  static constexpr int kGridTab = 34;
  QTemporaryDir base;
  VirtualClock clock;
  Settings settings;
  ScriptedPrompt prompt;
  sim::Layout layout;
  sim::FaultPlan faults;
  sim::TamsStation station{{clock, layout, faults}};
  SimLine line{clock, station};
  MemorySocket socket{clock};
  MemoryCan can;
  StationLink link{settings, clock, prompt, {line, socket, can}};
  Catalogue catalogue;
  DecoderBench bench{{settings, clock, prompt, link, catalogue, base.path(), QStringList(256)}};
  WindowScale scale{base.filePath(QStringLiteral("WINDOW.INI"))};
  FrmDecoder window{bench, link, clock, Pictures(base.path()), scale};
  CvRecord record;
};

inline QColor textColourOf(const QWidget* control) {
  return control->palette().color(QPalette::Active, QPalette::Text);
}

}  // namespace lokari::test
