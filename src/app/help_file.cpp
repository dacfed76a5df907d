#include "app/help_file.h"

#include "base/paths.h"

namespace lokari {

QString findHelpFile(const QString& basePath) {
  for (const char16_t* name :
       {u"/LOKARI.qhc", u"/HELP/LOKARI.qhc", u"/LOKARI.CHM", u"/HELP/LOKARI.CHM"}) {
    const QString file = findFile(basePath + QString::fromUtf16(name));
    if (!file.isEmpty()) return file;
  }
  return {};
}

}  // namespace lokari
