#pragma once
// The comments of XML documentation on the elements of a tree, as tagged comments.

#include <cstdint>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "dotnet/DocumentedElements.h"
#include "dotnet/MarkUp.h"
#include "project/Assembly.h"

namespace vendrel {

/// How new comments meet those that are there.
enum ImportMode { imAdd = 0, imKeep = 1, imAppend = 2, imReplace = 3 };

/// What comments made from documentation bear as their `Tag`.
inline constexpr std::string_view kMadeHere = "n";

/// Puts documentation on the elements of one project.
class XmlComments {
 public:
  /// `mode`: 1 keep, 2 add, 3 replace; others add. `externalDocs` may be null. `find` finds what
  /// the documentation refers to; without it names are those of documentation files.
  XmlComments(VBProject& project, ExternalDocs* externalDocs, int mode, MarkUp::Finder find = {});

  /// The element that the name of a `member` leads to; among overloads that without parameters
  /// where the name has none. Null if there is none.
  CodeElement* ElementOf(std::string_view name);
  /// What is placed from now on stands in the source of the project, on that physical line: it has
  /// no mark of a documentation file.
  void SetSourceLine(std::int32_t line) { mSourceLine = line; }
  /// Puts what an element such as `member` holds on `obj`. Rewrites the mark-up in place.
  void ProcessMember(const pugi::xml_node& e, CodeElement& obj);
  /// Names of documented parameters that the last element does not have.
  const std::vector<std::string>& UnknownParameters() const { return mUnknownParameters; }
  /// Whether the last element asks for the documentation of another one, and of which: a name, or
  /// empty for what it overrides or implements. Complete reading only.
  bool Inherits() const { return mInherits; }
  const std::string& InheritsFrom() const { return mInheritsFrom; }

  /// Adds a comment to an element, by the road that comments of source take. An unknown tag is
  /// dropped.
  void AddTaggedComment(CodeElement& obj, std::string_view TagIdentifier,
                        std::string_view Qualifier, std::string_view Text);
  /// The description of an element, if it has one.
  void SetTaggedDescription(CodeElement& obj, std::string_view text);

  static bool HasMultipleExamples(const pugi::xml_node& e);

 private:
  struct Rule;
  static const Rule kRules[];

  bool Keeps() const { return mProject.Reading.DocumentationElements; }
  void TakeSummary(const pugi::xml_node& e);
  void TakeRemarks(const pugi::xml_node& e);
  void TakeParam(const pugi::xml_node& e);
  void TakeTypeParam(const pugi::xml_node& e);
  void TakeReturns(const pugi::xml_node& e);
  void TakeOverload(const pugi::xml_node& e);
  void TakeExample(const pugi::xml_node& e);
  void TakeSeeAlso(const pugi::xml_node& e);
  void TakeException(const pugi::xml_node& e);
  void TakePermission(const pugi::xml_node& e);
  void TakeInheritDoc(const pugi::xml_node& e);
  bool Apply(CodeElement& obj, const std::shared_ptr<TaggedComment>& comment);

  VBProject& mProject;
  int mMode;
  std::int32_t mSourceLine = 0;  // 0: a documentation file
  DocumentedElements mElements;
  MarkUp::Finder mFind;
  MarkUp mMarkUp;
  CodeElement* mObject = nullptr;
  pugi::xml_node mMember;
  std::vector<std::string> mUnknownParameters;
  bool mInherits = false;
  std::string mInheritsFrom;
};

}  // namespace vendrel
