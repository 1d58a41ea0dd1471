// Comments of members that a class inherits, from where these come.

#include <pugixml.hpp>
#include <unordered_map>

#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "dotnet/DocumentationFile.h"
#include "dotnet/GenericNames.h"
#include "dotnet/InheritDoc.h"
#include "dotnet/XmlComments.h"
#include "model/Events.h"
#include "text/Like.h"

namespace vendrel {
namespace {

// Documentation of assemblies outside of the set. Each is read once, whether it can be or not.
class OutsideDocumentation {
 public:
  explicit OutsideDocumentation(const VBProject& project)
      : mProject(project), mLocations(InUse<HostObjects>().Settings->CommentFileLocations()) {}

  /// The documentation of the assembly that a type comes from; null if there is none.
  const DocumentationFile* For(const std::string& typeName) {
    const auto [known, isNew] = mByType.try_emplace(typeName, nullptr);
    if (isNew) known->second = Look(typeName);
    return known->second;
  }

 private:
  const DocumentationFile* Look(const std::string& typeName) {
    const auto place = mProject.NetTypeLocations.find(typeName);
    if (place == mProject.NetTypeLocations.end()) return nullptr;
    const FileSystemObject assembly(place->second);
    for (const CommentFileLocation& location : mLocations) {
      if (!LikeNoCase(assembly.LeafName(), location.LocationPattern)) continue;
      FileSystemObject file;
      file.SetFullPath(location.LocationFolder);
      const std::string folder = file.FullPath();
      const bool isClosed = folder.ends_with('\\');
      file.SetFullPath(folder + (isClosed ? "" : "\\") + assembly.BaseName() + ".xml");
      return Open(file.NativePath());
    }
    return nullptr;
  }

  const DocumentationFile* Open(const std::string& path) {
    const auto [known, isNew] = mByPath.try_emplace(path);
    if (isNew) try {
        known->second = DocumentationFile::Read(path);
      } catch (const VendrelError&) {
        // Kept as it is, so that it is not tried again.
      }
    return known->second.get();
  }

  const VBProject& mProject;
  std::vector<CommentFileLocation> mLocations;
  std::unordered_map<std::string, const DocumentationFile*> mByType;
  std::unordered_map<std::string, std::shared_ptr<const DocumentationFile>> mByPath;
};

class InheritedComments {
 public:
  InheritedComments(const Assembly& assembly, VBProject& project, bool drill)
      : mAssembly(assembly),
        mSet(assembly.Assemblies.Get()),
        mProject(project),
        mDrills(drill),
        mOutside(project),
        mComments(project, assembly.ExternalDocs.get(), imAdd) {}

  void Run() {
    for (Component& component : mProject.Components.Listed()) {
      if (component.InheritsFrom.empty() || !component.IncludeFlag) continue;
      for (Block& block : component.Blocks) TakeFamily(block);
      TakeFields(component);
      TakeEvents(component);
      TakeType(component);
    }
  }

 private:
  const CodeElement* SourceOf(const CodeElement& element) const {
    return mSet ? mSet->GetInheritedFromObject(element) : nullptr;
  }

  void TakeFamily(Block& block) {
    if (block.ExcludeFlag) return;
    if (IsInherited(block)) Take(block);
    if (Blocks* overloads = block.Overloads())
      for (Block& overload : *overloads)
        if (IsInherited(overload)) Take(overload);
  }

  static bool IsInherited(const Block& block) {
    return !block.InheritedFrom().empty() && !block.Implemented;
  }

  void Take(Block& block) {
    if (const CodeElement* source = SourceOf(block)) return CopyComments(*source, block);
    if (const Block* source = GenericSourceOf(block)) return CopyComments(*source, block);
    if (mDrills) Drill(block);
  }

  // What a type inherits from a generic one has other types there.
  const Block* GenericSourceOf(const Block& block) const {
    if (!mSet || !mProject.Reading.DocumentationElements) return nullptr;
    Component* from = mSet->FindComponent(block.InheritedFrom(), &mProject);
    const std::string_view name = block.Name();
    return from ? CounterpartIn(*from, block, name.substr(0, name.find('('))) : nullptr;
  }

