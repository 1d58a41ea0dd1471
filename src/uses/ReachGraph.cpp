#include "uses/ReachGraph.h"

#include <algorithm>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "diagnostics/Context.h"
#include "model/Component.h"
#include "model/PropertyGroup.h"
#include "project/VBProject.h"
#include "uses/Builtins.h"
#include "uses/Reach.h"
#include "uses/UseBinder.h"
#include "uses/WrittenName.h"

namespace vendrel {
namespace {

// Whether the second argument of a CallByName is a string, so that the name is known.
bool NamesItsTarget(std::string_view statement) {
  const std::size_t call = FindNoCaseAscii(statement, "CallByName");
  const std::size_t comma = call == kNotFound ? call : statement.find(',', call);
  if (comma == kNotFound) return false;
  const std::size_t argument = statement.find_first_not_of(" \t\r\n_", comma + 1);
  return argument != statement.npos && statement[argument] == '"';
}

// In a branch of #If that does not hold no element stands for what holds the use.
const CodeElement& HolderOf(const NameUse& use) { return use.Holder ? *use.Holder : *use.Module; }

// The variable of a loop is read by the loop.
bool BeginsWithWord(std::string_view statement, std::string_view word) {
  return StartsWithNoCaseAscii(statement, word) && statement.size() > word.size() &&
         IsGap(statement[word.size()]);
}

bool IsName(std::string_view text) {
  if (text.empty() || text.size() > 255 || IsDigitAscii(text.front()) || text.front() == '_')
    return false;
  for (const char c : text)
    if (!IsNameLetter(c)) return false;
  return true;
}

}  // namespace

void ReachGraph::Add(VBProject& project) try {
  UseOptions options;
  options.FalseBranches = true;
  options.Declarations = IsNetProject(project);
  UseBinder binder(project, options);
  binder.BindAll([this](const NameUse& use) { Add(use); });
}
VENDREL_CONTEXT(project)

std::uint32_t ReachGraph::NodeOf(const CodeElement& element) {
  const auto made = mPositions.try_emplace(&element, static_cast<std::uint32_t>(mNodes.size()));
  if (made.second) mNodes.push_back(&element);
  return made.first->second;
}

std::uint32_t ReachGraph::Find(const CodeElement& element) const {
  const auto found = mPositions.find(&element);
  return found == mPositions.end() ? kNoNode : found->second;
}

void ReachGraph::Add(const NameUse& use) {
  if (use.Kind == UseKind::Declare) return AddDeclared(use);
  if (use.Kind == UseKind::Name) return;
  if (!use.Holder && !use.Module) return;
  if (use.Kind == UseKind::Handle) return;  // who handles an event does not make it happen
  AddLibrary(use);
  switch (use.Answer) {
    case UseAnswer::Late: return AddLateName(use);
    case UseAnswer::Unknown:
    case UseAnswer::External:
      mUnbound.insert(FoldKey(BareName(use.Text)));
      // Of VB.NET: a member of an expression whose type is not computed.
      if (use.Name.empty() && IsNetModule(*use.Module)) AddLateName(use);
      return;
    case UseAnswer::Ambiguous:
      for (const CodeElement* candidate : use.Candidates) AddEdge(use, *candidate);
      return;
    default:
      if (const Block* procedure = ProcedureOf(use))
        AddEdge(use, *procedure);
      else if (use.Element)
        AddEdge(use, *use.Element);
  }
}

void ReachGraph::AddDeclared(const NameUse& use) {
  if (!use.Element || !use.File || !IsNetModule(*use.Module)) return;
  if (use.File != mFile) {
    mFile = use.File;
    mIsDesigner = IsDesignerFile(*mFile);
  }
  if (!mIsDesigner) {
    if (IsA<Component>(use.Element)) mWritten.insert(use.Element);
    return;
  }
  mDesigned.insert(use.Element);
  if (const auto* group = As<PropertyGroup>(use.Element))
    for (const Block* block :
         {group->PropertyGetBlock(), group->PropertyLetBlock(), group->PropertySetBlock()})
      if (block) mDesigned.insert(block);
}

bool IsDesignerFile(const FileSystemObject& file) {
  const std::string path = file.FullPath(), leaf = file.LeafName();
  return EndsWithNoCaseAscii(leaf, ".designer.vb") || EqualsNoCaseAscii(leaf, "Reference.vb") ||
         ContainsNoCaseAscii(path, "\\My Project\\") || EndsWithNoCaseAscii(leaf, ".g.i.vb");
}

void ReachGraph::AddLateName(const NameUse& use) {
  const std::uint32_t from = NodeOf(HolderOf(use));
  std::string name = FoldKey(BareName(use.Text));
  if (mLateKnown.insert(std::to_string(from) + ' ' + name).second)
    mLateNames.push_back({from, std::move(name)});
}

void ReachGraph::AddLibrary(const NameUse& use) {
  if (use.Member && use.Member->Name == "CallByName") {
    mCallsByName = true;
    mComputedName = mComputedName || !NamesItsTarget(use.Statement);
  }
  const std::string_view library = LibraryOf(use);
  if (use.Answer == UseAnswer::External && library.empty()) mUnnamedLibrary = true;
  if (!library.empty()) mLibraries.insert(FoldKey(library));
}

void ReachGraph::AddEdge(const NameUse& use, const CodeElement& target) {
  const std::uint32_t from = NodeOf(HolderOf(use)), to = NodeOf(target);
  const auto known =
      mKnown.try_emplace(std::uint64_t{from} << 32 | to, static_cast<std::uint32_t>(mEdges.size()));
  if (known.second) {
    ReachEdge edge{from, to};
    edge.OwnOnly = edge.FalseOnly = true;
    mEdges.push_back(edge);
  }
  ReachEdge& edge = mEdges[known.first->second];
  edge.OwnOnly = edge.OwnOnly && use.OwnProcedure;
  edge.FalseOnly = edge.FalseOnly && use.InFalseBranch;
  if (use.InFalseBranch) return;  // not part of the program that is compiled
  const bool counts = use.Writes && BeginsWithWord(use.Statement, "For");
  edge.Reads = edge.Reads || use.Reads || counts;
  edge.HoldsObject = edge.HoldsObject || (use.Writes && BeginsWithWord(use.Statement, "Set"));
  edge.Writes = edge.Writes || use.Writes;
  edge.IsAddress = edge.IsAddress || use.Kind == UseKind::Address;
}

void AddLiteralNames(const Component& module, std::unordered_set<std::string>& names) {
  if (!module.SourceForm) return;
  std::string_view rest = module.SourceForm->Text;
  bool isHeader = StartsWithNoCaseAscii(rest, "VERSION ");  // it ends with its attributes
  while (!rest.empty()) {
    const std::string_view line = TakeLine(rest);
    const bool isAttribute = StartsWithNoCaseAscii(line, "Attribute ");
    isHeader = isHeader && !isAttribute;
    if (isHeader || isAttribute) continue;
    std::size_t at = 0;
    while (at < line.size() && line[at] != '\'') {
      if (line[at++] != '"') continue;
      const std::size_t end = std::min(line.find('"', at), line.size());
      const std::string_view text = line.substr(at, end - at);
      const std::size_t dot = text.rfind('.');
      const std::string_view name = dot == text.npos ? text : text.substr(dot + 1);
      if (IsName(name)) names.insert((dot == text.npos ? "" : ".") + FoldKey(name));
      at = end + 1;
    }
  }
}

}  // namespace vendrel
