// Text as the storage compares it: without regard to case, in German order.
#pragma once

#include <QString>

#include <string_view>
#include <vector>

namespace lokari {

/// Below 0, 0 or above 0. Texts are UTF-8. Case never counts; "ß" orders like "ss" and an accented
/// letter like its base letter, and decides only between texts that are otherwise equal. Broken
/// UTF-8 is compared by its bytes.
int compareGerman(std::string_view a, std::string_view b);
int compareGerman(const QString& a, const QString& b);

/// The characters of a UTF-8 text, in lower case.
std::vector<char32_t> lowerCharacters(std::string_view text);

/// The base letter of a lower-case character: "a" for "ä". Others are their own.
char32_t baseLetter(char32_t character);

}  // namespace lokari
