// Comment file and XML documentation of an assembly brought into its tree.

#include <pugixml.hpp>

#include "comments/AppendDescription.h"
#include "comments/CommentFile.h"
#include "comments/TagDefinitions.h"
#include "core/Ascii.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "dotnet/AssemblySets.h"
#include "dotnet/DocumentationCheck.h"
#include "dotnet/DocumentationFile.h"
#include "dotnet/InheritDoc.h"
#include "dotnet/XmlComments.h"

namespace vendrel {
namespace {

bool* IncludeFlagOf(CodeElement& element) {
  if (auto* component = As<Component>(&element)) return &component->IncludeFlag;
  if (auto* project = As<VBProject>(&element)) return &project->IncludeFlag;
  if (auto* assembly = As<Assembly>(&element)) return &assembly->IncludeFlag;
  if (auto* space = As<Namespace>(&element)) return &space->IncludeFlag;
  return nullptr;
}

void Exclude(CodeElement& element) {
  if (bool* flag = element.ExcludeFlagField()) *flag = true;
  if (bool* flag = IncludeFlagOf(element)) *flag = false;
}

// ---- The comment file --------------------------------------------------------------------------

class CommentFileItems {
 public:
  CommentFileItems(const Assembly& assembly, VBProject& project)
      : mSet(assembly.Assemblies.Get()), mProject(project) {}

  void Apply(const pugi::xml_node& item) const {
    const std::string name = AttributeOf(item, "eid").as_string();
    CodeElement* element =
        mSet ? mSet->GetObjectFromQualifiedName(name) : mProject.GetObjectByName(name);
    if (!element) return Report(DiagnosticCode::ElementNotFound, {name});
    auto comment = std::make_shared<TaggedComment>();
    comment->TagIdentifier = AttributeOf(item, "tid").as_string();
    if (comment->TagIdentifier == "##ISNEW") {
      if (bool* flag = element->IsNewField()) *flag = true;
    } else if (comment->TagIdentifier == "##EXCLUDE") {
      Exclude(*element);
    } else {
      comment->Qualifier = AttributeOf(item, "q").as_string();
      comment->Text = XmlTextOf(item);
      Keep(*element, comment);
    }
  }

 private:
  void Keep(CodeElement& element, const std::shared_ptr<TaggedComment>& comment) const {
    const TaggedCommentDef* definition = comment->TaggedCommentDef();
    LateText* description = element.TaggedDescriptionField();
    if (definition && definition->IsDescription && description) {
      AppendDescription(description->Edit(), std::string_view(comment->Text), wrapLineBreak);
      return;
    }
    comment->CodeElement = &element;
    if (OnDemand<TaggedComments>* comments = element.TaggedCommentsField())
      mProject.AddTaggedComment(**comments, comment, false);
  }

  Assemblies* mSet;
  VBProject& mProject;
};

void ApplyCommentFileOf(const Assembly& assembly, VBProject& project) {
  FileSystemObject file(assembly.CommentFile);
  if (assembly.CommentFile.empty() || !file.Exists()) return;
  const DiagnosticScope scope(&project.Diagnostics, file.FullPath());
  pugi::xml_document document;
  try {
    file.OpenFile(omRead);
    ParseXml(document, file.ReadAll(), file.FullPath());
  } catch (const VendrelError& error) {
    return Report(DiagnosticCode::DocumentationUnread, {error.Text()});
  }
  const CommentFileItems items(assembly, project);
  for (const pugi::xml_node& item : document.document_element().children())
    if (item.type() == pugi::node_element) items.Apply(item);
}

// ---- The documentation file --------------------------------------------------------------------

// Of the folders of languages one is taken where nothing lies beside the assembly, in the complete
// reading.
std::string DocumentationOf(const Assembly& assembly, const VBProject& project) {
  FileSystemObject file(assembly.FileName.FullPath());
  const std::string native = file.NativePath();
  file.SetExtension("xml");
  if (file.Exists()) return file.NativePath();
  if (!project.Reading.DocumentationElements) return {};
  const std::vector<std::string> all = DocumentationBeside(native);
  return all.empty() ? std::string() : all.front();
}

class Integration {
 public:
  Integration(Assembly& assembly, VBProject& project, int mode, DocumentationReport& report,
              InheritDocs& pending)
      : mComments(project, assembly.ExternalDocs.get(), mode), mPending(pending), mReport(report) {}

