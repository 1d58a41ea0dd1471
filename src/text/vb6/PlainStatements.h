#pragma once
// Lines of a procedure's body of which nothing is to be understood but their type: two of three.
// What they are shows in a dozen steps; all others, and all in doubt, go the whole way through
// `LineClassifier`.

#include <optional>
#include <string>
#include <string_view>

#include "core/Enums.h"
#include "text/LineGlance.h"
#include "text/LineScan.h"

namespace vendrel {

/// What a plain line is.
struct PlainLine {
  LineTypeEnum Type = OTHER;
  /// The text behind the apostrophe, without outer blanks; empty where there is none.
  std::string_view Comment;
};

/// Reads a physical line of Visual Basic 5 or 6 that stands in the body of a procedure, if it is
/// plain: blank, a comment, the end of the procedure, or one statement that declares nothing, opens
/// no block, and has no label, number, separator or continuation; a comment may stand behind it.
/// Then `LineClassifier` gives the same type and comment, and nothing else that matters in a body.
/// Nothing for any other line, and for one of which it would cost more to be sure. `buffer` is
/// overwritten.
std::optional<PlainLine> PlainLineOf(std::string_view line, const ClassifierRules& rules,
                                     std::string& buffer);

/// The same of a line of at most `kGlance` bytes at which a glance was taken.
std::optional<PlainLine> PlainLineOf(std::string_view line, const LineGlance& glance,
                                     const ClassifierRules& rules, std::string& buffer);

}  // namespace vendrel
