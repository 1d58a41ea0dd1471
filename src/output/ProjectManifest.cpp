// The manifest of a whole project: the document, its root, and the removal of what is empty.

#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "output/Manifest.h"
#include "output/Xml.h"
#include "project/VBProject.h"

namespace vendrel {
namespace {

// Misspelt from the first version on; readers of manifests look for this very name.
constexpr std::string_view kRootName = "VendrelModel_V2_Manfest";
constexpr std::string_view kVersion = "100";
constexpr char kComponentName[] = "Component";

void SetRootAttributes(XmlElement& root, const VBProject& project) {
  root.SetAttribute("Version", kVersion);
  root.SetAttribute("ProjectName", project.ProjectName);
  root.SetAttribute("FileName", project.FileName.FullPath());
  root.SetAttribute("Description", project.mDescription);
  root.SetAttribute("MajorVersion", project.MajorVersion());
  root.SetAttribute("MinorVersion", project.MinorVersion());
  root.SetAttribute("Increment", project.Increment());
  root.SetAttribute("CLSID", project.ClsID());
  root.SetAttribute("ProjectType", project.ProjectType);
  root.SetAttribute("TypeName", project.TypeName);
  root.SetAttribute("Startup", project.Startup);
  root.SetAttribute("CompatibleFileName", project.CompatibleFileName.FullPath());
  root.SetAttribute("CompatibleMode", project.CompatibleMode);
  root.SetAttribute("HelpFile", project.HelpFile);
  root.SetAttribute("HelpContextID", project.HelpContextID);
  root.SetAttribute("Path32", project.Path32);
  root.SetAttribute("EXEName32", project.EXEName32);
  root.SetAttribute("AutoIncrement", project.AutoIncrement);
  root.SetAttribute("IconForm", project.IconForm);
}

// The root with what stands in front of the modules.
std::shared_ptr<XmlDocument> BeginManifest(const VBProject& project, bool includeTaggedComments) {
  auto document = std::make_shared<XmlDocument>();
  XmlElement root = document->Root();
  root.SetName(kRootName);
  SetRootAttributes(root, project);
  root.AddElement("TaggedDescription", project.TaggedDescription);
  if (includeTaggedComments) TaggedCommentManifest(root, project.TaggedComments.IfAny());
  return document;
}

XmlElement AddComponent(XmlElement& e, const Component& component, bool includeTaggedComments) {
  XmlElement child = e.AddElement(kComponentName);
  component.Manifest(child.AsDraft(), includeTaggedComments);
  return child;
}

}  // namespace

std::shared_ptr<XmlDocument> VBProject::Manifest(bool JustProject, bool IncludeTaggedComments) try {
  const Workspace::Use use(Workspace());
  const auto document = BeginManifest(*this, IncludeTaggedComments);
  XmlElement root = document->Root();
  if (!JustProject) {
    for (const Component& component : Components)
      AddComponent(root, component, IncludeTaggedComments);
    for (const std::string& name : RelatedDocuments) root.AddElement("RelatedDocument", name);
  }
  StripElement(root);
  return document;
}
VENDREL_CONTEXT(JustProject, IncludeTaggedComments, *this)

// An empty module holds the place of all until the root is text.
void WriteManifest(VBProject& project, bool justProject, bool includeTaggedComments,
                   const std::function<void(std::string_view)>& write) try {
  const Workspace::Use use(project.Workspace());
  const auto frame = BeginManifest(project, includeTaggedComments);
  XmlElement root = frame->Root();
  VBProject::StripElement(root);
  const bool hasModules = !justProject && project.Components.Count() > 0;
  std::string place;
  if (hasModules) place = root.AddElement(kComponentName).Xml(1);
  const std::string text = frame->Xml();
  const std::size_t at = hasModules ? text.find(place) : text.size();
  write(std::string_view(text).substr(0, at));
  if (!hasModules) return;
  for (const Component& component : project.Components) {
    XmlDocument document;
    XmlElement outer = document.Root();
    XmlElement module = AddComponent(outer, component, includeTaggedComments);
    VBProject::StripElement(module);
    write(module.Xml(1));
  }
  write(std::string_view(text).substr(at + place.size()));
}
VENDREL_CONTEXT(justProject, includeTaggedComments, project)

void VBProject::WriteManifestToFile(std::string_view fileName, bool JustProject,
                                    bool IncludeTaggedComments) try {
  const Workspace::Use use(Workspace());
  std::string text;
  WriteManifest(*this, JustProject, IncludeTaggedComments,
                [&](std::string_view part) { text += part; });
  FileSystemObject file(fileName);
  TextForm form;
  form.Encoding = TextEncoding::Utf8;  // as a document without another declaration is read
  file.SetWriteForm(form);
  file.OpenFile(omWrite, 2, 1);
  file.WriteLine(text);
  file.CloseFile();
}
VENDREL_CONTEXT(fileName, JustProject, IncludeTaggedComments, *this)

// Removing a child and staying at its index is walking on to its sibling. The depth is that of the
// format, not of the input.
bool VBProject::StripElement(XmlElement& e) {
  pugi::xml_node node = e.Node();
  bool survives = false;
  for (pugi::xml_node child = node.first_child(); child;) {
    const pugi::xml_node next = child.next_sibling();
    if (child.type() == pugi::node_element) {
      XmlElement element(child);
      if (StripElement(element))
        node.remove_child(child);
      else
        survives = true;
    }
    child = next;
  }
  return !survives && node.first_attribute().empty();
}

}  // namespace vendrel
