#include "survey/ModuleHindrances.h"

#include <algorithm>
#include <tuple>
#include <unordered_set>
#include <vector>

#include "core/Ascii.h"
#include "output/Places.h"
#include "survey/CodeTokens.h"
#include "text/CodeText.h"

namespace vendrel {
namespace {

using Tell = std::function<void(const HindranceFinding&)>;

bool IsOneOf(std::string_view text, std::initializer_list<std::string_view> words) {
  return std::find(words.begin(), words.end(), text) != words.end();
}

bool IsLateType(std::string_view type) {
  for (const char* name : {"Object", "Control", "Form"})
    if (EqualsNoCaseAscii(type, name)) return true;
  return false;
}

// What the declarations of a module tell.
class DeclarationScan {
 public:
  DeclarationScan(const Component& module, const Tell& tell) : mModule(module), mTell(tell) {}

  VariantShare Run() {
    for (const Block& block : mModule.Blocks.Listed()) {
      for (const Variable& variable : *block.Variables) TakeVariable(variable);
      if (block.Name().empty()) continue;
      const bool isGiven = block.IsEventProcedure || !block.Interface.str().empty();
      if (!isGiven) TakeParameters(*block.Parameters);
      const bool givesValue = block.BlockType() == btFunction || block.BlockType() == btPropertyGet;
      if (givesValue && !isGiven) TakeType(block, block.ReturnType);
    }
    for (const UDT& type : mModule.UDTs)
      for (const Variable& member : type.Members) TakeVariable(member);
    for (const EventDeclaration& event : mModule.EventDeclarations.Listed())
      TakeParameters(*event.Parameters);
    for (const DeclareDeclaration& declare : mModule.Declarations) TakeDeclare(declare);
    return mShare;
  }

 private:
  void TakeVariable(const Variable& variable) {
    TakeType(variable, variable.TypeName);
    std::string_view rest = variable.ArraySubscript;
    while (!rest.empty()) {
      const std::string_view range = Trim(TakeField(rest, ','));
      const std::size_t to = FindNoCaseAscii(range, " To ");
      if (to != kNotFound && Trim(range.substr(0, to)) != "0")
        return Found(Hindrance::ArrayBase, variable);
    }
  }

  void TakeParameters(const Parameters& parameters) {
    for (const Parameter& parameter : parameters) {
      if (parameter.IsParamArray)
        Found(Hindrance::ParamArray, parameter);
      else
        TakeType(parameter, parameter.VariableType);
    }
  }

  void TakeType(const CodeElement& element, std::string_view type) {
    ++mShare.Declared;
    if (IsLateType(type)) Found(Hindrance::LateBinding, element);
    if (!type.empty() && !EqualsNoCaseAscii(type, "Variant")) return;
    ++mShare.Variants;
    Found(Hindrance::VariantType, element);
  }

  void TakeDeclare(const DeclareDeclaration& declare) {
    const std::string library = LowerAscii(declare.Library);
    if (IsSixteenBitLibrary(library.substr(0, library.rfind('.'))))
      Found(Hindrance::SixteenBit, declare);
  }

  void Found(Hindrance kind, const CodeElement& element) {
    HindranceFinding finding{kind, element.ElementName(), &element, element.SourceLine()};
    if (finding.Line == 0) finding.Line = PlaceOf(element).Line;
    mTell(finding);
  }

  const Component& mModule;
  const Tell& mTell;
  VariantShare mShare;
};

// Names that mean something of the module's own, in lower case.
using OwnNames = std::unordered_set<std::string>;

template <typename Elements>
void AddNames(const Elements& elements, OwnNames& names) {
  for (const auto& element : elements) names.insert(LowerAscii(element.ElementName()));
}

// What the statements of a module tell.
class StatementScan {
 public:
  StatementScan(const Component& module, const DeclaredFunctions& declared, const Tell& tell)
      : mModule(module), mDeclared(declared), mTell(tell), mNone() {
    mPlace.Component = &module;
    for (const Block& block : module.Blocks.Listed()) {
      if (!block.Name().empty()) mModuleNames.insert(LowerAscii(block.Name()));
      if (block.BlockType() != btDeclarations) continue;
      AddNames(*block.Variables, mModuleNames);
      AddNames(*block.Constants, mModuleNames);
      AddDates(*block.Variables, mModuleDates);
    }
    for (const EventDeclaration& event : module.EventDeclarations.Listed())
      mModuleNames.insert(LowerAscii(event.Name));
  }

