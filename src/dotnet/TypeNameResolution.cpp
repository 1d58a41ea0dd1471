// Type names of VB.NET source become full names.

#include <algorithm>
#include <unordered_map>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "dotnet/SourceScan.h"
#include "text/Identifiers.h"

namespace vendrel {
namespace {

constexpr std::string_view kSystem = "System.";

std::string AskResolver(VBProject& project, std::string_view name) {
  NetResolver* resolver = project.NetResolver();
  return resolver ? resolver->resolvedtypename(name) : std::string(name);
}

// The names that VB.NET has beside those of the earlier language.
std::string_view FurtherIntrinsic(std::string_view name) {
  static constexpr std::pair<std::string_view, std::string_view> kNames[] = {
      {"sbyte", "System.SByte"},
      {"ushort", "System.UInt16"},
      {"uinteger", "System.UInt32"},
      {"ulong", "System.UInt64"},
      {"object", "System.Object"}};
  for (const auto& [word, full] : kNames)
    if (EqualsNoCaseAscii(word, name)) return full;
  return DotNetType(name);
}

// Makes the imports of a file those that the resolver looks in.
void TellImports(VBProject& project, const ProjectFile& file) {
  NetResolver* resolver = project.NetResolver();
  if (!resolver) return;
  resolver->clearnamespaces();
  for (const std::string& import : file.Imports)
    if (import.find('=') == std::string::npos) resolver->addnamespace(import);
}

// What the resolver says, asked for once a name while the imports are those of one file.
class ResolverAnswers {
 public:
  explicit ResolverAnswers(VBProject& project) : mProject(project) {}
  const std::string& Of(const std::string& name) {
    const auto [known, isNew] = mAnswers.try_emplace(name);
    if (isNew) known->second = AskResolver(mProject, name);
    return known->second;
  }

 private:
  VBProject& mProject;
  std::unordered_map<std::string, std::string> mAnswers;
};

// Looks names up in every scope that a module sees (`NetTypeNames`).
class ScopedNames {
 public:
  ScopedNames(ProjectFile& file, Component& component, ResolverAnswers& answers)
      : mProject(*file.VBProject()), mFile(file), mComponent(component), mAnswers(answers) {}

  // A whole type: arrays, "?" and arguments of generics are taken apart.
  std::string Type(std::string_view written);

 private:
  std::string Name(std::string_view name, std::size_t arguments);
  std::string Find(const std::string& name);
  std::string InProject(const std::string& front, const std::string& name) const;
  std::string Arguments(std::string_view list, std::size_t& count);

