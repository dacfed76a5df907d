#include "db/german_text.h"

#include <QChar>

#include <algorithm>

namespace lokari {
namespace {

constexpr char32_t kSharpS = 0xDF;
constexpr unsigned char kFirstNonAscii = 0x80;

constexpr unsigned char lowerAscii(unsigned char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<unsigned char>(c - 'A' + 'a') : c;
}

// One pass over a text: its characters, folded.
class Characters {
 public:
  explicit Characters(std::string_view text) : at_(text.data()), end_(text.data() + text.size()) {}

  bool atEnd() const { return at_ == end_; }

  /// The next character in lower case; must not be called at the end.
  char32_t next() {
    const auto first = static_cast<unsigned char>(*at_++);
    if (first < kFirstNonAscii) return lowerAscii(first);
    return QChar::toLower(decode(first));
  }

 private:
  char32_t decode(unsigned char first) {
    const int more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : first >= 0xC0 ? 1 : 0;
    if (more == 0 || end_ - at_ < more) return first;
    char32_t value = first & (0x3FU >> more);
    for (int i = 0; i < more; ++i) {
      const auto byte = static_cast<unsigned char>(at_[i]);
      if ((byte & 0xC0U) != 0x80U) return first;
      value = (value << 6U) | (byte & 0x3FU);
    }
    at_ += more;
    return value;
  }

  const char* at_;
  const char* end_;
};

// The same by base letters, "ß" being two of them.
class BaseLetters {
 public:
  explicit BaseLetters(std::string_view text) : characters_(text) {}

  /// The next letter, 0 at the end. A character 0 inside a text counts as 1: it must not end it.
  char32_t next() {
    if (second_ != 0) {
      const char32_t letter = second_;
      second_ = 0;
      return letter;
    }
    if (characters_.atEnd()) return 0;
    const char32_t character = characters_.next();
    if (character == kSharpS) {
      second_ = U's';
      return U's';
    }
    return character == 0 ? 1 : baseLetter(character);
  }

 private:
  Characters characters_;
  char32_t second_ = 0;
};

// Long lists hold few texts that differ early: what two of them begin with in plain letters decides
// nothing and is passed over byte by byte.
size_t commonBeginning(std::string_view a, std::string_view b) {
  const size_t shorter = std::min(a.size(), b.size());
  size_t at = 0;
  while (at < shorter && a[at] == b[at] && static_cast<unsigned char>(a[at]) < kFirstNonAscii) ++at;
  return at;
}

int byCharacters(std::string_view a, std::string_view b) {
  Characters left(a);
  Characters right(b);
  while (!left.atEnd() && !right.atEnd()) {
    const char32_t l = left.next();
    const char32_t r = right.next();
    if (l != r) return l < r ? -1 : 1;
  }
  if (left.atEnd() == right.atEnd()) return 0;
  return left.atEnd() ? -1 : 1;
}

}  // namespace

char32_t baseLetter(char32_t character) {
  if (character < kFirstNonAscii) return character;
  // A decomposition begins with the base letter; compatibility forms are letters of their own.
  if (QChar::decompositionTag(character) != QChar::Canonical) return character;
  const QString parts = QChar::decomposition(character);
  return parts.isEmpty() ? character : baseLetter(parts.at(0).unicode());
}

int compareGerman(std::string_view a, std::string_view b) {
  const size_t common = commonBeginning(a, b);
  a.remove_prefix(common);
  b.remove_prefix(common);
  BaseLetters left(a);
  BaseLetters right(b);
  for (;;) {
    const char32_t l = left.next();
    const char32_t r = right.next();
    if (l != r) return l < r ? -1 : 1;
    if (l == 0) return byCharacters(a, b);
  }
}

int compareGerman(const QString& a, const QString& b) {
  return compareGerman(std::string_view(a.toStdString()), std::string_view(b.toStdString()));
}

std::vector<char32_t> lowerCharacters(std::string_view text) {
  std::vector<char32_t> result;
  result.reserve(text.size());
  for (Characters characters(text); !characters.atEnd();) result.push_back(characters.next());
  return result;
}

}  // namespace lokari
