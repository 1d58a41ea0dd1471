// Reads a project file: settings, references, the list of modules. Nothing here opens a module but
// to learn the name of one whose line does not tell it.

#include <algorithm>
#include <limits>
#include <string>
#include <string_view>

#include "core/Ascii.h"
#include "core/NumericText.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "model/ModuleKinds.h"
#include "project/BeginLoad.h"
#include "project/ModuleNames.h"
#include "project/VBProject.h"
#include "services/SourceCache.h"
#include "text/Words.h"

namespace vendrel {
namespace {

constexpr std::string_view kNoFile = "Passed filename was invalid / did not exist";

// One line of the file, taken apart.
struct ProjectLineText {
  std::string_view Raw;
  std::string Key;         // upper-cased, trimmed
  std::string_view Value;  // behind the first ";" where there is one
  std::string_view FilePart;
  std::int32_t Line = 0;

  /// The raw line from its n-th character on, without quotes: a fixed position, documented and
  /// kept.
  std::string_view From(std::size_t n) const {
    return StripQuotes(Raw.size() >= n ? Raw.substr(n - 1) : std::string_view());
  }
};

class ProjectReader {
 public:
  explicit ProjectReader(VBProject& project) : mProject(project) {}
  /// Gives what came of each line.
  std::shared_ptr<ProjectFileLines> Read();

 private:
  struct Row {
    std::string_view Key;
    bool Kept;
    void (ProjectReader::*Take)(const ProjectLineText&);
  };
  static const Row* FindRow(std::string_view key);

  void ThisLineIs(std::string_view raw);
  void TakeLine(std::string_view raw);
  void KeepLine(std::string_view raw);
  void StepOver(const VendrelError& error, std::string_view raw);

  void TakeReference(const ProjectLineText& line);
  void TakeModule(const ProjectLineText& line, const ModuleKind& kind);
  void TakeFormLike(const ProjectLineText& line, const ModuleKind& kind);
  void TakeNamed(const ProjectLineText& line, const ModuleKind& kind);
  void AddComponent(const ProjectLineText& line, FileTypeEnum type, std::string name);
  void TakeAutoIncrement(const ProjectLineText& line) {
    if (line.Value == "1") mProject.AutoIncrement = true;
  }
  void TakeMajor(const ProjectLineText& line) { mProject.mMajorVersion = line.Value; }
  void TakeMinor(const ProjectLineText& line) { mProject.mMinorVersion = line.Value; }
  void TakeRevision(const ProjectLineText& line) { mProject.mIncrement = line.Value; }
  void TakeStartup(const ProjectLineText& line) { mProject.Startup = StripQuotes(line.Value); }
  void TakeCompatibleMode(const ProjectLineText& line) {
    const std::string_view digit =
        line.Value.substr(line.Value.size() > 1 ? 1 : line.Value.size(), 1);
    mProject.CompatibleMode = static_cast<CompatibleEnum>(NumericValue(digit));
  }
  void TakeDescription(const ProjectLineText& line) {
    mProject.mDescription = StripQuotes(line.Value);
  }
  void TakeName(const ProjectLineText& line) { mProject.ProjectName = line.Value; }
  void TakeCompatibleExe(const ProjectLineText& line);
  void TakeExeName(const ProjectLineText& line) { mProject.EXEName32 = line.From(12); }
  void TakePath(const ProjectLineText& line) { mProject.Path32 = line.From(8); }
  void TakeType(const ProjectLineText& line);
  void TakeConditions(const ProjectLineText& line) {
    mProject.CompilerConstants.AddFromProjectLine(StripQuotes(line.Value), &mProject);
  }
  void TakeDocument(const ProjectLineText& line) {
    ThisLine().Document = static_cast<std::int32_t>(mProject.RelatedDocuments.size());
    mProject.RelatedDocuments.emplace_back(StripQuotes(line.Value));
  }
  void TakeHelpFile(const ProjectLineText& line) { mProject.HelpFile = StripQuotes(line.Value); }
  void TakeHelpContextID(const ProjectLineText& line) {
    mProject.HelpContextID = NumericValue(StripQuotes(line.Value));
    mProject.LoadedHelpContextID(mProject.HelpContextID);
  }
  void TakeIconForm(const ProjectLineText& line) { mProject.IconForm = StripQuotes(line.Value); }

