// A set of assemblies as people and programs read it.

#include "cli/AssemblySet.h"
#include "cli/Report.h"
#include "dotnet/DocumentedElements.h"
#include "model/Events.h"
#include "output/Describe.h"
#include "output/Dump.h"

namespace vendrel::cli {
namespace {

// The first line of a description, mark-up and all.
std::string Described(const CodeElement& element) {
  const LateText* description = element.TaggedDescriptionField();
  if (!description || description->empty()) return {};
  return ": " + description->str();
}

void WriteTypes(std::ostream& out, std::string_view word, const Components& types) {
  for (const Component& type : types.Listed())
    out << "    " << word << ' ' << type.Name << (type.RootFlag ? " (root)" : "") << Described(type)
        << '\n';
}

void WriteCounts(std::ostream& out, const Assembly& assembly, ShownPaths& paths) {
  const auto& report = assembly.Documentation;
  if (!report || report->File.empty()) return;
  out << "  " << report->Placed << " of " << report->Members << " documented members placed ("
      << paths.Of(FileSystemObject(report->File).FullPath()) << ")\n";
}

std::string_view WordsOf(DocumentationReport::Reason reason) {
  switch (reason) {
    case DocumentationReport::Reason::NoElement: return "no element of that name";
    case DocumentationReport::Reason::NoParameter: return "no parameter ";
    case DocumentationReport::Reason::TooDeep: break;
  }
  return "its elements nest too deep";
}

bool HasComments(const CodeElement& element) {
  auto& own = const_cast<CodeElement&>(element);
  const LateText* description = own.TaggedDescriptionField();
  if (description && !description->empty()) return true;
  const OnDemand<TaggedComments>* comments = own.TaggedCommentsField();
  return comments && comments->IfAny() && comments->IfAny()->Count() > 0;
}

// The elements without documentation, by their .NET names.
class Undocumented {
 public:
  Undocumented(std::ostream& out, const VBProject& project) : mOut(out) {
    for (const Component& type : project.Components.Listed())
      if (type.IncludeFlag) Visit(type);
  }
  bool Any() const { return mAny; }

 private:
  void Visit(const Component& type) {
    if (type.Name != "__Delegates") Check(type);
    for (const Block& block : type.Blocks) {
      const Blocks* overloads = block.OverloadBlocks().IfAny();
      if (!overloads || overloads->Count() == 0)
        Visit(block);
      else
        for (const Block& overload : *overloads) Visit(overload);
    }
    for (const EventDeclaration& event : type.EventDeclarations)
      if (event.Implemented || event.InheritedFrom.empty()) Check(event);
  }

  // A constructor without parameters is mostly the one that nobody wrote.
  void Visit(const Block& block) {
    if (block.BlockType() == btDeclarations) {
      if (const Variables* fields = block.Variables.IfAny())
        for (const Variable& field : *fields)
          if (field.Implemented || field.InheritedFrom.empty()) Check(field);
      return;
    }
    const bool isImplicit = block.IsConstructor && block.Parameters->Count() == 0;
    if (!block.ExcludeFlag && !isImplicit && (block.Implemented || block.InheritedFrom().empty()))
      Check(block);
  }

  void Check(const CodeElement& element) {
    if (HasComments(element)) return;
    mAny = true;
    mOut << "  undocumented: " << DocumentedNameOf(element) << '\n';
  }

  std::ostream& mOut;
  bool mAny = false;
};

}  // namespace

void WriteSet(std::ostream& out, const Assemblies& set) {
  ShownPaths paths;
  for (const Assembly& assembly : set) {
    out << "assembly " << assembly.Name() << (assembly.RootFlag() ? " (root)" : "") << "  "
        << paths.Of(assembly.FileName.FullPath()) << Described(assembly) << '\n';
    WriteCounts(out, assembly, paths);
    for (const Namespace& space : assembly.Namespaces) {
      out << "  namespace " << space.Name << Described(space) << '\n';
      WriteTypes(out, "class", space.Classes);
      WriteTypes(out, "interface", space.Interfaces);
      WriteTypes(out, "structure", space.Structures);
      WriteTypes(out, "enumeration", space.Enumerations);
      for (const Block& block : space.Delegates)
        out << "    delegate " << block.Name() << Described(block) << '\n';
    }
    for (const Component& type : assembly.VBProject()->Components.Listed())
      if (!type.Namespace && type.Name != "__Delegates")
        out << "  type " << type.Name << (type.RootFlag ? " (root)" : "") << Described(type)
            << '\n';
  }
}

void WriteSetAsJson(std::ostream& out, const Assemblies& set) {
  out << '[';
  bool isFirst = true;
  for (const Assembly& assembly : set) {
    out << (isFirst ? "\n" : ",\n") << "{\"Assembly\": ";
    isFirst = false;
    Dump(out, Describe(assembly));
    out << ", \"VBProject\": ";
    Dump(out, Describe(*assembly.VBProject()));
    out << '}';
  }
  out << "]\n";
}

bool WriteSetCheck(std::ostream& out, const Assemblies& set) {
  bool any = false;
  for (const Assembly& assembly : set) {
    out << "assembly " << assembly.Name() << '\n';
    if (const auto& report = assembly.Documentation) {
      for (const DocumentationReport::Dropped& dropped : report->NotPlaced)
        out << "  not placed: " << dropped.Name << " (line " << dropped.Line << ", "
            << WordsOf(dropped.Why) << dropped.Part << ")\n";
      any = any || !report->NotPlaced.empty();
    }
    any = Undocumented(out, *assembly.VBProject()).Any() || any;
  }
  return any;
}

}  // namespace vendrel::cli
