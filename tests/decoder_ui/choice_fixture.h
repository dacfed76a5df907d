// The decoder window with a catalogue of two makers, a description file of each type, and a decoder
// on the programming track.
#pragma once

#include <QDir>

#include "support/test_database.h"
#include "window_fixture.h"

namespace lokari::test {

class ChoiceFixture : public WindowFixture {
 protected:
  ChoiceFixture() {
    database.clearLists();
    database.run(
        "INSERT INTO DCMANUFS (DC_MANUF, DC_MANUF_TEXT, DC_MANUF_SEQ) VALUES "
        "(97, 'Adler', 1), (60, 'Kessler', 2)");
    database.run(
        "INSERT INTO DECODERS (DC_MANUF, DC_DECODER, DC_SEQ) VALUES "
        "(97, 'Eins', 1), (97, 'Zwei', 2), (97, 'Drei', 3)");
    catalogue.bind(&database.open());
    record.recManuf = 97;
    record.recDecoder = QStringLiteral("Eins");
  }

  void describeType(const char* path, const QByteArray& text) {
    const QString file = base.filePath(QString::fromLatin1(path));
    QDir().mkpath(QFileInfo(file).path());
    QFile dec(file);
    ASSERT_TRUE(dec.open(QIODevice::WriteOnly));
    dec.write(text);
  }

  /// Takes an entry of a list as the mouse does, and lets the list close.
  void choose(const char* name, const QString& entry) {
    QComboBox* box = list(name);
    box->setFocus();
    box->showPopup();
    const int index = box->findText(entry);
    ASSERT_GE(index, 0) << entry.toStdString();
    QTest::keyClick(box->view(), Qt::Key_Home);
    for (int i = 0; i < index; ++i) QTest::keyClick(box->view(), Qt::Key_Down);
    QTest::keyClick(box->view(), Qt::Key_Return);
    QCoreApplication::processEvents();
    clock.advance(100);
  }

  /// What went to the station, one entry a command.
  QStringList sent() const {
    QStringList commands;
    for (const auto& out : line.writes) commands << QString::fromLatin1(out.data).trimmed();
    return commands;
  }

  TestDatabase database;
};

}  // namespace lokari::test