  void Run(const DocumentationFile& file) {
    pugi::xml_document document;
    for (const DocumentationFile::Member& member : file.Members()) {
      ++mReport.Members;
      mLine = member.Line;
      if (!file.Open(member, document)) {
        Drop(DocumentationReport::Reason::TooDeep, std::string(member.Name));
        continue;
      }
      Place(document.document_element());
    }
  }
  const std::int32_t& Line() const { return mLine; }

 private:
  void Place(const pugi::xml_node& e) {
    const std::string name(TrimWhite(e.attribute("name").value()));
    CodeElement* element = mComments.ElementOf(name);
    if (!element) return Drop(DocumentationReport::Reason::NoElement, name);
    ++mReport.Placed;
    mComments.ProcessMember(e, *element);
    for (const std::string& parameter : mComments.UnknownParameters())
      Drop(DocumentationReport::Reason::NoParameter, name, parameter);
    if (mComments.Inherits()) mPending.Add(*element, mComments.InheritsFrom());
  }

  void Drop(DocumentationReport::Reason why, std::string name, std::string part = {}) {
    if (why == DocumentationReport::Reason::TooDeep)
      Report(DiagnosticCode::DocumentationPart,
             {"the documentation of " + name + " nests too deep and is left out"});
    mReport.NotPlaced.push_back({why, std::move(name), std::move(part), mLine});
  }

  XmlComments mComments;
  InheritDocs& mPending;
  DocumentationReport& mReport;
  std::int32_t mLine = 0;
};

void IntegrateDocumentation(Assembly& assembly, VBProject& project, int mode,
                            DocumentationReport& report, InheritDocs& pending) {
  const std::string path = DocumentationOf(assembly, project);
  if (path.empty()) return;
  Integration integration(assembly, project, mode, report, pending);
  const DiagnosticScope scope(&project.Diagnostics, FileSystemObject(path).FullPath(),
                              &integration.Line());
  try {
    const auto file = DocumentationFile::Read(path);
    report.File = path;
    integration.Run(*file);
  } catch (const VendrelError& error) {
    Report(DiagnosticCode::DocumentationUnread, {error.Text()});
  }
}

}  // namespace

void Assembly::ResolveInheritDocs() {
  if (mInheritDocs) mInheritDocs->Resolve();
}

void Assembly::AddInheritDoc(CodeElement& element, std::string from) {
  vendrel::VBProject* project = VBProject();
  if (!project) return;
  if (!mInheritDocs) mInheritDocs = std::make_shared<InheritDocs>(*this, *project);
  mInheritDocs->Add(element, std::move(from));
}

bool Assembly::IntegrateCommentFile(vendrel::VBProject& vbp, PlugInHost* PlugIn,
                                    bool UseCSharpCommentFile, bool /*DrillCommentFiles*/) try {
  const Workspace::Use use(vbp.Workspace());
  const std::shared_ptr<PlugInHost> installed = InUse<HostObjects>().PlugIn;
  PlugInHost& host = PlugIn ? *PlugIn : *installed;
  const auto report = std::make_shared<DocumentationReport>();
  Documentation = report;
  host.UpdateStatusCaption("Integrating Folio! Z Comment File");
  ApplyCommentFileOf(*this, vbp);
  if (!UseCSharpCommentFile || AssemblyType != atCompiled) return true;
  host.UpdateStatusCaption("Integrating C# XML Comment File");
  mInheritDocs = std::make_shared<InheritDocs>(*this, vbp);
  IntegrateDocumentation(*this, vbp, host.helpdescriptionimport(), *report, *mInheritDocs);
  ResolveInheritDocs();
  return true;
}
VENDREL_CONTEXT(trace::Field("FileName", FileName.FullPath()), *this)

}  // namespace vendrel
