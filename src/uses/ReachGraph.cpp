#include "uses/ReachGraph.h"

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "diagnostics/Context.h"
#include "model/Component.h"
#include "project/VBProject.h"
#include "uses/UseBinder.h"

namespace vendrel {
namespace {

// The name without brackets and type character, folded.
std::string BareFolded(std::string_view text) {
  if (text.size() > 2 && text.front() == '[' && text.back() == ']')
    text = text.substr(1, text.size() - 2);
  else if (text.size() > 1 && std::string_view("$%&!#@").find(text.back()) != text.npos)
    text.remove_suffix(1);
  return FoldKey(text);
}

// Whether the second argument of a CallByName is a string, so that the name is known.
bool NamesItsTarget(std::string_view statement) {
  const std::size_t call = FindNoCaseAscii(statement, "CallByName");
  const std::size_t comma = call == kNotFound ? call : statement.find(',', call);
  if (comma == kNotFound) return false;
  const std::size_t argument = statement.find_first_not_of(" \t\r\n_", comma + 1);
  return argument != statement.npos && statement[argument] == '"';
}

bool IsNameLetter(char c) {
  return IsLetterAscii(c) || IsDigitAscii(c) || c == '_' || static_cast<unsigned char>(c) >= 0x80;
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
  if (use.Kind == UseKind::Declare || use.Kind == UseKind::Name || !use.Holder) return;
  AddLibrary(use);
  switch (use.Answer) {
    case UseAnswer::Late: {
      const std::uint32_t from = NodeOf(*use.Holder);
      std::string name = BareFolded(use.Text);
      if (mLateKnown.insert(std::to_string(from) + ' ' + name).second)
        mLateNames.push_back({from, std::move(name)});
      return;
    }
    case UseAnswer::Unknown:
    case UseAnswer::External: mUnbound.insert(BareFolded(use.Text)); return;
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

void ReachGraph::AddLibrary(const NameUse& use) {
  const auto* project = use.Element ? As<Component>(use.Element) : nullptr;
  if (use.Answer == UseAnswer::External && use.Name.empty()) mUnnamedLibrary = true;
  if (!use.Name.empty()) {
    if (EqualsNoCaseAscii(use.Name, "VBA~Interaction~CallByName")) {
      mCallsByName = true;
      mComputedName = mComputedName || !NamesItsTarget(use.Statement);
    }
    mLibraries.insert(FoldKey(use.Name.substr(0, use.Name.find('~'))));
  } else if (use.Answer == UseAnswer::Library && use.Element) {
    const Component* home = project ? project : use.Element->OwnComponent();
    if (home && home->VBProject()) mLibraries.insert(FoldKey(home->VBProject()->ProjectName));
  }
}

void ReachGraph::AddEdge(const NameUse& use, const CodeElement& target) {
  const std::uint32_t from = NodeOf(*use.Holder), to = NodeOf(target);
  const auto known =
      mKnown.try_emplace(std::uint64_t{from} << 32 | to, static_cast<std::uint32_t>(mEdges.size()));
  if (known.second) {
    ReachEdge edge{from, to};
    edge.Module = use.Module;
    edge.Line = use.Line;
    edge.OwnOnly = edge.FalseOnly = true;
    mEdges.push_back(edge);
  }
  ReachEdge& edge = mEdges[known.first->second];
  edge.FalseOnly = edge.FalseOnly && use.InFalseBranch;
  if (use.InFalseBranch) return;  // not part of the program that is compiled
  edge.Reads = edge.Reads || use.Reads;
  edge.Writes = edge.Writes || use.Writes;
  edge.BeyondType = edge.BeyondType || use.Kind != UseKind::Type;
  edge.OwnOnly = edge.OwnOnly && use.OwnProcedure;
}

void AddLiteralNames(const Component& module, std::unordered_set<std::string>& names) {
  if (!module.SourceForm) return;
  std::string_view rest = module.SourceForm->Text;
  while (!rest.empty()) {
    const std::string_view line = TakeLine(rest);
    std::size_t at = 0;
    while (at < line.size() && line[at] != '\'') {
      if (line[at++] != '"') continue;
      const std::size_t end = std::min(line.find('"', at), line.size());
      std::string_view text = line.substr(at, end - at);
      const std::size_t dot = text.rfind('.');
      if (dot != text.npos) text.remove_prefix(dot + 1);
      if (IsName(text)) names.insert(FoldKey(text));
      at = end + 1;
    }
  }
}

}  // namespace vendrel