  ProjectFileLine& ThisLine() { return mLines->Lines.back(); }

  VBProject& mProject;
  std::shared_ptr<ProjectFileLines> mLines = std::make_shared<ProjectFileLines>();
  std::int32_t mLine = 0;
  std::string mPreviousKept;
};

// Beside lines of modules; the key is compared whole.
const ProjectReader::Row* ProjectReader::FindRow(std::string_view key) {
  static const Row rows[] = {
      {"REFERENCE", false, &ProjectReader::TakeReference},
      {"OBJECT", false, &ProjectReader::TakeReference},
      {"AUTOINCREMENTVER", false, &ProjectReader::TakeAutoIncrement},
      {"MAJORVER", true, &ProjectReader::TakeMajor},
      {"MINORVER", true, &ProjectReader::TakeMinor},
      {"REVISIONVER", true, &ProjectReader::TakeRevision},
      {"STARTUP", false, &ProjectReader::TakeStartup},
      {"COMPATIBLEMODE", false, &ProjectReader::TakeCompatibleMode},
      {"DESCRIPTION", true, &ProjectReader::TakeDescription},
      {"NAME", true, &ProjectReader::TakeName},
      {"COMPATIBLEEXE32", false, &ProjectReader::TakeCompatibleExe},
      {"EXENAME32", false, &ProjectReader::TakeExeName},
      {"PATH32", false, &ProjectReader::TakePath},
      {"TYPE", true, &ProjectReader::TakeType},
      {"CONDCOMP", true, &ProjectReader::TakeConditions},
      {"RELATEDDOC", false, &ProjectReader::TakeDocument},
      {"RESFILE32", false, &ProjectReader::TakeDocument},
      {"HELPFILE", false, &ProjectReader::TakeHelpFile},
      {"HELPCONTEXTID", false, &ProjectReader::TakeHelpContextID},
      {"ICONFORM", false, &ProjectReader::TakeIconForm},
  };
  for (const Row& row : rows)
    if (row.Key == key) return &row;
  return nullptr;
}

std::shared_ptr<ProjectFileLines> ProjectReader::Read() {
  FileSystemObject& file = mProject.FileName;
  const DiagnosticScope scope(&mProject.Diagnostics, file.FullPath(), &mLine);
  file.OpenFile(omRead);
  // Read at once: names of modules are looked up while this file is being walked.
  const std::shared_ptr<const SourceText> source = file.Source();
  mProject.SourceForm = source;
  mLines->Source = source;
  std::string_view rest = source->Text;
  const auto ends = std::count(rest.begin(), rest.end(), '\n');
  mLines->Lines.reserve(static_cast<std::size_t>(ends) + 1);
  while (!rest.empty()) {
    ++mLine;
    const std::string_view raw = TakeLineOf(rest);
    ThisLineIs(raw);
    TakeLine(raw);
  }
  // A host that answers class identities (`FileSystemObject::SetClassIdReader`) is asked once a
  // load, while the file is open; what it says is asked for again where it is used, so it is
  // dropped here.
  mProject.ClsID();
  file.CloseFile();
  return mLines;
}

void ProjectReader::ThisLineIs(std::string_view raw) {
  ProjectFileLine& line = mLines->Lines.emplace_back();
  line.Offset = static_cast<std::size_t>(raw.data() - mLines->Source->Text.data());
  line.Length = raw.size();
}

void ProjectReader::TakeLine(std::string_view raw) {
  const std::size_t equals = raw.find('=');
  const std::string_view key = raw.substr(0, equals);
  std::string_view value =
      equals == std::string_view::npos ? std::string_view() : raw.substr(equals + 1);
  if (key.empty() || value.empty()) return KeepLine(raw);
  ProjectLineText line{raw, UpperAscii(Trim(key)), value, value, mLine};
  if (const std::size_t semicolon = value.find(';'); semicolon != std::string_view::npos) {
    std::string_view behind = value.substr(semicolon + 1);
    line.Value = Trim(behind);
    line.FilePart = TakeField(behind, ';');
  }
  const ModuleKind* module = ModuleKindOfKey(line.Key);
  const Row* row = module ? nullptr : FindRow(line.Key);
  // A line that fails is one line lost, not the project: it is told and kept as text.
  try {
    if (module) TakeModule(line, *module);
    if (row) (this->*row->Take)(line);
  } catch (const VendrelError& error) {
    return StepOver(error, raw);
  }
  if (!module && (!row || row->Kept)) KeepLine(raw);
}

// Lines that nobody understands are written back as they stand. A writer that rebuilds the file
// writes them up to the first blank line or section, then its own, then the rest: the last one
// before that place is noted.
void ProjectReader::KeepLine(std::string_view raw) {
  const std::string_view trimmed = Trim(raw);
  if (mProject.LastNormalProjectLineText.empty() && (trimmed.empty() || trimmed.front() == '['))
    mProject.LastNormalProjectLineText = mPreviousKept;
  ThisLine().Kept = static_cast<std::int32_t>(mProject.ProjectLines.size());
  mProject.ProjectLines.emplace_back(raw);
  mPreviousKept = raw;
}

// A host may say that an odd line is kept and passed over; else its failure ends the load.
void ProjectReader::StepOver(const VendrelError& error, std::string_view raw) {
  VendrelError passed = error;
  passed.AddContext("ProjectReader.TakeLine", "ProjectReader", mLine)
      .Local("Line", raw)
      .Of(mProject);
  if (mProject.AskAboutFailure(passed, mProject.FileName.FullPath(), mLine) == StepOver::Raise) {
    mProject.FileName.CloseFile();
    throw passed;
  }
  Report(DiagnosticCode::ProjectLineSkipped, {raw});
  KeepLine(raw);
}

// A second line of one class adds nothing and is dropped without a word. The library is handed to
// the type resolver in any case, by its identity first, since paths of another machine are rarely
// right.
void ProjectReader::TakeReference(const ProjectLineText& line) try {
  auto reference = std::make_shared<Reference>();
  reference->SetParentProject(&mProject);
  reference->SetSourceLine(line.Line);
  reference->Load(line.Raw);
  std::string identity = reference->ClsID();
  ThisLine().IsReference = identity.empty() || !mProject.References.HasKey(identity);
  if (ThisLine().IsReference) {
    mProject.References.Add(reference, identity);
    ThisLine().Reference = reference;
    ThisLine().Value = ProjectFileLines::ValueOf(*reference);
  }
  if (identity.empty()) identity = reference->StoredCLSID;
  std::string_view version = reference->Version;
  const std::int32_t major = NumericValue(TakeField(version, '.'));
  const std::int32_t minor = NumericValue(TakeField(version, '.'));
  TypeResolver& resolver = mProject.TypeResolver();
  if (!resolver.AddTypeLibByID(identity, major, minor, NumericValue(reference->Locale)))
    resolver.AddTypeLibByPath(reference->FileName.FullPath());
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(mProject))

void ProjectReader::TakeModule(const ProjectLineText& line, const ModuleKind& kind) {
  if (kind.LineTellsName)
    TakeNamed(line, kind);
  else
    TakeFormLike(line, kind);
}

// "Form=path": only the file itself knows its name, so the first lines of each such file are read
// here, and the whole of it not before it is asked for.
void ProjectReader::TakeFormLike(const ProjectLineText& line, const ModuleKind& kind) try {
  FileSystemObject module;
  module.SetBaseFile(&mProject.FileName);
  module.SetFullPath(line.Value);
  AddComponent(line, kind.Type, GetComponentName(module.FullPath()));
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(mProject))

// "Class=Name; path": the name stands between the key and the first ";".
void ProjectReader::TakeNamed(const ProjectLineText& line, const ModuleKind& kind) {
  const std::size_t equals = kind.Key.size();
  const std::size_t semicolon = line.Raw.find(';', equals);
  if (semicolon == std::string_view::npos || semicolon == equals)
    throw VendrelError(errInvalidArgument, "the line needs a \";\" behind the name");
  AddComponent(line, kind.Type, std::string(line.Raw.substr(equals + 1, semicolon - equals - 1)));
}

void ProjectReader::AddComponent(const ProjectLineText& line, FileTypeEnum type,
                                 std::string name) try {
  auto component = std::make_shared<Component>();
  component->SetVBProject(&mProject);
  component->FileType = type;
  component->ProjectLineRaw = line.Raw;
  component->SetSourceLine(line.Line);
  component->FileName.SetBaseFile(&mProject.FileName);
  component->FileName.SetFullPath(Trim(line.FilePart));
  component->Name = std::move(name);
  // "Class=A.cls; A.cls": a line that tells the file twice tells no name.
  if (line.FilePart == component->Name) component->Name = component->FileName.BaseName();
  if (const std::size_t dot = component->Name.find('.'); dot != std::string::npos)
    component->Name.resize(dot);
  const std::string key = component->Name;
  ThisLine().IsModule = mProject.Components.Add(component, key);
  if (ThisLine().IsModule) {
    ThisLine().Module = component;
    ThisLine().Value = ProjectFileLines::ValueOf(*component);
  }
  if (mProject.BuildTypeCache) mProject.TypeCache.Add(key, tcLocalProjectModule);
}
VENDREL_CONTEXT_AT(LineReached(), trace::Parameter("FilePart", line.FilePart), type,
                   trace::Me(mProject))

void ProjectReader::TakeCompatibleExe(const ProjectLineText& line) {
  FileSystemObject& file = mProject.CompatibleFileName;
  file.SetBaseFile(&mProject.FileName);
  file.SetFullPath(line.From(17));
  // Assigned once more in full, so that the path no longer counts as a relative one.
  file.SetFullPath(file.FullPath());
}

void ProjectReader::TakeType(const ProjectLineText& line) {
  mProject.TypeName = line.Value;
  if (EqualsNoCaseAscii(line.Value, "exe")) mProject.ProjectType = ptEXE;
  if (EqualsNoCaseAscii(line.Value, "oleexe")) mProject.ProjectType = ptOleExe;
  if (EqualsNoCaseAscii(line.Value, "oledll")) mProject.ProjectType = ptOleDLL;
  if (EqualsNoCaseAscii(line.Value, "control")) mProject.ProjectType = ptControl;
}

// The next help context ID; the largest of all has none behind it.
std::int32_t Following(std::int32_t id) {
  return id == std::numeric_limits<std::int32_t>::max() ? id : id + 1;
}

}  // namespace

bool VBProject::Load(std::string_view ProjectFileName) try {
  const Workspace::Use use(Workspace());
  if (EndsWithNoCaseAscii(ProjectFileName, ".VBPROJ")) return LoadDotNet(ProjectFileName);
  BeginLoad();
  const SourceCache::Scope lookOnce;
  AddLineNumbers = false;
  SetLanguageVersion(lvVisualBasic5or6);
  FileName.SetFullPath(ProjectFileName);
  if (!FileName.Exists()) {
    LastErrorString = kNoFile;
    return false;
  }
  OutputFileName.SetBaseName(FileName.BaseName());
  OutputFileName.SetExtension(FileName.Extension());
  const std::shared_ptr<ProjectFileLines> lines = ProjectReader(*this).Read();
  CurrentHelpContextID = Following(mHighestHelpContextID);
  ProjectName = ProjectNameIn(lines->Source->Text);
  lines->Note(*this);
  FileLines = lines;
  ProjectSourceType = ptsVisualBasicProject;
  ProjectSourceAccess = psaReadWrite;
  return true;
}
VENDREL_CONTEXT(ProjectFileName, *this)

bool VBProject::LoadModule(std::string_view ModuleFileName) try {
  const Workspace::Use use(Workspace());
  BeginLoad();
  AddLineNumbers = false;
  SetLanguageVersion(lvVisualBasic5or6);
  FileName.SetFullPath(ModuleFileName);
  if (!FileName.Exists()) {
    LastErrorString = kNoFile;
    return false;
  }
  auto component = std::make_shared<Component>();
  component->SetVBProject(this);
  component->FileName = FileName;
  component->FileType = FileTypeOfExtension(FileName.Extension());
  component->Name = GetComponentName(FileName.FullPath());
  if (component->Name.empty()) component->Name = FileName.BaseName();
  ProjectName = component->Name;
  const std::string key = component->Name;
  Components.Add(std::move(component), key);
  if (BuildTypeCache) TypeCache.Add(key, tcLocalProjectModule);
  ProjectSourceType = ptsVisualBasicFiles;
  ProjectSourceAccess = psaRead;
  return true;
}
VENDREL_CONTEXT(ModuleFileName, *this)

}  // namespace vendrel
