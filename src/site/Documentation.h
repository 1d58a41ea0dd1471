#pragma once
// What is known about an element in words: tagged and untagged comments, XML documentation in
// source, help strings. Texts keep their mark-up.

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "model/CodeElement.h"

namespace vendrel::site {

struct Documentation {
  /// A name, or what it is a name of, and a text.
  using Entry = std::pair<std::string, std::string>;

  std::string Summary;
  std::string Remarks;
  std::string Returns;
  /// The value of a property.
  std::string Value;
  std::vector<Entry> Parameters;
  std::vector<Entry> Exceptions;
  /// Captions and code.
  std::vector<Entry> Examples;
  /// Target, and caption if there is one.
  std::vector<Entry> SeeAlso;
  bool IsNew = false;

  std::string_view Parameter(std::string_view name) const;
};

Documentation DocumentationOf(const CodeElement& element);

/// The summary alone: what lists show, and what "is documented" asks for.
std::string SummaryOf(const CodeElement& element);

}  // namespace vendrel::site
