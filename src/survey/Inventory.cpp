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

std::int64_t Count(std::size_t number) { return static_cast<std::int64_t>(number); }

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

Table Rows(std::string_view row, std::string_view title, std::vector<std::string_view> columns,
           std::vector<std::vector<TableValue>> rows = {}, std::string_view largestBy = {}) {
  return {row, title, std::move(columns), std::move(rows), largestBy};
}

}  // namespace

void Inventory::Add(const VBProject& project) {
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
  mProjects.push_back({project.ProjectName, file, std::string(KindOfProject(project)),
                       Count(project.Components.Listed().Count()), missing, counts.Code,
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
  for (const auto& [progID, count] : counts)
    mControls.push_back(
        {progID, count, ControlIsFound(component, progID), component.Name, project});
}

void Inventory::AddReferences(const VBProject& project) {
  const std::string file = ShownFile(project.FileName.FullPath(), NativeRoot);
  for (const Reference& reference : project.References)
    mReferences.push_back({ReferenceNameOf(reference), reference.ReferenceType, reference.Version,
                           reference.FileName.FullPath(), FoundValue(project, reference), file});
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

Table Inventory::TotalsTable() const {
  LineCounts counts;
  std::int64_t procedures = 0;
  for (const Module& module : mModules) {
    if (!module.IsOfNet) counts.Add(module.Counts);
    procedures += module.Procedures;
  }
  for (const auto& [file, lines] : mNetFiles) counts.Add(lines);
  return Rows("total", "totals", {"What", "Count"},
              {{"projects", Count(mProjects.size())},
               {"modules", Count(mModules.size())},
               {"lines of code", counts.Code},
               {"lines of comment", counts.Comment},
               {"blank lines", counts.Blank},
               {"lines of headers", counts.Header},
               {"procedures", procedures}});
}

Table Inventory::ModuleTable() const {
  Table table = Rows("module", "modules",
                     {"Name", "Kind", "File", "Code", "Comment", "Blank", "Header", "Procedures",
                      "CodePage", "LineEnds", "Projects"},
                     {}, "Code");
  for (const Module& module : mModules)
    table.Rows.push_back({module.Name, module.Kind, module.File, module.Counts.Code,
                          module.Counts.Comment, module.Counts.Blank, module.Counts.Header,
                          module.Procedures, module.CodePage, module.LineEnds,
                          Count(module.Projects.size())});
  return table;
}

Table Inventory::UnlistedTable() const {
  Table table =
      Rows("unlisted", "module files that no project lists", {"File", "Lines"}, {}, "Lines");
  for (const auto& [file, lines] : mFiles) table.Rows.push_back({file, lines});
  return table;
}

Table Inventory::SharedTable() const {
  Table table = Rows("shared", "modules that several projects list",
                     {"File", "Code", "Projects", "Listed"}, {}, "Projects");
  for (const Module& module : mModules) {
    if (module.Projects.size() < 2) continue;
    std::string listed;
    for (const std::string& project : module.Projects)
      listed.append(listed.empty() ? "" : ", ").append(project);
    table.Rows.push_back(
        {module.File, module.Counts.Code, Count(module.Projects.size()), std::move(listed)});
  }
  return table;
}

Table Inventory::EqualTable() const {
  Table table =
      Rows("equal", "modules equal to another one", {"File", "Code", "EqualTo"}, {}, "Code");
  std::unordered_map<std::size_t, const Module*> first;
  for (const Module& module : mModules) {
    if (!module.IsFirstOfFile) continue;
    const auto [known, isNew] = first.try_emplace(module.Content, &module);
    if (!isNew) table.Rows.push_back({module.File, module.Counts.Code, known->second->File});
  }
  return table;
}

Table Inventory::NearTable() const {
  Table table = Rows("near", "modules nearly equal to another one",
                     {"File", "Code", "NearlyEqualTo", "Percent"}, {}, "Code");
  for (const NearDuplicate& pair : mNear.Find())
    table.Rows.push_back({mModules[pair.Second].File, mModules[pair.Second].Counts.Code,
                          mModules[pair.First].File, std::int64_t{pair.Percent}});
  return table;
}

Table Inventory::CodePageTable() const {
  Table table = Rows("encoding", "code pages and line ends", {"CodePage", "LineEnds", "Modules"});
  std::map<std::pair<std::string, std::string>, std::int64_t> counts;
  for (const Module& module : mModules)
    if (!module.CodePage.empty()) ++counts[{module.CodePage, module.LineEnds}];
  for (const auto& [form, count] : counts) table.Rows.push_back({form.first, form.second, count});
  return table;
}

std::vector<Table> Inventory::Tables() const {
  Table libraries = Rows("library", "libraries whose functions are declared",
                         {"Library", "Functions", "Declares", "Modules"}, {}, "Declares");
  for (const auto& [name, library] : mLibraries)
    libraries.Rows.push_back(
        {name, Count(library.Functions.size()), library.Declares, Count(library.Modules.size())});
  std::vector<Table> tables{
      TotalsTable(),
      Rows("project", "projects",
           {"Name", "File", "Kind", "Modules", "Missing", "Code", "Comment", "Blank", "Header",
            "Procedures"},
           mProjects, "Code"),
      ModuleTable(),
      Rows("procedure", "procedures",
           {"QualifiedName", "File", "Line", "Lines", "Complexity", "Nesting"}, mProcedures,
           "Complexity"),
      Rows("reference", "references", {"Name", "Type", "Version", "Path", "Found", "Project"},
           mReferences),
      Rows("control", "controls", {"ProgID", "Count", "Found", "Module", "Project"}, mControls,
           "Count"),
      std::move(libraries),
      Rows("progid", "objects made by name", {"ProgID", "Call", "File", "Line"}, mProgIDs),
      UnlistedTable(),
      SharedTable(),
      EqualTable(),
  };
  if (FindsNearDuplicates) tables.push_back(NearTable());
  tables.push_back(CodePageTable());
  return tables;
}

}  // namespace vendrel