  VBProject& mProject;
  ProjectFile& mFile;
  Component& mComponent;
  ResolverAnswers& mAnswers;
  std::unordered_map<std::string, std::string> mKnown;
};

// "Store(Of K, V).Node" by the names that types are known by: "Store`2.Node".
std::string WithCounts(std::string_view written) {
  std::string name;
  for (std::size_t i = 0; i < written.size(); ++i) {
    if (written[i] != '(' || !StartsWithNoCaseAscii(TrimGaps(written.substr(i + 1)), "of ")) {
      name += written[i];
      continue;
    }
    int depth = 0;
    std::size_t count = 1;
    for (; i < written.size(); ++i) {
      if (written[i] == '(') ++depth;
      if (written[i] == ')' && --depth == 0) break;
      if (written[i] == ',' && depth == 1) ++count;
    }
    name += "`" + std::to_string(count);
  }
  return name;
}

std::string ScopedNames::Type(std::string_view written) {
  written = TrimGaps(written);
  if (written.empty()) return {};
  if (const auto known = mKnown.find(std::string(written)); known != mKnown.end())
    return known->second;
  const std::string key(written);
  std::string resolved;
  if (written.ends_with('?')) {
    resolved = "System.Nullable{" + Type(written.substr(0, written.size() - 1)) + "}";
  } else if (written.ends_with(')')) {
    // The list that the last ")" closes: of an array, or of type arguments.
    std::size_t open = written.size() - 1;
    for (int depth = 0; open != kNotFound; --open) {
      if (written[open] == ')') ++depth;
      if (written[open] == '(' && --depth == 0) break;
      if (open == 0) return key;
    }
    const std::string_view front = TrimGaps(written.substr(0, open));
    const std::string_view list = TrimGaps(written.substr(open + 1, written.size() - open - 2));
    if (StartsWithNoCaseAscii(list, "of ")) {
      std::size_t count = 0;
      const std::string arguments = Arguments(list.substr(3), count);
      resolved = Name(front, count) + "{" + arguments + "}";
    } else {
      resolved = Type(front) + "[" + std::string(list) + "]";
    }
  } else {
    resolved = Name(WithCounts(written), 0);
  }
  mKnown.emplace(key, resolved);
  return resolved;
}

std::string ScopedNames::Arguments(std::string_view list, std::size_t& count) {
  std::string arguments;
  int depth = 0;
  std::size_t begin = 0;
  for (std::size_t i = 0; i <= list.size(); ++i) {
    const char c = i < list.size() ? list[i] : ',';
    if (c == '(') ++depth;
    if (c == ')') --depth;
    if (c != ',' || depth != 0) continue;
    if (count++ > 0) arguments += ',';
    arguments += Type(list.substr(begin, i - begin));
    begin = i + 1;
  }
  return arguments;
}

// Generic types are known with their count, and shown without it where their arguments follow.
std::string ScopedNames::Name(std::string_view written, std::size_t arguments) {
  std::string name = TypeWithoutBrackets(written);
  if (StartsWithNoCaseAscii(name, "global.")) name.erase(0, 7);
  if (arguments == 0) {
    const std::string_view intrinsic = FurtherIntrinsic(name);
    if (intrinsic != name) return std::string(intrinsic);
    return Find(name);
  }
  const std::string count = "`" + std::to_string(arguments);
  std::string found = Find(name + count);
  if (found.ends_with(count)) found.resize(found.size() - count.size());
  return found;
}

// A type or delegate of the project behind a namespace or type; empty if there is none.
std::string ScopedNames::InProject(const std::string& front, const std::string& name) const {
  const std::string full = front.empty() ? name : front + "." + name;
  const Component* found = mProject.Components.Item(full);
  if (!found && front.empty()) found = mProject.Components.Item("." + name);
  if (found) return found->FullName();
  const std::size_t dot = full.rfind('.');
  const Assembly* assembly = mProject.Assembly();
  if (!assembly || dot == std::string::npos) return {};
  const Namespace* space = assembly->Namespaces.Item(std::string_view(full).substr(0, dot));
  const Block* block = space ? space->Delegates.Item(full.substr(dot + 1)) : nullptr;
  return block && block->IsDelegate() ? space->Name + "." + block->Name() : std::string();
}

std::string ScopedNames::Find(const std::string& name) {
  const Namespace* space = mComponent.Namespace.Get();
  const std::string own = space ? space->Name : std::string();
  // Enclosing types, then enclosing namespaces, from the inside.
  std::string scope = mComponent.FullName();
  for (;;) {
    if (const std::string found = InProject(scope, name); !found.empty()) return found;
    if (scope.empty()) break;
    const std::size_t dot = scope.rfind('.');
    scope.resize(dot == std::string::npos ? 0 : dot);
  }
  const std::string written = mAnswers.Of(name);
  const auto import = [&](const std::string& entry) -> std::string {
    const std::size_t equals = entry.find('=');
    if (equals == std::string::npos) return InProject(std::string(TrimGaps(entry)), name);
    // An alias stands for the front of the name.
    const std::string_view alias = TrimGaps(std::string_view(entry).substr(0, equals));
    const std::string target(TrimGaps(std::string_view(entry).substr(equals + 1)));
    if (EqualsNoCase(alias, name)) {
      const std::string found = InProject({}, target);
      return found.empty() ? mAnswers.Of(target) : found;
    }
    if (name.size() <= alias.size() || name[alias.size()] != '.' ||
        !EqualsNoCase(std::string_view(name).substr(0, alias.size()), alias))
      return {};
    const std::string whole = target + name.substr(alias.size());
    const std::string found = InProject({}, whole);
    return found.empty() ? mAnswers.Of(whole) : found;
  };
  for (const std::string& entry : mFile.Imports)
    if (const std::string found = import(entry); !found.empty()) return found;
  if (const auto& imports = mFile.Scanned().ProjectImports)
    for (const std::string& entry : *imports)
      if (const std::string found = import(entry); !found.empty()) return found;
  if (written != name) return written;
  // Partly qualified by an enclosing namespace of an assembly.
  for (std::string front = own; !front.empty();) {
    const std::string whole = front + "." + name;
    if (const std::string found = mAnswers.Of(whole); found != whole) return found;
    const std::size_t dot = front.rfind('.');
    front.resize(dot == std::string::npos ? 0 : dot);
  }
  return name;
}

// Gives every type name of a module to `resolve`.
template <typename Resolve>
class TypeNameWalk {
 public:
  TypeNameWalk(const ReadingRules& rules, Resolve resolve) : mRules(rules), mResolve(resolve) {}

