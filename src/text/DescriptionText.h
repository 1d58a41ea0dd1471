#pragma once
// Joining and shortening description texts. "<crlf>" in a description is a marker of six
// characters, not a line break.

#include <string>
#include <string_view>

#include "core/Enums.h"

namespace vendrel {

/// Appends `NewText` to `Description` and returns it: `wrapLineBreak` with "<crlf>" between,
/// `wrapParagraph` as a paragraph of its own, anything else with a blank between. Empty `NewText`
/// counts as one blank, unless both are empty. In VB.NET, text that begins with "_" continues the
/// description: the "_" goes, and `WrapType` becomes `wrapSpace` and stays so for the caller.
/// `NewText` receives the text as it was appended; it must not lie in `Description`.
std::string& AppendDescription(std::string& Description, std::string_view& NewText,
                               WrapTypeEnum& WrapType, LanguageVersionEnum Language);

/// The same for the language of the project being read.
std::string& AppendDescription(std::string& Description, std::string_view NewText,
                               WrapTypeEnum& WrapType);
std::string& AppendDescription(std::string& Description, std::string_view NewText,
                               WrapTypeEnum&& WrapType = wrapNone);

/// The text on one line: each line end, and each "<crlf>", is one blank.
std::string OnOneLine(std::string_view text);
/// The first sentence of a description on one line, without mark-up, blanks at its ends or in
/// runs: up to ".", "!" or "?" that is followed by a blank and no small letter, or by a paragraph.
std::string FirstSentence(std::string_view description);

/// Plain one-line form: without "%", cut at the first "<crlf>", without mark-up.
std::string BareDescription(std::string_view S);

}  // namespace vendrel
