// lokari-tour: the main job of the workbench, done in its real windows on the configured station.
//
//   lokari-tour PICTURES
//
// Shows a vehicle, opens the decoder window, reads all marked CVs, changes one, writes it, saves,
// and looks at it again after a restart of the program. Ends with 0 when every step came out as it
// should.
#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QTextStream>

#include <memory>

#include "app/tour/tour.h"
#include "app/ui/application.h"
#include "app/ui/main_win.h"
#include "decoder/ui/text_colour.h"
#include "decoder/ui/value_edit.h"

namespace lokari {
namespace {

const QString kDecoderWindow = QStringLiteral("frmDecoder");
const QString kProgressDialog = QStringLiteral("dlg_comm");
const QString kMainWindow = QStringLiteral("main_win");
const QString kAcceleration = QStringLiteral("txtDcComAccTime");

void say(const QString& line) {
  QTextStream(stdout) << "   " << line << Qt::endl;
}

bool onShow(const QString& window) {
  return shownControl(window) != nullptr;
}

/// The decoder window is there and no job runs in front of it.
bool decoderWindowIdle() {
  return onShow(kDecoderWindow) && !onShow(kProgressDialog);
}

/// What the value fields of the decoder window show: how many are verified, how many failed.
struct Colours {
  int verified = 0;
  int failed = 0;
};

Colours printValues() {
  Colours colours;
  const QWidget* window = shownControl(kDecoderWindow);
  for (const ValueEdit* field : window->findChildren<ValueEdit*>()) {
    const QColor colour = field->palette().color(QPalette::Active, QPalette::Text);
    const bool blue = colour == colourValue(TextColour::Blue);
    const bool red = colour == colourValue(TextColour::Red);
    if (!blue && !red) continue;
    ++(blue ? colours.verified : colours.failed);
    say(QStringLiteral("%1 = %2 (%3)")
            .arg(field->accessibleName(), field->text(),
                 blue ? QStringLiteral("gelesen") : QStringLiteral("fehlgeschlagen")));
  }
  return colours;
}

/// A value for the acceleration that it has not got now.
QString otherValue(const QString& now) {
  return now == u"17" ? QStringLiteral("11") : QStringLiteral("17");
}

class MainJob {
 public:
  MainJob(Tour& tour, std::unique_ptr<Application>& application)
      : tour_(tour), application_(application) {}

