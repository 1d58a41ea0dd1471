#pragma once
// One line on its way into a block, in stages: the comment is split off, the statement dispatched
// by its type, comments attached, attributes read, tagged comments handed over, the record stored.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "core/NumericText.h"
#include "model/Block.h"
#include "model/Component.h"
#include "text/CodeLine.h"

namespace vendrel {

struct ModuleIntake;

/// Chooses the block of a line and hands the line on.
void AddParsedCode(Component& component, ParsedLine& line, bool addLine);

/// Whether a line opens a procedure, or the declarations section of its module.
bool OpensAnyBlock(const Component& component, const ModuleIntake& intake, const ParsedLine& line);

/// Whether a line closes the Type or Enum that is open, though it is no End of one: the beginning
/// or the end of a procedure (`MemberNames`).
bool EndsOpenDeclaration(const ParsedLine& line);

/// Takes a text of several lines as so many physical lines of a module.
void AddLinesOfCode(Component& component, std::string_view text);

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

/// The passage of one line through `Block::AddLine`.
class LineIntake {
 public:
  LineIntake(Block& block, Component& component, ParsedLine& line);
  void Run(std::int32_t before, std::int32_t after);
  /// Closes the Type or Enum that is open in the block and tells it; does nothing if none is.
  void CloseOpenDeclaration();

 private:
  // Stage 1 (LineIntake.cpp).
  void SplitComment();
  void ContinueTaggedComment();
  void TakeTaggedComment();
  bool IsDeclaredOnThisLine(const CodeElement& element) const;
  void ForgetLastElementUnlessDescribable(std::string_view tag);
  // Stage 2 (LineDispatch.cpp).
  void Dispatch();
  void TakeProcedure(BlockTypeEnum type);
  void TakeInitialiser(BlockTypeEnum type, std::string_view name);
  void TakeProperty();
  void TakeEnd();
  void TakeDotNetPropertyEnd();
  void TakeVariables();
  void AddVariable(std::shared_ptr<Variable> variable);
  void TellOddName(const CodeElement& element, std::string_view name, std::string_view type) const;
  void TakeConstants();
  void TakeEnumeration();
  void TakeStructure();
  void TakeEvent();
  void TakeDeclare();
  void TakeInherits();
  void TakeImports();
  // (Signatures.cpp)
  void ReadSignature();
  void NameAndType();
  // (OpenDeclarations.cpp)
  void TakeInsideDeclaration();
  void TakeInsideByName();
  void CloseStructure();
  void CloseEnumeration();
  void TakeMember();
  // (SectionStatements.cpp)
  void TakeSectionStatement();
  void TakeOption(std::string_view statement);
  void TakeDefType();
  void TakeImplements();
  // Stage 3 (LineComments.cpp).
  void AttachComments();
  void AttachAtBlankLine();
  void AttachCommentLine();
  void AttachAtStatement();
  void AttachModuleComment();
  void DescribeFromBuffer(CodeElement& element);
  void FinishStartLine();
  void FindEventSource();
  void JudgeStatic();
  void SettleAccess();
  void SettlePropertyType();
  void AddDelegate();
  // Stage 4 (AttributeLines.cpp).
  bool TakeAttribute();
  bool TakeHelpIDs(std::string_view statement);
  void TakeFlags(std::string_view statement);
  // Stage 5 (LineIntake.cpp).
  void HandOverTaggedComments();

  std::int32_t AdjustedLineIndex() const;
  void SetLast(CodeElement* element) { mComponent.LastElement = element; }
  bool IsDotNet() const { return mDotNet; }

  Block& mBlock;
  Component& mComponent;
  ModuleIntake& mIntake;
  const ProjectOptions& mOptions;
  ParsedLine& mLine;
  Block::IntakeState& mState;
  std::shared_ptr<TaggedComment> mComment;
  std::string_view mUntagged;
  bool mDotNet;
  bool mClearLastElement = false;
  bool mClearTaggedCommentBuffer = false;
  bool mIsEvent = false;
  bool mFoundEventComment = false;
};

}  // namespace vendrel
