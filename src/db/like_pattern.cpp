#include "db/like_pattern.h"

#include <algorithm>

#include "db/german_text.h"

namespace lokari {

std::optional<LikePattern> LikePattern::parse(std::string_view pattern) {
  LikePattern result;
  const std::vector<char32_t> characters = lowerCharacters(pattern);
  for (size_t at = 0; at < characters.size(); ++at) {
    Element element;
    switch (characters[at]) {
      case U'*':
        element.kind = Kind::Run;
        break;
      case U'?':
        element.kind = Kind::Any;
        break;
      case U'#':
        element.kind = Kind::Digit;
        break;
      case U'[': {
        std::optional<Element> list = parseList(characters, at);
        if (!list) return std::nullopt;
        element = *std::move(list);
        break;
      }
      default:
        element.character = characters[at];
    }
    result.elements_.push_back(std::move(element));
  }
  return result;
}

// `at` stands on "[" and is left on "]".
std::optional<LikePattern::Element> LikePattern::parseList(const std::vector<char32_t>& pattern,
                                                           size_t& at) {
  const auto close =
      std::find(pattern.begin() + static_cast<std::ptrdiff_t>(at), pattern.end(), U']');
  if (close == pattern.end()) return std::nullopt;
  const auto end = static_cast<size_t>(close - pattern.begin());
  Element element;
  element.kind = Kind::List;
  size_t from = at + 1;
  if (from < end && pattern[from] == U'!') {
    element.negated = true;
    ++from;
  }
  for (; from < end; ++from) {
    char32_t last = pattern[from];
    const char32_t first = last;
    if (from + 2 < end && pattern[from + 1] == U'-') {
      last = pattern[from + 2];
      from += 2;
    }
    if (last < first) return std::nullopt;
    element.ranges.emplace_back(first, last);
  }
  at = end;
  return element;
}

bool LikePattern::fits(const Element& element, char32_t character) {
  switch (element.kind) {
    case Kind::Any:
      return true;
    case Kind::Digit:
      return character >= U'0' && character <= U'9';
    case Kind::List: {
      // A range holds the accented forms of its letters as well.
      const char32_t base = baseLetter(character);
      const bool listed =
          std::any_of(element.ranges.begin(), element.ranges.end(), [&](const auto& range) {
            const auto [first, last] = range;
            return (character >= first && character <= last) ||
                   (first != last && base >= first && base <= last);
          });
      return listed != element.negated;
    }
    case Kind::Character:
    case Kind::Run:
      break;
  }
  return character == element.character;
}

bool LikePattern::matches(std::string_view text) const {
  const std::vector<char32_t> characters = lowerCharacters(text);
  size_t element = 0;
  size_t at = 0;
  // Where to go on when the characters behind the last run do not fit: one further in the text.
  std::optional<size_t> run;
  size_t runAt = 0;
  while (at < characters.size()) {
    if (element < elements_.size() && elements_[element].kind == Kind::Run) {
      run = element++;
      runAt = at;
    } else if (element < elements_.size() && fits(elements_[element], characters[at])) {
      ++element;
      ++at;
    } else if (run) {
      element = *run + 1;
      at = ++runAt;
    } else {
      return false;
    }
  }
  while (element < elements_.size() && elements_[element].kind == Kind::Run) ++element;
  return element == elements_.size();
}

}  // namespace lokari