  void plan() {
    const auto mainWindow = [] { return onShow(kMainWindow); };
    const auto decoderIdle = [] { return decoderWindowIdle(); };
    const auto progress = [] { return onShow(kProgressDialog); };
    const auto bar = [] { return shownControl(QStringLiteral("panProgress")) != nullptr; };

    tour_.step(QStringLiteral("Das Hauptfenster zeigt ein Fahrzeug"), mainWindow, [this] {
      say(QStringLiteral("Sammlung %1, Adresse %2: %3")
              .arg(shownText(QStringLiteral("dc_coll")), shownText(QStringLiteral("dc_adr")),
                   shownText(QStringLiteral("fz_lname"))));
      take(kMainWindow, QStringLiteral("hauptfenster"));
    });
    tour_.step(QStringLiteral("Das Decoderfenster öffnen"), mainWindow,
               [this] { press(QStringLiteral("butProg")); });
    tour_.step(QStringLiteral("Alle CVs zum Lesen ankreuzen"), decoderIdle, [this] {
      take(kDecoderWindow, QStringLiteral("decoderfenster"));
      press(QStringLiteral("cmdReadAll"));
    });
    tour_.step(QStringLiteral("Lesen"), decoderIdle,
               [this] { press(QStringLiteral("cmdDcRead")); });
    tour_.step(QStringLiteral("Der Fortschritt läuft"), bar,
               [this] { take(kProgressDialog, QStringLiteral("fortschritt")); });
    tour_.step(QStringLiteral("Gelesene Werte"), decoderIdle, [this] {
      const Colours colours = printValues();
      if (colours.failed > 0) tour_.fail(QStringLiteral("nicht alle Werte wurden gelesen"));
      if (colours.verified == 0) tour_.fail(QStringLiteral("es wurde nichts gelesen"));
      take(kDecoderWindow, QStringLiteral("gelesen"));
    });
    tour_.step(QStringLiteral("Die Beschleunigung ändern"), decoderIdle, [this] {
      value_ = otherValue(shownText(kAcceleration));
      say(shownText(kAcceleration) + QStringLiteral(" wird ") + value_);
      if (!type(kAcceleration, value_)) tour_.fail(QStringLiteral("das Feld ist gesperrt"));
      press(QStringLiteral("chkWrt_3"));
    });
    tour_.step(QStringLiteral("Schreiben"), decoderIdle,
               [this] { press(QStringLiteral("cmdDcProg")); });
    tour_.step(QStringLiteral("Der Schreibvorgang läuft"), progress, [] {});
    tour_.step(QStringLiteral("Der geschriebene Wert steht da"), decoderIdle, [this] {
      const auto* field = qobject_cast<QLineEdit*>(shownControl(kAcceleration));
      const bool blue =
          field->palette().color(QPalette::Active, QPalette::Text) == colourValue(TextColour::Blue);
      if (field->text() != value_ || !blue) tour_.fail(QStringLiteral("der Wert steht nicht"));
      take(kDecoderWindow, QStringLiteral("geschrieben"));
    });
    tour_.step(QStringLiteral("Mit OK in den Datensatz übernehmen"), decoderIdle,
               [this] { press(QStringLiteral("cmdOK")); });
    tour_.step(
        QStringLiteral("Das Programm beenden und wieder starten"),
        [] { return onShow(kMainWindow) && !onShow(kDecoderWindow); }, [this] { restart(); });
    tour_.step(QStringLiteral("Das Decoderfenster wieder öffnen"), mainWindow,
               [this] { press(QStringLiteral("butProg")); });
    tour_.step(QStringLiteral("Der Wert steht im Datensatz"), decoderIdle, [this] {
      if (shownText(kAcceleration) != value_) {
        tour_.fail(QStringLiteral("im Datensatz steht ") + shownText(kAcceleration));
      }
      take(kDecoderWindow, QStringLiteral("wieder-geoeffnet"));
      press(QStringLiteral("cmdCancel"));
    });
  }

 private:
  void press(const QString& control) {
    if (!click(control)) {
      tour_.fail(QStringLiteral("„%1“ ist nicht zu sehen oder gesperrt").arg(control));
    }
  }

  void take(const QString& window, const QString& name) {
    tour_.picture(shownControl(window), name);
  }

  void restart() {
    if (!application_->window().close()) {
      tour_.fail(QStringLiteral("das Hauptfenster schließt nicht"));
      return;
    }
    application_.reset();
    application_ = std::make_unique<Application>(QString());
    if (!application_->start()) tour_.fail(QStringLiteral("der zweite Start scheitert"));
  }

  Tour& tour_;
  std::unique_ptr<Application>& application_;
  QString value_;
};

}  // namespace
}  // namespace lokari

int main(int argc, char** argv) {
  const QApplication app(argc, argv);
  // The tour closes and opens main windows; it ends by itself.
  QApplication::setQuitOnLastWindowClosed(false);
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() != 2) {
    QTextStream(stderr) << "Aufruf: lokari-tour BILDERORDNER" << Qt::endl;
    return 2;
  }
  lokari::speakGerman();
  auto application = std::make_unique<lokari::Application>(QString());
  if (!application->start()) return 1;
  lokari::Tour tour(arguments.at(1));
  lokari::MainJob job(tour, application);
  job.plan();
  const int status = tour.run();
  QTextStream(stdout) << (status == 0 ? "Rundgang beendet." : "Rundgang abgebrochen.") << Qt::endl;
  return status;
}
