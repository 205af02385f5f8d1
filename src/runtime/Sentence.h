#pragma once

#include <stdexcept>
#include <string_view>

namespace kelvar {

/// One sentence of documentation, for the scripting reference and the TypeScript declarations.
///
/// Made from a string literal, which must begin with a capital letter, end with a period and
/// contain nothing that would end a table cell or a comment: otherwise it does not compile.
class Sentence {
 public:
  consteval Sentence(const char* text) : text_(text) {
    const std::string_view sentence(text);
    if (sentence.empty() || sentence.front() < 'A' || sentence.front() > 'Z') {
      throw std::invalid_argument("a sentence begins with a capital letter");
    }
    if (sentence.back() != '.') throw std::invalid_argument("a sentence ends with a period");
    if (sentence.find_first_of("|\n") != std::string_view::npos ||
        sentence.find("*/") != std::string_view::npos) {
      throw std::invalid_argument("a sentence must not end a table cell or a comment");
    }
  }

  const char* text() const { return text_; }

 private:
  const char* text_;
};

}  // namespace kelvar