  void Drill(Block& block) {
    const std::string type = block.InheritedFrom().str();
    const DocumentationFile* file = mOutside.For(type);
    if (!file) return;
    const std::string name = NameOutside(block, type);
    const DocumentationFile::Member* member = file->Find(name);
    if (!member && mProject.Reading.DocumentationElements)
      member = GenericMember(*file, DefinitionOf(name.substr(0, name.find('('))), name);
    if (!member || !file->Open(*member, mDocument)) return;
    mComments.ProcessMember(mDocument.document_element(), block);
  }

  // In the place of a type parameter the inherited member has a type of its own: of those that have
  // the name, the only one that fits.
  static const DocumentationFile::Member* GenericMember(const DocumentationFile& file,
                                                        const std::string& front,
                                                        std::string_view name) {
    const std::vector<std::string_view> types = ArgumentsOf(name);
    const auto fits = [&](const DocumentationFile::Member& member) {
      const std::vector<std::string_view> documented = ArgumentsOf(member.Name);
      if (documented.size() != types.size()) return false;
      for (std::size_t i = 0; i < types.size(); ++i)
        if (documented[i] != types[i] && documented[i].find('`') == std::string_view::npos)
          return false;
      return true;
    };
    const DocumentationFile::Member* only = nullptr;
    for (const DocumentationFile::Member* member : file.Named(front)) {
      if (!fits(*member)) continue;
      if (only) return nullptr;
      only = member;
    }
    return only;
  }

  // The name of the member where it is declared.
  std::string NameOutside(const Block& block, const std::string& type) const {
    const std::string signature = mAssembly.DotNetMethodSignature(block);
    const std::string name =
        block.Name().find('.') == std::string::npos ? type + "." + signature : signature;
    if (block.IsMethod() || block.IsConstructor) return "M:" + name;
    return block.IsProperty() ? "P:" + name : std::string();
  }

  void TakeFields(Component& component) const {
    Block* declarations = component.Blocks.FirstOfType(btDeclarations);
    Variables* fields = declarations ? declarations->Variables.IfAny() : nullptr;
    if (!fields) return;
    for (Variable& field : *fields) {
      if (field.InheritedFrom.empty() || field.Implemented) continue;
      if (const CodeElement* source = SourceOf(field)) CopyComments(*source, field);
    }
  }

  void TakeEvents(Component& component) const {
    for (EventDeclaration& event : component.EventDeclarations) {
      const TaggedComments* comments = event.TaggedComments.IfAny();
      if (!event.TaggedDescription.empty() || (comments && comments->Count() > 0)) continue;
      if (const CodeElement* source = SourceOf(event)) CopyComments(*source, event);
    }
  }

  void TakeType(Component& component) const {
    if (!component.TaggedDescription.empty()) return;
    const Component* base = mProject.Components.Item(component.InheritsFrom);
    if (base && base != &component) CopyComments(*base, component);
  }

  const Assembly& mAssembly;
  Assemblies* mSet;
  VBProject& mProject;
  bool mDrills;
  OutsideDocumentation mOutside;
  XmlComments mComments;
  pugi::xml_document mDocument;
};

}  // namespace

bool Assembly::PopulateInheritedComments(vendrel::VBProject& vbp, PlugInHost* PlugIn,
                                         bool DrillCommentFiles) try {
  const Workspace::Use use(vbp.Workspace());
  const std::shared_ptr<PlugInHost> installed = InUse<HostObjects>().PlugIn;
  PlugInHost& host = PlugIn ? *PlugIn : *installed;
  host.UpdateStatusCaption("Finding comments for inherited members");
  const DiagnosticScope scope(&vbp.Diagnostics, FileName.FullPath());
  ResolveInheritDocs();
  InheritedComments(*this, vbp, DrillCommentFiles).Run();
  return true;
}
VENDREL_CONTEXT(trace::Field("FileName", FileName.FullPath()), *this)

}  // namespace vendrel