  void Run() {
    for (const Block& block : mModule.Blocks.Listed()) {
      const CodeLines* lines = block.CodeLines.IfAny();
      if (block.BlockType() == btAttributes || !lines || lines->Unloaded()) continue;
      Begin(block);
      for (CodeWalk walk(*lines); walk.Next();) {
        if (lines->IsStartLine(walk.First()) || lines->LineType(walk.First()) == ATTRIBUTE_LINE)
          continue;
        CutCode(walk.Text(), mTokens);
        mIndex = walk.First();
        ScanLine();
      }
    }
  }

 private:
  static void AddDates(const Variables& variables, OwnNames& dates) {
    for (const Variable& variable : variables)
      if (EqualsNoCaseAscii(variable.TypeName, "Date")) dates.insert(LowerAscii(variable.Name));
  }

  void Begin(const Block& block) {
    mBlock = &block;
    mNames.clear();
    mDates.clear();
    if (block.Name().empty()) return;
    AddNames(*block.Variables, mNames);
    AddNames(*block.Constants, mNames);
    AddNames(*block.Parameters, mNames);
    AddDates(*block.Variables, mDates);
    for (const Parameter& parameter : *block.Parameters)
      if (EqualsNoCaseAscii(parameter.VariableType, "Date"))
        mDates.insert(LowerAscii(parameter.Name()));
  }

  bool IsOwn(const std::string& name) const {
    return mNames.contains(name) || mModuleNames.contains(name);
  }

  const CodeToken& At(std::size_t index) const {
    return index < mTokens.size() ? mTokens[index] : mNone;
  }
  const CodeToken& Before(std::size_t index) const { return At(index - 1); }

  void ScanLine() {
    const bool isDeclarations = mBlock->BlockType() == btDeclarations;
    for (mToken = 0; mToken < mTokens.size(); ++mToken) {
      const CodeToken& token = mTokens[mToken];
      if (token.IsFirst) ScanStatement();
      if (!token.IsWord() || IsMember()) continue;
      if (isDeclarations) {
        if (token.Is("win16")) Found(Hindrance::SixteenBit, "Win16");
        continue;
      }
      ScanWord();
    }
  }

  // Behind a dot or "!": a member of something else.
  bool IsMember() const {
    if (mToken == 0) return false;
    const CodeToken& before = Before(mToken);
    if (before.Is("!")) return mTokens[mToken].IsJoined && before.IsJoined;
    return before.Is(".") && !IsOneOf(At(mToken - 2).Text, {"vba", "vb"});
  }

  void ScanStatement() {
    const CodeToken& first = mTokens[mToken];
    const std::string& next = At(mToken + 1).Text;
    if (!first.IsWord()) return;
    if (first.Is("on") && next == "error" && At(mToken + 2).Is("resume") &&
        At(mToken + 3).Is("next"))
      Found(Hindrance::ResumeNext, "On Error Resume Next");
    else if (first.Is("option") && next == "base" && At(mToken + 2).Is("1"))
      Found(Hindrance::ArrayBase, "Option Base 1");
    else if (first.Is("redim"))
      ScanBounds();
    else if (IsDefStatement(first.Text) && At(mToken + 1).IsWord())
      Found(Hindrance::DefType, first.Text);
    else if (first.Is("line") && next == "input")
      FoundRuntime(*FindRuntimeName("input"));
  }

  static bool IsDefStatement(const std::string& word) {
    return IsOneOf(word, {"defbool", "defbyte", "defint", "deflng", "defcur", "defsng", "defdbl",
                          "defdec", "defdate", "defstr", "defobj", "defvar"});
  }

  // "ReDim a(1 To 3), b(x)".
  void ScanBounds() {
    for (std::size_t i = mToken + 1; i < mTokens.size() && !mTokens[i].IsFirst; ++i)
      if (mTokens[i].Is("to") && !Before(i).Is("0"))
        return Found(Hindrance::ArrayBase,
                     At(mToken + (At(mToken + 1).Is("preserve") ? 2 : 1)).Text);
  }

  void ScanWord() {
    const CodeToken& token = mTokens[mToken];
    if (token.Is("win16")) Found(Hindrance::SixteenBit, "Win16");
    if (token.Is("gosub")) Found(Hindrance::GoSub, "GoSub");
    ScanDate();
    const DeclaredFunction* api =
        mNames.contains(token.Text) ? nullptr : mDeclared.Find(token.Text, mModule);
    if (!api) {
      if (const RuntimeName* name = FindRuntimeName(token.Text)) ScanRuntime(*name);
      return;
    }
    HindranceFinding finding{Hindrance::ApiCall, api->Function, mBlock, Line()};
    finding.Api = api;
    mTell(finding);
  }

  void ScanRuntime(const RuntimeName& name) {
    const CodeToken& token = mTokens[mToken];
    const std::string& next = At(mToken + 1).Text;
    if (IsOwn(token.Text) || Before(mToken).Is("as") || next == ":=") return;
    const bool isAssigned = token.IsFirst && next == "=";
    if (isAssigned) return;
    if (name.Use != RuntimeUse::Function && !token.IsFirst) return;
    if (name.Use == RuntimeUse::Statement && IsOneOf(next, {".", "!"})) return;
    if (name.Use == RuntimeUse::FileStatement && next != "#") return;
    FoundRuntime(name);
  }

