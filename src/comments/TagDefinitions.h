#pragma once
// Which words are tags, and what each tag means. The table is data behind a service: built in, read
// from a file, or put in place by a host. It is asked for every comment line of a source file.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/Enums.h"
#include "model/CodeElement.h"
#include "model/TaggedComment.h"

namespace vendrel {

/// The meaning of one tag.
class TaggedCommentDef {
 public:
  /// The tag with its two hashes, in upper case.
  std::string TagIdentifier;
  /// Kind of element that the tag belongs to; `etNone` where `Scope` tells it.
  ElementTypeEnum ElementType = etNone;
  /// The text joins the description of its element instead of staying a comment.
  bool IsDescription = false;
  /// How the texts of several comments of this tag are joined.
  WrapTypeEnum WrapType = wrapLineBreak;
  /// Comments of this tag are not joined while they wait for their element.
  bool KeepSeparateInBuffer = false;
  /// For a legacy tag the tag that replaces it; empty for others.
  std::string UpgradeTo;
  /// Comma-separated scope names ("FZ:Method,FZ:Event"); empty where `ElementType` tells the kind.
  std::string Scope;
  /// Letters that restrict the upgrade: "p" puts it off until the comment is stored.
  std::string UpgradeFlags;

  /// Whether a comment of this tag names the member it is for in its first word.
  bool TakesQualifier() const;
};

/// All definitions, found by tag with ASCII case ignored, without an allocation.
class TaggedCommentDefs {
 public:
  using Element = TaggedCommentDef;

  /// The definition of a tag; raises 9 for an unknown one.
  const TaggedCommentDef& Item(std::string_view TagIdentifier) const;
  /// The same; null for an unknown tag. Texts that do not begin with "##" are told at once.
  const TaggedCommentDef* Find(std::string_view TagIdentifier) const;
  /// By 1-based position; raises 9 outside.
  const TaggedCommentDef& Item(int index) const;
  /// Adds a definition. Raises 5 for a tag without "##" or with a blank, 457 for one already there.
  void Add(TaggedCommentDef definition);
  std::size_t Count() const { return mItems.size(); }
  auto begin() const { return mItems.begin(); }
  auto end() const { return mItems.end(); }

  /// Tells the first definition whose `UpgradeTo` names no tag here or leads in a circle; empty if
  /// there is none.
  std::string UpgradeFault() const;

 private:
  std::vector<TaggedCommentDef> mItems;
  std::vector<std::uint32_t> mSlots;  // position in mItems plus one; 0: free
  void Place(std::uint32_t position);
};

/// The service that owns the tag definitions. A host registers its own under the ProgID
/// "TemplateObjects" before the first use, or installs it later.
class TemplateObjects {
 public:
  virtual ~TemplateObjects() = default;
  virtual const vendrel::TaggedCommentDefs& TaggedCommentDefs() const = 0;

  /// The service in force. Made at first use by the registry; the built-in one where none is there.
  static TemplateObjects& Default();
  /// Puts a service in force; an empty pointer makes the next use ask the registry again.
  static void Install(std::shared_ptr<TemplateObjects> service);
};

/// Definition of a tag by the service in force; null if it has none, or if the service fails.
const TaggedCommentDef* FindTagDefinition(std::string_view TagIdentifier);

/// The built-in table.
const TaggedCommentDefs& BuiltinTagDefinitions();

/// A table from JSON text: an object with an array "tags" of objects with the property names of
/// `TaggedCommentDef`. Behind them stand the built-in tags that are not among them, unless the
/// object says "replace": true. `name` is the file named in failures. Raises 5 for text that is
/// malformed (with line and column), and for an entry (named by number and tag) that lacks its tag,
/// has an unknown property or a value of the wrong kind, repeats a tag, or whose `UpgradeTo` leads
/// nowhere or in a circle.
TaggedCommentDefs ReadTagDefinitions(std::string_view json, std::string_view name);

/// Reads such a file and puts it in force. Raises what reading files raises too.
void UseTagDefinitionFile(const std::string& nativePath);

}  // namespace vendrel
