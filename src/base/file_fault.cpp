#include "base/file_fault.h"

#include <algorithm>
#include <array>
#include <cerrno>

namespace lokari {
namespace {

struct Row {
  int error;
  const char16_t* words;
};

constexpr std::array kRows{
    Row{EACCES, u"keine Berechtigung"},
    Row{EPERM, u"keine Berechtigung"},
    Row{ENOSPC, u"der Datenträger ist voll"},
    Row{EDQUOT, u"das zugeteilte Kontingent ist voll"},
    Row{EFBIG, u"die Datei wird größer als hier erlaubt"},
    Row{EROFS, u"der Datenträger ist schreibgeschützt"},
    Row{ENOENT, u"den Ordner oder die Datei gibt es nicht"},
    Row{ENOTDIR, u"ein Teil des Pfads ist kein Ordner"},
    Row{EISDIR, u"das ist ein Ordner"},
    Row{EIO, u"Ein- oder Ausgabefehler des Datenträgers"},
    Row{ENAMETOOLONG, u"der Name ist zu lang"},
    Row{ELOOP, u"zu viele Verweise aufeinander"},
    Row{EBUSY, u"die Datei ist belegt"},
    Row{EXDEV, u"das Ziel liegt auf einem anderen Datenträger"},
    Row{EMFILE, u"zu viele offene Dateien"},
    Row{ENFILE, u"zu viele offene Dateien"},
    Row{ENODEV, u"das Gerät ist nicht da"},
    Row{ENXIO, u"das Gerät ist nicht da"},
};

}  // namespace

QString fileFault(int error) {
  const auto* row = std::find_if(kRows.begin(), kRows.end(),
                                 [error](const Row& each) { return each.error == error; });
  return row == kRows.end() ? qt_error_string(error) : QString::fromUtf16(row->words);
}

}  // namespace lokari
