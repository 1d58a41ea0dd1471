#pragma once
// Descriptions of code elements: how texts are joined, and how comments that were kept fold into
// the description of their element afterwards. The joining itself is a text routine; here it takes
// the forms that clients and the rules of comments call.

#include <string>
#include <string_view>

#include "model/CodeElement.h"
#include "text/DescriptionText.h"

namespace vendrel {

/// Appends `NewText` to `Description` and returns it, in the language of the project being read.
/// All three arguments are changed as documented at the text routine: `NewText` is left as it was
/// appended, and `WrapType` becomes 1 (and stays so for the caller) where the text continues a
/// line.
std::string& AppendDescription(std::string& Description, std::string& NewText, int& WrapType);
/// The same for callers who need neither effect.
std::string& AppendDescription(std::string& Description, std::string_view NewText, int WrapType);

/// Appends `Text` on a line of its own to the tagged or untagged description of an element. An
/// element without such a description is left alone.
void AddObjectDescription(CodeElement& obj, std::string_view Text, bool IsTagged = false);
/// The same to the untagged one, for a reader, which knows its language.
void AddObjectDescription(CodeElement& obj, std::string_view Text, LanguageVersionEnum language);

/// The description of an element with the texts of all its comments of the tag `TagID` (case
/// ignored) in front. Unchanged if there are none, or if `OnlyUseIfBlank` and it is not empty;
/// replaced by them if `Overwrite`. The comments stay where they are.
std::string MergedTaggedDescription(std::string_view TaggedDescription,
                                    const TaggedComments& comments, std::string_view TagID,
                                    bool OnlyUseIfBlank, bool Overwrite);

}  // namespace vendrel