  void Run(Component& component) {
    if (!component.InheritsFrom.empty())
      component.InheritsFrom = mResolve(component.InheritsFrom.str());
    for (Interface& interface : component.Interfaces) interface.Name = mResolve(interface.Name);
    for (Block& block : component.Blocks) Take(block);
    for (EventDeclaration& event : component.EventDeclarations) {
      Take(event.Parameters.IfAny());
      event.DelegateName = event.DelegateName.empty() ? std::string("System.EventArgs")
                                                      : mResolve(event.DelegateName.str());
    }
  }
  void Take(Block& block) {
    if (block.BlockType() == btDeclarations) {
      if (Variables* variables = block.Variables.IfAny())
        for (Variable& variable : *variables) variable.TypeName = mResolve(variable.TypeName.str());
      return;
    }
    Take(block.Parameters.IfAny());
    if (!block.ReturnType.empty()) block.ReturnType = mResolve(block.ReturnType.str());
    Blocks* overloads = block.Overloads();
    if (!mRules.NetTypeNames || !overloads) return;
    for (Block& overload : *overloads) Take(overload);
  }

 private:
  void Take(Parameters* parameters) {
    if (!parameters) return;
    for (Parameter& parameter : *parameters)
      parameter.VariableType = mResolve(parameter.VariableType.str());
  }

  const ReadingRules& mRules;
  Resolve mResolve;
};

}  // namespace

std::string ProjectFile::ResolveType(vendrel::Component& c, std::string_view TypeName) try {
  vendrel::VBProject* project = VBProject();
  if (!project || TypeName.starts_with(kSystem)) return std::string(TypeName);
  if (project->Reading.NetTypeNames) {
    TellImports(*project, *this);  // those of another file may be in force
    ResolverAnswers answers(*project);
    return ScopedNames(*this, c, answers).Type(TypeName);
  }
  const Namespace* space = c.Namespace.Get();
  const ReadingRules& rules = project->Reading;
  const std::string name(TypeName);
  const std::string key = KeyOfType(space, name, rules);
  if (project->Components.HasKey(key)) return key;
  const std::string nested = KeyOfType(space, c.Name + "." + name, rules);
  if (project->Components.HasKey(nested)) return nested;
  if (space && space->Delegates.HasKey(name)) return space->Name + "." + name;
  return AskResolver(*project, name);
}
VENDREL_CONTEXT(TypeName, c)

bool ProjectFile::MayNameType(std::string_view Word) {
  vendrel::VBProject* project = VBProject();
  NetResolver* resolver = project ? project->NetResolver() : nullptr;
  if (!resolver || FurtherIntrinsic(Word) != Word || resolver->mayhavetype(Word)) return true;
  const auto isAlias = [Word](const std::string& entry) {
    const std::size_t equals = entry.find('=');
    return equals != std::string::npos &&
           EqualsNoCase(TrimGaps(std::string_view(entry).substr(0, equals)), Word);
  };
  if (std::any_of(Imports.begin(), Imports.end(), isAlias)) return true;
  const auto& imports = Scanned().ProjectImports;
  return imports && std::any_of(imports->begin(), imports->end(), isAlias);
}

bool ProjectFile::ResolveTypeNames() try {
  vendrel::VBProject* project = VBProject();
  ScannedSource& scanned = Scanned();
  if (!project || scanned.NamesResolved) return true;
  scanned.NamesResolved = true;
  const Workspace::Use use(project->Workspace());
  const ReadingRules& rules = project->Reading;
  if (!rules.NetTypeNames) {
    for (vendrel::Component& component : Components)
      TypeNameWalk(rules, [&](const std::string& name) {
        return ResolveType(component, name);
      }).Run(component);
    return true;
  }
  TellImports(*project, *this);
  ResolverAnswers answers(*project);
  for (vendrel::Component& component : Components) {
    ScopedNames names(*this, component, answers);
    TypeNameWalk walk(rules, [&](const std::string& name) {
      return std::string_view(name).starts_with(kSystem) && name.find('(') == std::string::npos
                 ? name
                 : names.Type(name);
    });
    walk.Run(component);
  }
  for (const auto& block : scanned.Delegates) {
    vendrel::Component* component = block->Component.Get();
    if (!component) continue;
    ScopedNames names(*this, *component, answers);
    TypeNameWalk(rules, [&](const std::string& name) { return names.Type(name); }).Take(*block);
  }
  return true;
}
VENDREL_CONTEXT(trace::Field("FileName", FileName.FullPath()))

Component* ProjectFile::GetComponentForTypeName(std::string_view Name) try {
  vendrel::VBProject* project = VBProject();
  return project ? project->netGetComponentForTypeName(Name) : nullptr;
}
VENDREL_CONTEXT(Name)

}  // namespace vendrel
