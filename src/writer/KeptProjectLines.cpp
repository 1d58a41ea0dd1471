#include "writer/KeptProjectLines.h"

#include <unordered_set>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "writer/ProjectLineParts.h"

namespace vendrel {

// Which of several lines of a key is rewritten.
struct KeptProjectLines::SettingRow {
  ProjectSetting Setting;
  std::string_view Key;
  /// The reader takes the value from a fixed place, so the line is written as that place asks.
  bool HasFixedPlace = false;
  /// Every line of the key counts, not the last alone.
  bool Each = false;
  bool Quoted = true;
};

namespace {

template <typename Collection>
auto SetOf(const Collection& collection) {
  std::unordered_set<const void*> set;
  for (const auto& element : collection) set.insert(&element);
  return set;
}

std::string SettingLine(std::string_view key, std::string_view value, bool quoted) {
  const char* const mark = quoted ? "\"" : "";
  std::string line(key);
  return line.append("=").append(mark).append(value).append(mark);
}

bool IsResource(const std::string& path) {
  return EqualsNoCaseAscii(FileSystemObject(path).Extension(), "RES");
}

}  // namespace

KeptProjectLines::KeptProjectLines(VBProject& project, OutputNames& names, SourceStream& stream)
    : mProject(project),
      mFile(*project.FileLines),
      mNames(names),
      mStream(stream),
      mSameLocation(project.SameLocation()),
      mEdits(mFile.Lines.size()) {}

void KeptProjectLines::Run() try {
  KeptLines();
  Modules();
  References();
  Documents();
  Settings();
  const SourceText& source = *mFile.Source;
  const auto addNew = [&](std::ptrdiff_t index) {
    if (const auto lines = mBehind.find(index); lines != mBehind.end())
      for (const std::string& line : lines->second) mStream.Line(line);
  };
  addNew(-1);
  for (std::size_t i = 0; i < mEdits.size(); ++i) {
    const ProjectFileLine& line = mFile.Lines[i];
    mEdits[i].Write(mStream, source, mFile.Text(line), source.RawLine(line.Offset),
                    EndAt(source.Text, line.Offset + line.Length));
    addNew(static_cast<std::ptrdiff_t>(i));
  }
}
VENDREL_CONTEXT_AT(mStream.LineNumber(), trace::Me(mProject))

// Index of the last line of a sort; -1 if there is none.
std::ptrdiff_t KeptProjectLines::LastOf(bool (*is)(const ProjectFileLine&)) const {
  auto i = static_cast<std::ptrdiff_t>(mFile.Lines.size()) - 1;
  while (i >= 0 && !is(mFile.Lines[static_cast<std::size_t>(i)])) --i;
  return i;
}

std::string KeptProjectLines::Resolved(std::string_view path, FileSystemObject& base) const {
  FileSystemObject file;
  file.SetBaseFile(&base);
  file.SetFullPath(path);
  return file.FullPath();
}

// ---- Lines that the reader kept ----------------------------------------------------------------

void KeptProjectLines::KeptLines() {
  std::vector<std::string_view> before;
  std::vector<std::size_t> indexes;
  for (std::size_t i = 0; i < mFile.Lines.size(); ++i) {
    if (mFile.Lines[i].Kept < 0) continue;
    before.push_back(Text(i));
    indexes.push_back(i);
  }
  const std::vector<std::string>& now = mProject.ProjectLines;
  const ListMatch match(before, now);
  for (std::size_t k = 0; k < before.size(); ++k) {
    const auto entry = match.Of(k);
    if (!entry)
      mEdits[indexes[k]].Drop();
    else if (now[*entry] != before[k])
      mEdits[indexes[k]].ReplaceAll(now[*entry]);
  }
  const std::size_t first = match.FirstNew();
  const auto behind = first > 0 ? static_cast<std::ptrdiff_t>(indexes[first - 1]) : -1;
  for (std::size_t k = first; k < match.EndOfNew(); ++k) AddBehind(behind, now[k]);
}

// ---- Modules -----------------------------------------------------------------------------------

void KeptProjectLines::Modules() {
  const auto listed = SetOf(mProject.Components.Listed());
  std::unordered_set<const void*> read;
  for (std::size_t i = 0; i < mFile.Lines.size(); ++i) {
    if (!mFile.Lines[i].IsModule) continue;
    const std::shared_ptr<Component> module = mFile.Lines[i].Module.lock();
    if (!module || !listed.contains(module.get())) {
      mEdits[i].Drop();
      continue;
    }
    read.insert(module.get());
    Module(i, *module);
  }
  std::ptrdiff_t behind = LastOf([](const ProjectFileLine& l) { return l.IsModule; });
  if (behind < 0) behind = LastOf([](const ProjectFileLine& l) { return l.IsReference; });
  if (behind < 0 && !mFile.Lines.empty()) behind = 0;
  for (Component& module : mProject.Components.Listed())
    if (!read.contains(&module)) AddBehind(behind, module.ProjectLine(!mSameLocation));
}

void KeptProjectLines::Module(std::size_t index, Component& module) {
  const std::string_view line = Text(index);
  const std::string& read = mFile.Lines[index].Value;
  if (ProjectFileLines::ValueOf(module) != read) {
    const auto name = ModuleNameRegion(line);
    const bool isOfItsKind = read.starts_with(std::to_string(module.FileType) + "\n");
    if (!isOfItsKind) return mEdits[index].ReplaceAll(module.ProjectLine(!mSameLocation));
    if (name) mEdits[index].Replace(*name, module.Name);  // the lines of forms tell none
  }
  const Region path = ModulePathRegion(line);
  if (EqualsNoCase(Resolved(path.Of(line), mProject.OutputFileName), mNames.Of(module))) return;
  FileSystemObject file = module.FileName;
  file.SetBaseFile(&mProject.FileName);
  mEdits[index].Replace(path, mSameLocation ? file.RelativePath() : file.LeafName());
}

// ---- References --------------------------------------------------------------------------------

void KeptProjectLines::References() {
  const auto listed = SetOf(mProject.References);
  std::unordered_set<const void*> read;
  for (std::size_t i = 0; i < mFile.Lines.size(); ++i) {
    if (!mFile.Lines[i].IsReference) continue;
    const std::shared_ptr<vendrel::Reference> reference = mFile.Lines[i].Reference.lock();
    if (!reference || !listed.contains(reference.get())) {
      mEdits[i].Drop();
      continue;
    }
    read.insert(reference.get());
    Reference(i, *reference);
  }
  std::ptrdiff_t behind = LastOf([](const ProjectFileLine& l) { return l.IsReference; });
  if (behind < 0 && !mFile.Lines.empty()) behind = 0;
  for (vendrel::Reference& reference : mProject.References)
    if (!read.contains(&reference))
      AddBehind(behind, WrittenLine(reference, mProject.OutputFileName));
}

void KeptProjectLines::Reference(std::size_t index, vendrel::Reference& reference) {
  const bool changed = ProjectFileLines::ValueOf(reference) != mFile.Lines[index].Value;
  const VBProject* project = reference.ReferencedProject();
  if (changed || (project && !LeadsTo(index, reference, *project)))
    return mEdits[index].ReplaceAll(WrittenLine(reference, mProject.OutputFileName));
  if (!mSameLocation) ReferencePath(index, reference);
}

// That a group ties a reference to one of its projects changes nothing in the line; a program may
// have tied it to another one.
bool KeptProjectLines::LeadsTo(std::size_t index, const vendrel::Reference& reference,
                               const VBProject& project) const {
  const std::string id = project.ClsID();
  if (!id.empty() &&
      (EqualsNoCase(id, reference.StoredCLSID) || EqualsNoCase(id, reference.ClsID())))
    return true;
  const auto path = ReferencePathRegion(Text(index));
  return path && EqualsNoCase(FileSystemObject(path->Of(Text(index))).LeafName(),
                              project.FileName.LeafName());
}

// Seen from another folder, a relative path leads elsewhere; a name without a folder is one that
// the system knows.
void KeptProjectLines::ReferencePath(std::size_t index, const vendrel::Reference& reference) {
  const std::string_view line = Text(index);
  const auto path = ReferencePathRegion(line);
  if (!path || line.find('\\') == kNotFound) return;
  const std::string meant = Resolved(path->Of(line), mProject.FileName);
  if (EqualsNoCase(meant, Resolved(path->Of(line), mProject.OutputFileName))) return;
  FileSystemObject file(meant);
  const bool staysIfAbsent = mProject.Reading.KeepAbsentReferences || !reference.CompiledReference;
  if (staysIfAbsent && !file.Exists()) return;
  file.SetBaseFile(&mProject.OutputFileName);
  Relocate(index, *path, file.RelativePath());
}

// A folder on the way may have a name that the code page lacks, or whose bytes mean nothing in it.
// A project that nobody changed is written all the same, with the path it was read with.
void KeptProjectLines::Relocate(std::size_t index, Region place, const std::string& path) {
  const std::string_view changed =
      std::string_view(path).substr(0, path.size() - CommonEnd(place.Of(Text(index)), path));
  if (!HoldsReplacement(changed) && Encode(changed, *mFile.Source))
    return mEdits[index].Replace(place, path);
  ReportAt(DiagnosticCode::Told, mProject.FileName.FullPath(), static_cast<std::int32_t>(index) + 1,
           {"the path stays as it was read, since code page " + PageOf(*mFile.Source).Name() +
            " lacks characters of " + path +
            "; choose a folder beside the source, or another code page"});
}

// ---- Documents ---------------------------------------------------------------------------------

void KeptProjectLines::Documents() {
  const std::vector<std::string>& now = mProject.RelatedDocuments;
  const ListMatch match(mFile.Documents, now);
  for (std::size_t i = 0; i < mFile.Lines.size(); ++i) {
    const std::int32_t document = mFile.Lines[i].Document;
    if (document < 0) continue;
    const auto entry = match.Of(static_cast<std::size_t>(document));
    if (!entry)
      mEdits[i].Drop();
    else
      Document(i, now[*entry], now[*entry] != mFile.Documents[static_cast<std::size_t>(document)]);
  }
  std::ptrdiff_t behind = LastOf([](const ProjectFileLine& l) { return l.Document >= 0; });
  if (behind < 0) behind = LastOf([](const ProjectFileLine& l) { return l.IsModule; });
  if (behind < 0 && !mFile.Lines.empty()) behind = 0;
  for (std::size_t k = match.FirstNew(); k < match.EndOfNew(); ++k)
    AddBehind(behind, DocumentLine(now[k]));
}

void KeptProjectLines::Document(std::size_t index, const std::string& entry, bool changed) {
  const std::string target =
      mSameLocation ? Resolved(entry, mProject.FileName)
                    : mProject.OutputFileName.FolderPath() + FileSystemObject(entry).LeafName();
  if (!changed && EqualsNoCase(Resolved(entry, mProject.OutputFileName), target)) return;
  const bool isResourceLine = ProjectLineKey(Text(index)) == "RESFILE32";
  if (changed && isResourceLine != IsResource(entry))
    return mEdits[index].ReplaceAll(DocumentLine(entry));
  mEdits[index].Replace(ValueRegion(Text(index)), DocumentPath(entry));
}

// The key is chosen by extension.
std::string KeptProjectLines::DocumentLine(const std::string& entry) const {
  const bool isResource = IsResource(entry);
  return SettingLine(isResource ? "ResFile32" : "RelatedDoc", DocumentPath(entry), isResource);
}

std::string KeptProjectLines::DocumentPath(const std::string& entry) const {
  FileSystemObject file;
  file.SetBaseFile(&mProject.FileName);
  file.SetFullPath(entry);
  return mSameLocation ? file.RelativePath() : file.LeafName();
}

// ---- Settings ----------------------------------------------------------------------------------

void KeptProjectLines::Settings() {
  using enum ProjectSetting;
  static constexpr SettingRow kRows[] = {
      {Name, "Name", true, true},
      {HelpFile, "HelpFile"},
      {HelpContextID, "HelpContextID"},
      {IconForm, "IconForm"},
      {Startup, "Startup"},
      {CompatibleMode, "CompatibleMode", true},
      {CompatibleExe, "CompatibleEXE32", true},
      {ExeName, "ExeName32", true},
      {Path, "Path32", true},
      {AutoIncrement, "AutoIncrementVer", false, true, false},
  };
  for (const SettingRow& row : kRows) Setting(row);
}

void KeptProjectLines::Setting(const SettingRow& row) {
  std::vector<std::size_t> lines;
  for (std::size_t i = 0; i < mFile.Lines.size(); ++i)
    if (EqualsNoCaseAscii(ProjectLineKey(Text(i)), row.Key)) lines.push_back(i);
  std::string value = ProjectFileLines::ValueOf(mProject, row.Setting);
  const bool changed = value != mFile.Settings[static_cast<std::size_t>(row.Setting)];
  if (row.Setting == ProjectSetting::CompatibleExe) {
    if (!changed && !lines.empty() && !mSameLocation) CompatiblePath(lines.back());
    if (changed) value = RelativePath(mProject.CompatibleFileName);
  }
  if (!changed) return;
  if (!row.Each && lines.size() > 1) lines = {lines.back()};
  for (const std::size_t index : lines) SetValue(index, row, value);
  if (!lines.empty()) return;
  std::size_t section = 0;
  while (section < mFile.Lines.size() && !BeginsSection(Text(section))) ++section;
  AddBehind(static_cast<std::ptrdiff_t>(section) - 1, SettingLine(row.Key, value, row.Quoted));
}

// A blank line, or "[": settings of others follow.
bool KeptProjectLines::BeginsSection(std::string_view line) {
  const std::string_view trimmed = Trim(line);
  return trimmed.empty() || trimmed.front() == '[';
}

void KeptProjectLines::SetValue(std::size_t index, const SettingRow& row,
                                const std::string& value) {
  const std::string_view line = Text(index);
  if (!row.HasFixedPlace) return mEdits[index].Replace(ValueRegion(line), value);
  mEdits[index].ReplaceAll(SettingLine(Trim(line.substr(0, line.find('='))), value, true));
}

void KeptProjectLines::CompatiblePath(std::size_t index) {
  const std::string_view line = Text(index);
  const Region path = ValueRegion(line);
  if (path.Length == 0) return;
  const std::string seen = Resolved(path.Of(line), mProject.OutputFileName);
  if (EqualsNoCase(seen, mProject.CompatibleFileName.FullPath())) return;
  Relocate(index, path, RelativePath(mProject.CompatibleFileName));
}

std::string KeptProjectLines::RelativePath(const FileSystemObject& file) const {
  if (file.BaseName().empty()) return {};
  FileSystemObject seen = file;
  seen.SetBaseFile(&mProject.OutputFileName);
  return seen.RelativePath();
}

}  // namespace vendrel
