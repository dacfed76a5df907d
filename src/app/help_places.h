// Which page of the manual belongs to a window.
#pragma once

#include <QString>

#include <span>

namespace lokari {

/// The page, with the heading where one is meant, that the key F1 opens in a window.
struct HelpPlace {
  const char16_t* window;  ///< its objectName
  const char16_t* page;    ///< "decoder.html#rechner"
};

std::span<const HelpPlace> helpPlaces();

/// The page of that window; empty where it has none of its own.
QString helpPlaceOf(const QString& window);

/// Of the main window while it is a search form.
QString searchFormPage();

/// Where the texts of the program's boxes are explained.
QString messagesPage();

}  // namespace lokari
