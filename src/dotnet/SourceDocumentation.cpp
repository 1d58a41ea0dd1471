#include "dotnet/SourceDocumentation.h"

#include <algorithm>
#include <unordered_set>

#include "comments/AppendDescription.h"
#include "core/Ascii.h"
#include "diagnostics/Diagnostic.h"
#include "dotnet/DocumentationFile.h"
#include "dotnet/SourceReferences.h"
#include "dotnet/SourceScan.h"
#include "dotnet/XmlComments.h"
#include "intake/net/NetWords.h"
#include "services/SourceText.h"
#include "text/Words.h"

namespace vendrel {
namespace {

constexpr std::string_view kMark = "'''";

// The depth of mark-up is bounded, since it is rewritten by functions that call themselves.
struct DepthWalk final : pugi::xml_tree_walker {
  bool for_each(pugi::xml_node&) override { return depth() <= kDeepestDocumentation; }
};

bool IsFlatEnough(pugi::xml_document& document) {
  DepthWalk walk;
  return document.traverse(walk);
}

// A text without mark-up, or one that is none, as lines of a description.
std::string AsDescription(std::string_view text) {
  std::string description;
  while (!text.empty()) {
    const std::string_view line = TrimGaps(TakeField(text, '\n'));
    if (line.empty()) continue;
    if (!description.empty()) description += "<crlf>";
    description += line;
  }
  return description;
}

// Places the pieces of one project.
class SourceDocumentationPlacer {
 public:
  explicit SourceDocumentationPlacer(VBProject& project)
      : mProject(project),
        mReferences(project),
        mComments(project, nullptr, imAppend,
                  [this](std::string_view name) { return Find(name); }) {}

  void Run() {
    for (ProjectFile& file : mProject.ProjectFiles) TakeTypes(file);
    std::unordered_set<const Component*> done;
    for (ProjectFile& file : mProject.ProjectFiles) {
      for (Component& component : file.Components)
        if (done.insert(&component).second) TakeMembers(component, file);
      for (const auto& block : file.Scanned().Delegates) Offer(*block, file);
    }
    for (ProjectFile& file : mProject.ProjectFiles) file.Scanned().Documentation = {};
  }

 private:
  void TakeTypes(ProjectFile& file) {
    for (const SourceDocumentation::OpenedType& opened : file.Scanned().Documentation.Types())
      if (Component* type = opened.Type.Get()) OfferAt(opened.Line, *type, file);
  }

  void TakeMembers(Component& component, ProjectFile& first) {
    const auto& places = first.Scanned().Places;
    const auto offer = [&](CodeElement& element) {
      ProjectFile* file = places ? places->FileOf(element) : nullptr;
      Offer(element, file ? *file : first);
    };
    for (Block& block : component.Blocks) {
      if (block.BlockType() == btDeclarations) {
        if (Variables* fields = block.Variables.IfAny())
          for (Variable& field : *fields) offer(field);
        if (Constants* constants = block.Constants.IfAny())
          for (Constant& constant : *constants) offer(constant);
      }
      if (block.Name().empty()) continue;
      offer(block);
      if (Blocks* overloads = block.Overloads())
        for (Block& overload : *overloads) offer(overload);
    }
    for (EventDeclaration& event : component.EventDeclarations) offer(event);
    for (DeclareDeclaration& declare : component.Declarations) offer(declare);
  }

  void Offer(CodeElement& element, ProjectFile& file) {
    OfferAt(element.SourceLine(), element, file);
  }

  // Names that are declared together are documented together; of what else stands on one line the
  // first is.
  void OfferAt(std::int32_t line, CodeElement& element, ProjectFile& file) {
    SourceDocumentation::Piece* piece = file.Scanned().Documentation.Above(line);
    if (!piece) return;
    const bool isTogether = IsA<Variable, Constant>(&element) && piece->Element &&
                            IsA<Variable, Constant>(piece->Element);
    if (piece->Element && !isTogether) return;
    piece->Element = &element;
    mFile = &file;
    mComponent = element.OwnComponent();
    if (!mComponent) return;
    const DiagnosticScope scope(&mProject.Diagnostics, file.FileName.FullPath(), &piece->Line);
    Place(*piece, element);
  }

  void Place(const SourceDocumentation::Piece& piece, CodeElement& element) {
    if (piece.Text.find('<') == std::string::npos)
      return AddObjectDescription(element, AsDescription(piece.Text), lvVisualBasicDotNet);
    pugi::xml_document document;
    if (!ParseMarkUp(document, "<member>" + piece.Text + "</member>") || !IsFlatEnough(document)) {
      Report(DiagnosticCode::DocumentationPart,
             {"the documentation of " + element.ElementName() +
              " is not well-formed and stays a comment; mend its mark-up"});
      return AddObjectDescription(element, AsDescription(piece.Text), lvVisualBasicDotNet);
    }
    mComments.SetSourceLine(piece.Line);
    mComments.ProcessMember(document.document_element(), element);
    for (const std::string& name : mComments.UnknownParameters())
      Report(DiagnosticCode::DocumentationPart,
             {"the documentation of " + element.ElementName() + " describes a parameter '" + name +
              "', which it does not have"});
    if (mComments.Inherits()) Inherit(element, mComments.InheritsFrom());
  }

  CodeElement* Find(std::string_view name) {
    return mReferences.Find(name, *mComponent, mFile->Imports);
  }

  void Inherit(CodeElement& element, const std::string& name) {
    const CodeElement* named = name.empty() ? nullptr : Find(name);
    AssemblyOf(mProject).AddInheritDoc(element, named ? DocumentedNameOf(*named) : name);
  }

  VBProject& mProject;
  SourceReferences mReferences;
  // Around the element at hand.
  Component* mComponent = nullptr;
  const ProjectFile* mFile = nullptr;
  XmlComments mComments;
};

}  // namespace

void SourceDocumentation::Take(const SourceStatement& statement) {
  const std::string_view text = TrimGaps(statement.Text);
  if (text.starts_with(kMark) && !text.substr(kMark.size()).starts_with('\'')) {
    if (mOpen.Text.empty()) mOpen.Line = statement.FirstLine;
    mOpen.Text.append(text.substr(kMark.size())) += '\n';
    return;
  }
  if (mOpen.Text.empty() || text.empty() || text.front() == '\'' || text.front() == '#') return;
  // Attributes on lines of their own belong to what follows them.
  if (text.front() == '<' && NetWords(text).Rest().empty()) return;
  mOpen.From = statement.FirstLine;
  mOpen.To = statement.FirstLine + static_cast<std::int32_t>(statement.Lines.size()) - 1;
  mPieces.push_back(std::move(mOpen));
  mOpen = {};
}

void SourceDocumentation::AddType(std::int32_t line, Component& type) {
  mTypes.push_back({line, &type});
}

SourceDocumentation::Piece* SourceDocumentation::Above(std::int32_t line) {
  const auto behind =
      std::upper_bound(mPieces.begin(), mPieces.end(), line,
                       [](std::int32_t at, const Piece& piece) { return at < piece.From; });
  if (behind == mPieces.begin()) return nullptr;
  Piece& piece = behind[-1];
  return line <= piece.To ? &piece : nullptr;
}

void PlaceSourceDocumentation(VBProject& project) {
  if (project.Reading.NetXmlComments) SourceDocumentationPlacer(project).Run();
}

}  // namespace vendrel
