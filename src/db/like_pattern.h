// The patterns of LIKE: "*" any text, "?" one character, "#" one digit, "[a-z]" one of a list,
// "[!a-z]" one that is not in it. Case does not count.
#pragma once

#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace lokari {

class LikePattern {
 public:
  /// Nothing when the pattern is broken: a list that is not closed, or a range that runs backward.
  static std::optional<LikePattern> parse(std::string_view pattern);

  /// True when the whole text fits. Takes at most the product of both lengths in steps.
  bool matches(std::string_view text) const;

 private:
  enum class Kind { Character, Any, Digit, List, Run };
  struct Element {
    Kind kind = Kind::Character;
    char32_t character = 0;
    bool negated = false;
    std::vector<std::pair<char32_t, char32_t>> ranges;
  };

  static bool fits(const Element& element, char32_t character);
  static std::optional<Element> parseList(const std::vector<char32_t>& pattern, size_t& at);

  std::vector<Element> elements_;
};

}  // namespace lokari
