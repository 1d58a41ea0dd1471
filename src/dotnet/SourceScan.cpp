#include "dotnet/SourceScan.h"

#include "core/Ascii.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "intake/ModuleIntake.h"
#include "services/BinaryText.h"
#include "text/Masking.h"

namespace vendrel {
namespace {

constexpr std::int32_t kKnownType = 1;  // in the cache of types

Components& ListOf(Namespace& space, const Component& component) {
  if (component.IsEnumeration) return space.Enumerations;
  if (component.IsStructure) return space.Structures;
  return component.IsInterface ? space.Interfaces : space.Classes;
}

}  // namespace

std::string KeyOfType(const Namespace* space, std::string_view name, const ReadingRules& rules) {
  const std::string front = space ? space->Name : std::string();
  if (front.empty() && rules.NetNames) return std::string(name);
  return front + "." + std::string(name);
}

Assembly& AssemblyOf(VBProject& project) {
  if (!project.Assembly()) {
    auto assembly = std::make_shared<Assembly>();
    assembly->AssemblyType = atVBNETSource;
    assembly->SetName(project.ProjectName);
    assembly->FileName = project.FileName;
    assembly->TieOwner(&project);
    project.OwnAssembly(std::move(assembly));
  }
  return *project.Assembly();
}

ScannedSource& ProjectFile::Scanned() {
  if (!mScanned) mScanned = std::make_shared<ScannedSource>();
  return *mScanned;
}

Component* ProjectFile::Outside() const { return mScanned ? mScanned->Outside.get() : nullptr; }

SourceScan::SourceScan(ProjectFile& file, std::shared_ptr<const SourceText> source)
    : mFile(file),
      mProject(*file.VBProject()),
      mAssembly(AssemblyOf(mProject)),
      mRules(mProject.Reading),
      mScanned(file.Scanned()),
      mSource(std::move(source)) {
  ProjectFile* first = mProject.ProjectFiles.Item(1);
  std::shared_ptr<SourcePlaces>& shared = (first ? first->Scanned() : mScanned).Places;
  if (!shared) shared = std::make_shared<SourcePlaces>();
  mScanned.Places = shared;
  shared->ByText[&mSource->Text] = &file;
}

void SourceScan::Run() {
  EnterNamespace(CreateNamespace(mProject.RootNamespace, true));
  if (mRules.NetKeepSource) {
    mScanned.Outside = NewPart();
    mScanned.Outside->Namespace = GetNamespace();
  }
  SourceStatement statement;
  const auto takeAll = [&](auto lines) {
    while (lines.Next(statement)) {
      mLine = statement.FirstLine;
      if (mRules.NetKeepSource) {
        NoteRead(statement);
        TakeKept(statement);
      } else {
        Take(statement);
      }
    }
  };
  const DiagnosticScope scope(&mProject.Diagnostics, mFile.FileName.FullPath(), &mLine);
  if (mRules.NetLines)
    takeAll(SourceLines(mSource->Text));
  else
    takeAll(ClassicSourceLines(mSource->Text));
  if (mRules.NetKeepSource) {
    while (!mTypes.empty()) CloseInnermost();
    FinishPart(*mScanned.Outside);
    if (mRules.NetLines) KeepLostLines();
  } else if (mCurrent && !mCurrent->Name.empty()) {
    AddComponent(mCurrent);
  }
}

std::vector<TypeStatement> SourceScan::TypeStatementsOf(const SourceStatement& statement) const {
  if (!mRules.NetTypeStatements) return StatementsByPattern(StripAttributes(statement.Text));
  const bool isNone =
      statement.Shape == NetLineShape::Plain || statement.Shape == NetLineShape::Bare;
  return isNone ? std::vector<TypeStatement>() : StatementsByWord(statement.Text);
}

// "Imports A.B, C = D.E"; the intake hands each to the resolver as well.
void SourceScan::TakeImports(std::string_view text) {
  text = TrimGaps(text);
  constexpr std::string_view kWord = "imports";
  if (!StartsWithNoCaseAscii(text, kWord) || text.size() == kWord.size() ||
      !IsGap(text[kWord.size()]))
    return;
  text.remove_prefix(kWord.size());
  if (const std::size_t comment = InStrEx(1, text, "'")) text = text.substr(0, comment - 1);
  while (!text.empty()) {
    const std::string_view one = TrimGaps(TakeField(text, ','));
    if (!one.empty() && one.front() != '<') mFile.Imports.emplace_back(one);
  }
}

std::string SourceScan::FullNamespace(std::string_view name) const {
  std::string full = mSpaces.empty() ? std::string() : mSpaces.back()->Name;
  if (name.empty()) return full;
  if (!full.empty()) full += '.';
  return full.append(name);
}

// One for all files of the assembly; a nested one is flat under its full name.
Namespace* SourceScan::CreateNamespace(std::string_view name, bool isGlobal) {
  const std::string full = isGlobal ? std::string(name) : FullNamespace(name);
  if (!name.empty()) {
    if (Namespace* known = mAssembly.Namespaces.Item(full)) return known;
  } else {
    for (Namespace& known : mAssembly.Namespaces)
      if (known.Name.empty()) return &known;
  }
  auto space = std::make_shared<Namespace>();
  space->Assembly = &mAssembly;
  space->Name = full;
  mAssembly.Namespaces.Add(space, full);
  return space.get();
}

void SourceScan::EnterNamespace(Namespace* space) {
  mSpaces.push_back(space);
  InUse<NetScanState>().CurrentNamespace = space;
}

std::shared_ptr<Component> SourceScan::NewPart() {
  std::shared_ptr<Component> component = NewHolder();
  if (mRules.NetKeepSource) mScanned.Parts.push_back(component);
  return component;
}

std::shared_ptr<Component> SourceScan::NewHolder() {
  auto component = std::make_shared<Component>();
  component->SetVBProject(&mProject);
  component->FileName = mFile.FileName;
  component->LoadState = lsFullyLoaded;
  component->CurrentBlock = component->NewBlock(btDeclarations);
  if (mRules.NetLines) {
    component->SourceForm = mSource;
    component->Intake().Text = std::shared_ptr<const std::string>(mSource, &mSource->Text);
  }
  return component;
}

// A type that holds another comes twice; the second of two types of one key is told and refused.
void SourceScan::AddComponent(const std::shared_ptr<Component>& component) {
  Namespace* space = component->Namespace.Get();
  const std::string key = KeyOfType(space, component->Name, mRules);
  if (mProject.Components.Item(key) == component.get()) return;
  const bool isNew = mProject.Components.Add(component, key);
  if (space && isNew) ListOf(*space, *component).Add(component, component->Name);
  if (isNew) mFile.Components.Add(component, key);
  mProject.TypeCache.Add(key, kKnownType);
}

static void GiveBackRoom(Component& component) {
  component.Intake().Rest();
  for (Block& block : component.Blocks.Listed()) {
    block.RestIntake();
    if (CodeLines* lines = block.CodeLines.IfAny(); lines && !lines->Unloaded()) lines->Shrink();
  }
  component.Fit();
}

void GiveBackRoom(VBProject& project) {
  for (Component& component : project.Components.Listed()) GiveBackRoom(component);
  for (ProjectFile& file : project.ProjectFiles)
    if (Component* outside = file.Outside()) GiveBackRoom(*outside);
}

// --- As described -------------------------------------------------------------------------------

void SourceScan::Take(const SourceStatement& statement) {
  if (!mCurrent) {
    mCurrent = NewPart();
    mCurrent->Access = "PRIVATE";
  }
  if (mRules.NetConditions && TakeCondition(statement)) return;
  const std::vector<TypeStatement> found = TypeStatementsOf(statement);
  if (mRules.NetXmlComments) mScanned.Documentation.Take(statement);
  if (found.empty()) {
    TakeImports(statement.Text);
    return FeedLines(*mCurrent, statement);
  }
  const TypeStatement& first = found.front();
  switch (first.What) {
    case TypeStatement::Kind::Namespace: TakeNamespace(first, statement.Text); break;
    case TypeStatement::Kind::Type: TakeType(first, statement.Text); break;
    default: TakeEnd(first, statement.Text);
  }
}

void SourceScan::TakeNamespace(const TypeStatement& opened, std::string_view text) {
  Namespace* space = CreateNamespace(opened.Name, opened.IsGlobal);
  EnterNamespace(space);
  mCurrent->Namespace = space;
  TakeNamespaceComments(*mCurrent, *space);
  AddLine(*mCurrent, text);
}

// Comments in front of the first type of a file are dropped, those in front of a later one go with
// it: so it is documented.
std::shared_ptr<Component> SourceScan::CreateComponent(std::shared_ptr<Component> buffer,
                                                       const TypeStatement& type,
                                                       Namespace* space) {
  std::shared_ptr<Component> component = buffer;
  OnDemand<TaggedComments> comments;
  if (buffer) {
    const TaggedComments* waiting = buffer->TaggedCommentBuffer.IfAny();
    if (waiting && waiting->Count() > 0) {
      comments = std::move(buffer->TaggedCommentBuffer);
      buffer->TaggedCommentBuffer.Renew();
    }
    if (!buffer->Name.empty()) {
      AddComponent(buffer);
      component.reset();
    }
  }
  if (!component) component = NewPart();
  if (comments.IfAny() && mFile.Components.Count() > 0)
    component->TaggedCommentBuffer = std::move(comments);
  component->SetSourceLine(mLine);
  component->Namespace = space;
  component->Access = mRules.NetTypeStatements ? type.Access : SharedText("PUBLIC");
  if (mRules.NetTypeStatements && type.Access.empty())
    component->Access = mTypes.empty() ? "FRIEND" : "PUBLIC";
  component->Name = mTypes.empty() ? type.Name : mTypes.back().Module->Name + "." + type.Name;
  if (type.Type == ctClass) component->FileType = ftClass;
  if (type.Type == ctModule) component->FileType = ftModule;
  if (mRules.NetTypeStatements && component->FileType == ftUnknown) component->FileType = ftClass;
  component->IsEnumeration = type.Type == ctEnumeration;
  component->IsStructure = type.Type == ctStructure;
  component->IsInterface = type.Type == ctInterface;
  return component;
}

void SourceScan::TakeType(const TypeStatement& opened, std::string_view text) {
  const std::shared_ptr<Component> outer = mTypes.empty() ? nullptr : mCurrent;
  mCurrent = CreateComponent(mCurrent, opened, GetNamespace());
  const bool isClass = opened.Type == ctClass;
  if (isClass || mRules.NetTypeStatements) {
    mCurrent->IsAbstract = opened.IsAbstract;
    mCurrent->IsSealed = opened.IsSealed;
    mCurrent->IsNested = !mTypes.empty();
  }
  if (isClass && outer && !mTypes.empty()) {
    CodeLine placeholder;
    placeholder.LineType = NESTED_CLASS_PLACEHOLDER;
    placeholder.NotInSource = true;
    placeholder.StatementPart = mCurrent->Name;
    outer->AddCode(placeholder, true);
  }
  mTypes.push_back({mCurrent, opened.Underlying});
  if (mRules.NetXmlComments) mScanned.Documentation.AddType(mLine, *mCurrent);
  AddLine(*mCurrent, text);
}

void SourceScan::TakeEnd(const TypeStatement& ended, std::string_view text) {
  if (ended.What == TypeStatement::Kind::EndNamespace) {
    if (!mSpaces.empty()) mSpaces.pop_back();
    return AddLine(*mCurrent, text);
  }
  AddLine(*mCurrent, text);
  if (ended.Type == ctEnumeration)
    TurnEnumerationIntoFields(*mCurrent, mTypes.empty() ? "" : mTypes.back().Underlying);
  // Without an open type there is nothing to add.
  if (!mTypes.empty()) {
    mTypes.pop_back();
    AddComponent(mCurrent);
  }
  mCurrent = mTypes.empty() ? nullptr : mTypes.back().Module;
}

bool ProjectFile::Populate() try {
  vendrel::VBProject* project = VBProject();
  if (!project) throw VendrelError(errObjectNotSet, "the source file has no project");
  const Workspace::Use use(project->Workspace());
  project->SetLanguageVersion(lvVisualBasicDotNet);
  if (vendrel::NetResolver* resolver = project->NetResolver()) resolver->clearnamespaces();
  if (!FileName.Exists()) {
    ReportAt(DiagnosticCode::MissingModule, project->FileName.FullPath(), 0, {FileName.FullPath()});
    return true;
  }
  std::shared_ptr<const SourceText> source;
  try {
    FileName.OpenFile(omRead);
    source = FileName.Source();
    FileName.CloseFile();
  } catch (const VendrelError& error) {
    ReportAt(DiagnosticCode::UnreadableFile, FileName.FullPath(), 0,
             {FileName.FullPath(), error.Text()});
    return true;
  }
  if (LooksBinary(source->Text)) {
    ReportAt(DiagnosticCode::BinaryModule, FileName.FullPath(), 0, {FileName.FullPath()});
    return true;
  }
  SourceForm = source;
  SourceScan(*this, source).Run();
  return true;
}
VENDREL_CONTEXT(trace::Field("FileName", FileName.FullPath()))

}  // namespace vendrel
