#pragma once
// The attribute lines that a written module gets for help context IDs and descriptions, and those
// that stand in its source.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "model/Block.h"
#include "model/Component.h"

namespace vendrel {

/// "Attribute Name.VB_HelpID = 5", with another word for variables.
std::string HelpIDLine(std::string_view name, std::int32_t id);
std::string VarHelpIDLine(std::string_view name, std::int32_t id);
/// `Attribute Name.VB_Description = "text"`, with another word for variables. The text goes in as
/// it is.
std::string DescriptionLine(std::string_view name, std::string_view text);
std::string VarDescriptionLine(std::string_view name, std::string_view text);

/// What the object browser shows for an element: the text of its comment for it, else its bare
/// description; nothing if it has neither. `whole`: that text on one line, else the first sentence
/// of the description, with doubled quotation marks; nothing if both are empty.
std::optional<std::string> BrowserText(CodeElement& element, bool whole);
/// The same for a property as a whole, from the block that stands for it.
std::optional<std::string> PropertyBrowserText(Block& block, bool whole);
/// The same for a module. Unless `whole`, a description of 50 characters or more, or none, gives
/// the names of project and module.
std::optional<std::string> ModuleBrowserText(Component& component, bool whole);
/// The text of the comment of that tag; nothing without one.
std::optional<std::string> CommentText(CodeElement& element, std::string_view tag);

/// Whether an attribute line holds the description of a procedure, event or variable.
bool IsDescriptionLine(std::string_view text);

/// The help IDs of the lines of one block, for the reading that keeps them where they stood.
class HelpIDs {
 public:
  explicit HelpIDs(Block& block);

  /// The line as it is to be written: as it is unless the ID of its element was changed since it
  /// was read; nothing if that ID was taken away.
  std::optional<std::string> Kept(std::string_view text) const;
  /// Whether a line of the block was read as that of the module, or of the element of that name.
  bool HasLineOfModule() const;
  bool HasLineOf(std::string_view name) const;

 private:
  std::optional<std::int32_t> ChangedID(std::string_view subject, bool ofVariable) const;

  Block& mBlock;
  Component* mComponent;
};

}  // namespace vendrel