  bool IsDateWord(std::size_t index) const {
    const CodeToken& token = At(index);
    if (!token.IsWord() || (index > 0 && IsOneOf(Before(index).Text, {".", "as"}))) return false;
    if (mDates.contains(token.Text)) return true;
    if (mNames.contains(token.Text)) return false;
    if (mModuleDates.contains(token.Text)) return true;
    return IsOneOf(token.Text, {"now", "date", "time"}) && !mModuleNames.contains(token.Text);
  }

  // "CDbl(Now)", "Now + 1", "Date - begun".
  void ScanDate() {
    if (!IsDateWord(mToken)) return;
    const bool isConverted = mToken > 1 && Before(mToken).Is("(") &&
                             IsOneOf(At(mToken - 2).Text, {"cdbl", "clng", "cint", "csng", "ccur",
                                                           "cdec", "int", "fix", "val"}) &&
                             At(mToken + 1).Is(")");
    std::size_t behind = mToken + 1;
    if (At(behind).Is("(") && At(behind + 1).Is(")")) behind += 2;
    const bool isSum = IsOneOf(At(behind).Text, {"+", "-"}) &&
                       At(behind + 1).Kind != CodeTokenKind::Text && !mTokens[mToken].IsFirst;
    if (isConverted || isSum) Found(Hindrance::DateNumber, mTokens[mToken].Text);
  }

  std::int32_t Line() { return mColumns.LineOf(mPlace, *mBlock->CodeLines, mIndex); }

  void Found(Hindrance kind, std::string subject) {
    mTell({kind, std::move(subject), mBlock, Line()});
  }
  void FoundRuntime(const RuntimeName& name) {
    HindranceFinding finding{name.Kind, std::string(name.Name), mBlock, Line()};
    finding.Runtime = &name;
    mTell(finding);
  }

  const Component& mModule;
  const DeclaredFunctions& mDeclared;
  const Tell& mTell;
  SourcePlace mPlace;
  SourceColumns mColumns;
  OwnNames mModuleNames, mModuleDates, mNames, mDates;
  const Block* mBlock = nullptr;
  std::vector<CodeToken> mTokens;
  const CodeToken mNone;
  std::size_t mToken = 0;
  std::int32_t mIndex = 0;
};

}  // namespace

std::pair<std::string, std::string> FunctionNamedBy(const DeclareDeclaration& declare) {
  std::string library = LowerAscii(declare.Library);
  if (library.ends_with(".dll")) library.resize(library.size() - 4);
  return {library, (declare.Alias.empty() ? declare.Name : declare.Alias).str()};
}

DeclaredFunctions::DeclaredFunctions(const VBProject& project) {
  for (const Component& module : project.Components.Listed())
    for (const DeclareDeclaration& declare : module.Declarations) {
      DeclaredFunction function;
      std::tie(function.Library, function.Function) = FunctionNamedBy(declare);
      const bool isPublic = declare.AccessType() == atPublic && module.FileType == ftModule;
      if (!isPublic) function.Owner = &module;
      mByName[LowerAscii(declare.Name)].push_back(std::move(function));
    }
}

const DeclaredFunction* DeclaredFunctions::Find(const std::string& lowerName,
                                                const Component& module) const {
  const auto found = mByName.find(lowerName);
  if (found == mByName.end()) return nullptr;
  const DeclaredFunction* shared = nullptr;
  for (const DeclaredFunction& function : found->second) {
    if (function.Owner == &module) return &function;
    if (!function.Owner) shared = &function;
  }
  return shared;
}

VariantShare FindHindrances(const Component& module, const DeclaredFunctions& declared,
                            const std::function<void(const HindranceFinding&)>& tell) {
  const VariantShare share = DeclarationScan(module, tell).Run();
  StatementScan(module, declared, tell).Run();
  return share;
}

void FindDefaultMembers(UseBinder& names, const Component& module,
                        const std::function<void(const HindranceFinding&)>& tell) {
  names.Bind(module, [&](const NameUse& use) {
    const bool isMember =
        use.Secondary &&
        (use.Kind == UseKind::Read || use.Kind == UseKind::Write || use.Kind == UseKind::Call);
    const bool isKey = use.Answer == UseAnswer::Key;  // Records!Name
    if (!isMember && !isKey) return;
    tell({Hindrance::DefaultMember, (isKey ? "!" : "") + std::string(use.Text), use.Holder,
          use.Line});
  });
}

}  // namespace vendrel
