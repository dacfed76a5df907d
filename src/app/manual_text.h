// The pages of the manual as plain text, a section for each heading.
#pragma once

#include <QList>
#include <QString>

namespace lokari {

struct ManualPage {
  QString name;  ///< "decoder.html"
  QString html;
};

struct ManualSection {
  QString place;  ///< "decoder.html#rechner"; the page alone for what stands before the first part
  QString page;   ///< the title of the page
  QString heading;  ///< the title of the part; that of the page before the first part
  QString text;     ///< what stands below the heading
};

/// Headings are h1, of the page, and h2, whose id is the anchor. Pages are well formed; what is
/// not understood is left out.
QList<ManualSection> sectionsOf(const ManualPage& page);

/// A piece of a page without its tags, on one line.
QString plainText(const QString& html);

}  // namespace lokari
