#include "survey/Inventory.h"

#include <algorithm>
#include <functional>
#include <unordered_map>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "output/Dump.h"
#include "services/FileSource.h"
#include "services/SourceText.h"
#include "survey/Wording.h"

namespace vendrel {
namespace {

bool IsOfNet(const Component& component) {
  return component.Options().LanguageVersion() == lvVisualBasicDotNet;
}

std::string CodePageOf(const SourceText& text) {
  switch (text.Encoding) {
    case TextEncoding::Ascii: return "ASCII";
    case TextEncoding::Utf8: return "UTF-8";
    case TextEncoding::Utf8Bom: return "UTF-8 with mark";
    case TextEncoding::Utf16LE:
    case TextEncoding::Utf16BE: return "UTF-16";
    case TextEncoding::CodePage: break;
  }
  return text.CodePageName;
}

std::string LineEndsOf(const SourceText& text) {
  switch (text.LineEnds.Form) {
    case LineEnds::Kind::None: return "none";
    case LineEnds::Kind::CrLf: return "CR LF";
    case LineEnds::Kind::Lf: return "LF";
    case LineEnds::Kind::Cr: return "CR";
    case LineEnds::Kind::Mixed: break;
  }
  return "mixed";
}

// The first string literal among the arguments behind a bracket, as long as nothing else is there
// but a comma and blanks; empty for a name that the program makes up.
std::string LiteralBehind(std::string_view rest) {
  const std::size_t at = rest.find_first_not_of(" \t(,");
  if (at == std::string_view::npos || rest[at] != '"') return {};
  rest.remove_prefix(at + 1);
  const std::size_t end = rest.find_first_of("\"\r\n");
  if (end == std::string_view::npos || rest[end] != '"') return {};
  return std::string(rest.substr(0, end));
}

// "VB.TextBox" is one of the language, "MSComctlLib.TreeView" of a library whose name is known
// where its file is, "Shop.PriceBox" of this project or one that it refers to.
bool ControlIsFound(const Component& component, std::string_view progID) {
  const std::string_view library = progID.substr(0, progID.find('.'));
  const VBProject* project = component.VBProject();
  if (EqualsNoCaseAscii(library, "VB") || !project) return true;
  if (EqualsNoCase(library, project->ProjectName))
    return project->Components.HasKey(progID.substr(std::min(progID.size(), library.size() + 1)));
  for (const Reference& reference : project->References)
    if (reference.FileName.Exists() && (EqualsNoCase(library, reference.Name()) ||
                                        EqualsNoCase(library, reference.FileName.BaseName())))
      return true;
  return false;
}

std::string PathOf(const Reference& reference, const std::string& nativeRoot) {
  const std::string path = reference.FileName.FullPath();
  return path.empty() ? path : ShownFile(path, nativeRoot);
}

// Of an assembly its project told where it is not found; a package nobody looked for.
TableValue FoundValue(const VBProject& project, const Reference& reference) {
  const bool isOfNet = project.LanguageVersion() == lvVisualBasicDotNet;
  if (!isOfNet || !reference.FileName.FullPath().empty()) return reference.FileName.Exists();
  if (!reference.Version.empty()) return std::string();
  const std::string missing = "assembly " + ReferenceNameOf(reference) + " ";
  for (const Diagnostic& item : project.Diagnostics)
    if (item.Code == DiagnosticCode::MissingAssembly && item.Text.starts_with(missing))
      return false;
  return true;
}

}  // namespace

void Inventory::Add(const VBProject& project, const ProjectUses* uses) {
  mUses = CountsUses ? uses : nullptr;
  const std::string file = ShownFile(project.FileName.FullPath(), NativeRoot);
  const bool isCompiled = project.ProjectSourceType == ptsTypeLibrary;
  LineCounts counts;
  std::int64_t procedures = 0, missing = 0;
  for (const Component& component : project.Components.Listed()) {
    missing += !component.SourceForm && !isCompiled;
    if (!component.SourceForm && !isCompiled) continue;
    const Module& module = AddModule(component, file, isCompiled ? file : FileOf(component));
    AddControls(component, file);
    counts.Add(module.Counts);
    procedures += module.Procedures;
  }
  if (project.ProjectFiles.Count() > 0) counts = AddNetFiles(project);
  AddReferences(project);
  if (mUses) AddCalls(file);
  mUses = nullptr;
  mProjects.push_back({project.ProjectName, file, std::string(KindOfProject(project)),
                       SizeOf(project.Components.Listed().Count()), missing, counts.Code,
                       counts.Comment, counts.Blank, counts.Header, procedures});
}

std::string Inventory::FileOf(const Component& component) const {
  return ShownFile(component.FileName.FullPath(), NativeRoot);
}

// A file of VB.NET holds any number of types, each of them a module.
const Inventory::Module& Inventory::AddModule(const Component& component,
                                              const std::string& project, const std::string& file) {
  mListed.insert(file);
  const auto [known, isNew] = mByFile.try_emplace(
      {file, IsOfNet(component) ? component.FullName() : std::string()}, mModules.size());
  if (!isNew) {
    Module& module = mModules[known->second];
    if (module.Projects.back() != project) module.Projects.push_back(project);
    return module;
  }
  Module& module = mModules.emplace_back();
  module.Name = component.Name;
  module.Kind = KindWordOf(component);
  module.File = file;
  module.Projects.push_back(project);
  module.IsOfNet = IsOfNet(component);
  if (component.SourceForm) TakeSource(component, module);
  AddProcedures(component, module);
  AddDeclares(component);
  if (FindsNearDuplicates)
    mNear.Add(module.IsFirstOfFile ? std::string_view(component.SourceForm->Text)
                                   : std::string_view());
  return module;
}

// What is asked of the file as a whole is the first type's in it.
void Inventory::TakeSource(const Component& component, Module& module) {
  const SourceText& text = *component.SourceForm;
  module.CodePage = CodePageOf(text);
  module.LineEnds = LineEndsOf(text);
  module.Counts = LineCountsOf(component);
  module.IsFirstOfFile = mSearched.insert(module.File).second;
  if (!module.IsFirstOfFile) return;
  module.Content = std::hash<std::string>()(text.Text);
  AddProgIDs(component, module.File);
}

// All of their lines, those outside of types too.
LineCounts Inventory::AddNetFiles(const VBProject& project) {
  LineCounts counts;
  for (const ProjectFile& source : project.ProjectFiles) {
    const std::string file = ShownFile(source.FileName.FullPath(), NativeRoot);
    mListed.insert(file);
    if (!source.SourceForm) continue;
    const auto [known, isNew] = mNetFiles.try_emplace(file);
    if (isNew) known->second = LineCountsOfText(source.SourceForm->Text);
    counts.Add(known->second);
  }
  return counts;
}

void Inventory::AddProcedures(const Component& component, Module& module) {
  for (const Block& block : component.Blocks) {
    if (block.Name().empty() || !IsOwnMember(block)) continue;
    ++module.Procedures;
    const ProcedureMetrics metrics = MetricsOf(block);
    mProcedures.push_back({block.QualifiedName(), module.File, std::int64_t{block.SourceLine()},
                           metrics.Lines, metrics.Complexity, metrics.Nesting});
    if (!mUses) continue;
    const CallFan fan = FanOf(mUses->Calls(), block);
    mProcedures.back().insert(mProcedures.back().end(), {SizeOf(fan.In), SizeOf(fan.Out)});
  }
}

void Inventory::AddDeclares(const Component& component) {
  for (const DeclareDeclaration& declare : component.Declarations) {
    DeclaredLibrary& library = mLibraries[LowerAscii(declare.Library)];
    ++library.Declares;
    library.Functions.insert(std::string(declare.Alias.empty() ? std::string_view(declare.Name)
                                                               : std::string_view(declare.Alias)));
    library.Modules.insert(component.FileName.FullPath());
  }
}

void Inventory::AddProgIDs(const Component& component, const std::string& file) {
  const std::string_view text = component.SourceForm->Text;
  std::int64_t line = 1;
  std::size_t counted = 0;
  for (const std::string_view call : {"CreateObject", "GetObject"}) {
    line = 1;
    counted = 0;
    for (std::size_t at = text.find("Object"); at != std::string_view::npos;
         at = text.find("Object", at + 1)) {
      const std::size_t length = call.size() - 6;  // what stands before "Object"
      if (at < length || !EqualsNoCaseAscii(text.substr(at - length, call.size()), call)) continue;
      line += std::count(text.begin() + static_cast<std::ptrdiff_t>(counted),
                         text.begin() + static_cast<std::ptrdiff_t>(at), '\n');
      counted = at;
      const std::string progID = LiteralBehind(text.substr(at + 6, 300));
      if (!progID.empty()) mProgIDs.push_back({progID, std::string(call), file, line});
    }
  }
}

void Inventory::AddControls(const Component& component, const std::string& project) {
  std::map<std::string, std::int64_t> counts;
  for (const VBControl& control : component.AllVBControls) ++counts[control.ProgID];
  for (const auto& [progID, count] : counts) {
    mControls.push_back(
        {progID, count, ControlIsFound(component, progID), component.Name, project});
    if (mUses) mControls.back().push_back(mUses->OfControls(component, progID));
  }
}

void Inventory::AddReferences(const VBProject& project) {
  const std::string file = ShownFile(project.FileName.FullPath(), NativeRoot);
  for (const Reference& reference : project.References) {
    mReferences.push_back({ReferenceNameOf(reference), reference.ReferenceType, reference.Version,
                           PathOf(reference, NativeRoot), FoundValue(project, reference), file});
    if (!mUses) continue;
    const std::optional<std::int64_t> uses = mUses->OfReference(reference);
    mReferences.back().push_back(uses ? TableValue(*uses) : TableValue(std::string()));
  }
}

void Inventory::AddCalls(const std::string& project) {
  for (const CallEdge& edge : CallsBetweenModules(mUses->Calls()))
    mCalls.push_back({edge.From->QualifiedName(), edge.To->QualifiedName(),
                      std::int64_t{edge.Count}, edge.IsSure, project});
}

void Inventory::AddFile(const FileSystemObject& file) {
  const std::string shown = ShownFile(file.FullPath(), NativeRoot);
  if (mListed.contains(shown)) return;
  std::int64_t lines = 0;
  try {
    const std::string bytes = ReadWholeFile(file.NativePath());
    lines = std::count(bytes.begin(), bytes.end(), '\n') + (!bytes.empty() && bytes.back() != '\n');
  } catch (const VendrelError&) {  // listed all the same
  }
  mFiles.emplace(shown, lines);
}

}  // namespace vendrel
