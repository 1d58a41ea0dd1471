#pragma once
// One line on its way into a block, in stages: the comment is split off, the statement dispatched
// by its type, comments attached, attributes read, tagged comments handed over, the record stored.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "core/NumericText.h"
#include "intake/LanguageRules.h"
#include "model/Block.h"
#include "model/Component.h"
#include "text/CodeLine.h"

namespace vendrel {

/// Chooses the block of a line and hands the line on.
void AddParsedCode(Component& component, ParsedLine& line, bool addLine);

/// Whether a line opens a procedure, or the declarations section of its module.
bool OpensAnyBlock(const Component& component, const ModuleIntake& intake, const ParsedLine& line);

/// Whether directives, and lines of false branches, stay as they stand in the source.
bool KeepsDirectives(const Component& component, const ModuleIntake& intake);

/// Whether a line closes the Type or Enum that is open, though it is no End of one: the beginning
/// or the end of a procedure (`MemberNames`).
bool EndsOpenDeclaration(const ParsedLine& line);

/// Takes a text of several lines as so many physical lines of a module.
void AddLinesOfCode(Component& component, std::string_view text);

/// Ends the reading of a module that is handed in by lines: what waits for a further line is
/// settled.
void FinishLines(Component& component);

/// Makes the list for the lines of a block, which point into the text of its module.
void PrepareLines(Block& block);
/// Stores a line in a block without interpreting it.
void StoreLine(Block& block, const ParsedLine& line, std::int32_t before = 0,
               std::int32_t after = 0);

/// Offers a help context ID read from a module to its project.
void ReportHelpContextID(Component& component, std::int32_t id);

/// Gives an element the help context ID that stands in the source.
template <typename Element>
void TakeHelpContextID(Component& component, Element& element, std::int32_t id) {
  element.HelpContextID = element.HelpContextIDRead = id;
  ReportHelpContextID(component, id);
}

/// What the stages of one line share: where it goes, by which rules it is read, what they found.
struct LinePassage {
  LinePassage(vendrel::Block& block, vendrel::Component& component, ParsedLine& line);

  vendrel::Block& Block;
  vendrel::Component& Component;
  ModuleIntake& Intake;
  const LanguageRules& Language;
  const ReadingRules& Reading;
  const ProjectOptions& Options;
  ParsedLine& Line;
  vendrel::Block::IntakeState& State;
  /// The tagged comment of the line.
  std::shared_ptr<TaggedComment> Tagged;
  /// The text of its comment, if that is not tagged.
  std::string_view Untagged;
  bool ClearLastElement = false;
  bool ClearTaggedCommentBuffer = false;
  bool IsEvent = false;
  bool FoundEventComment = false;

  SourceRules Rules() const { return {Language, Reading}; }
  /// The element that a comment behind it describes.
  void SetLast(CodeElement* element) { Component.LastElement = element; }
  /// The line of the block at which the statement begins.
  std::int32_t StatementIndex() const;
  /// Gives the comment that waits to an element.
  void DescribeFromBuffer(CodeElement& element);
  /// "Dim x As Long: x = 5 ' the count": the comment of the line is about what it declares.
  bool Declared(const CodeElement& element) const;
  /// Tells a name that no declaration of the complete reading should bring about.
  void ReportOddName(const CodeElement& element, std::string_view name,
                     std::string_view type) const;
};

/// Puts an untagged comment that is a line of its own where it belongs.
void AttachCommentLine(Block& block, ModuleIntake& intake, std::string_view comment);
/// Only blocks, enumerations, their members and structures take a comment that follows them: the
/// module forgets any other last element.
void ForgetUndescribable(Component& component);

/// Closes the Type or Enum that is open in the block and tells it; does nothing if none is.
void CloseOpenDeclaration(LinePassage& p);

/// A variable of the statement at hand, of which the declarator is still to be read.
std::shared_ptr<Variable> NewVariable(const LinePassage& p);
/// These add what a statement declares where it belongs, with the comment that describes it.
/// `isScoped`: a local of that name in another block of the procedure stands beside this one.
void AddVariable(LinePassage& p, std::shared_ptr<Variable> variable, bool isScoped = false);
void AddConstant(LinePassage& p, Block& owner, std::shared_ptr<Constant> constant);
void AddInterface(LinePassage& p, std::string_view name);

// The stages, in their order.
void SplitComment(LinePassage& p);
/// A statement outside of Type and Enum, by its type.
void Dispatch(LinePassage& p);
/// A line in an open Type or Enum, or a blank one.
void TakeInsideDeclaration(LinePassage& p);
/// A statement of the declarations section that no keyword tells: Option, Def..., Implements.
void TakeSectionStatement(LinePassage& p);
void AttachComments(LinePassage& p);
/// False when the line is used up and not stored.
bool TakeAttribute(LinePassage& p);
void HandOverTaggedComments(LinePassage& p);

}  // namespace vendrel
