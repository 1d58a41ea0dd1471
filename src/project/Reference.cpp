#include "project/Reference.h"

#include <charconv>
#include <unordered_set>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "project/VBProject.h"
#include "services/SettingsReader.h"
#include "services/TextUtility.h"

namespace vendrel {
namespace {

constexpr std::size_t kMostFields = 99;
constexpr int kLastMinorVersion = 999;

struct LibraryNames {
  Reference::LibraryNameReader Reader = nullptr;
};

/// Text from a 1-based position on; empty behind the end.
std::string_view From(std::string_view text, std::size_t position) {
  return text.substr(std::min(position - 1, text.size()));
}

/// The fields of a line up to the first empty one. Fields have no escape: a "#" in a path ends it.
std::vector<std::string_view> LineFields(std::string_view text) {
  std::vector<std::string_view> fields;
  FieldCursor cursor(text, "#");
  std::string_view field;
  while (fields.size() < kMostFields && cursor.Next(field) && !field.empty())
    fields.push_back(field);
  return fields;
}

/// The number at the start of a text; 0 if there is none.
int NumberOf(std::string_view text, int base) {
  int number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number, base);
  return number;
}

bool IsNumeric(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

std::string HexText(int number) {
  char digits[16];
  const auto end = std::to_chars(digits, digits + sizeof digits, number, 16).ptr;
  return {digits, end};
}

}  // namespace

void Reference::SetLibraryNameReader(LibraryNameReader reader) {
  InUse<LibraryNames>().Reader = reader;
}

VBProject* Reference::ParentProject() const {
  return static_cast<vendrel::VBProject*>(mParentProject.Get());
}

VBProject* Reference::ReferencedProject() const {
  return static_cast<vendrel::VBProject*>(mReferencedProject.Get());
}

void Reference::SetParentProject(ProjectOptions* project) {
  mParentProject.Set(project);
  if (project) FileName.SetBaseFile(&ParentProject()->FileName);
}

void Reference::SetRelativeTo(FileSystemObject* file) {
  mRelativeTo.Set(file);
  FileName.SetBaseFile(file);
}

std::string Reference::ClsID() const { return FileName.ClassID(); }

std::string Reference::Name() const {
  if (!mName.empty()) return mName;
  const std::string leaf = FileName.LeafName();
  // Those of VB.NET projects have no type; what stands in front of a version names an assembly.
  if (!leaf.empty() || !ReferenceType.empty()) return leaf;
  return SourceString.substr(0, SourceString.find(','));
}

void Reference::Load(std::string_view Source) try {
  if (vendrel::VBProject* parent = ParentProject()) SetRelativeTo(&parent->FileName);
  SourceString = Source;
  if (Source.starts_with("Object")) {
    ReferenceType = "Object";
    LoadObject(From(Source, 8));
  } else if (Source.starts_with("Reference")) {
    ReferenceType = "Reference";
    LoadReference(From(Source, 11));
  } else {
    ReferenceType = "Line";
  }
  if (!FileName.FullPath().empty()) FindRegisteredFile();
  if (mName.empty()) NameFromLibrary();
  // Reading and assigning freezes the path as an absolute one.
  FileName.SetFullPath(FileName.FullPath());
}
VENDREL_CONTEXT_AT(LineReached(), Source)

// "{clsid}#version#locale; file" or "*\Apath".
void Reference::LoadObject(std::string_view text) try {
  CompiledReference = !text.starts_with("*\\A");
  if (!CompiledReference) {
    FileName.SetFullPath(From(text, 4));
    return;
  }
  const std::size_t semicolon = text.find(';');
  if (semicolon == std::string_view::npos)
    throw VendrelError(errInvalidArgument, "Object line without \";\": " + SourceString);
  const auto fields = LineFields(Trim(text.substr(0, semicolon)));
  if (fields.size() != 3) return;
  StoredCLSID = fields[0];
  Version = fields[1];
  Locale = fields[2];
  // The blank behind the semicolon is part of the form.
  FileName.SetFullPath(From(text, semicolon + 3));
}
VENDREL_CONTEXT_AT(LineReached(), text, trace::Field("SourceString", SourceString))

// "*\G{clsid}#version#locale#path#name" or "*\Apath".
void Reference::LoadReference(std::string_view text) try {
  CompiledReference = text.starts_with("*\\G");
  const auto fields = LineFields(From(text, 4));
  if (fields.size() == 1) FileName.SetFullPath(fields[0]);
  if (fields.size() < 4) return;
  StoredCLSID = fields[0];
  Version = fields[1];
  Locale = fields[2];
  FileName.SetFullPath(fields[3]);
  if (fields.size() > 4) mName = fields[4];
}
VENDREL_CONTEXT_AT(LineReached(), text, trace::Field("SourceString", SourceString))

// What is registered goes before the path of the line: the very version, then the next newer one.
void Reference::FindRegisteredFile() try {
  if (StoredCLSID.empty()) return;
  std::string path = RegisteredPath(Version);
  if (path.empty()) path = NewerRegisteredPath();
  if (!path.empty()) FileName.SetFullPath(path);
}
VENDREL_CONTEXT_AT(LineReached(), trace::Field("StoredCLSID", StoredCLSID),
                   trace::Field("Version", Version))

std::string Reference::RegisteredPath(std::string_view version) const {
  std::string key = "Typelib\\" + StoredCLSID + "\\";
  key.append(version).append("\\").append(Locale).append("\\Win32");
  return SettingsReader::Default().ReadValue(HKEY_CLASSES_ROOT, key, "");
}

// Minor versions upward. Only those are asked for that the library has at all, so that a library
// that is not registered costs one question, not a thousand.
std::string Reference::NewerRegisteredPath() const {
  std::unordered_set<std::string> registered;
  for (const std::string& version :
       SettingsReader::Default().SubKeys(HKEY_CLASSES_ROOT, "Typelib\\" + StoredCLSID))
    registered.insert(LowerAscii(version));
  if (registered.empty()) return {};
  const std::string_view major = TextUtility::FieldView(Version, ".", 1);
  const std::string_view minor = TextUtility::FieldView(Version, ".", 2);
  const bool isDecimal = ReferenceType == "Object" && IsNumeric(minor);
  for (int i = NumberOf(minor, isDecimal ? 10 : 16) + 1; i <= kLastMinorVersion; ++i) {
    const std::string version = HexVersion(std::string(major) + "." + std::to_string(i));
    if (!registered.contains(LowerAscii(version))) continue;
    std::string path = RegisteredPath(version);
    if (!path.empty()) return path;
  }
  return {};
}

// The registry keeps minor versions in hexadecimal.
std::string Reference::HexVersion(std::string_view Version) {
  if (Version.find('.') == std::string_view::npos) return std::string(Version);
  return TextUtility::Field(Version, ".", 1) + "." +
         HexText(NumberOf(TextUtility::FieldView(Version, ".", 2), 10));
}

void Reference::NameFromLibrary() {
  const LibraryNameReader read = InUse<LibraryNames>().Reader;
  if (!read) return;
  try {
    const std::string path = FileName.NativePath();
    if (!path.empty() && FileName.Exists()) mName = read(path);
  } catch (const std::exception&) {
    // A file that is no library has no name of its own; the leaf name stands in.
  }
}

// A path is computed afresh if it was a relative one, or if the project is written elsewhere.
bool Reference::MustRebuild() const {
  if (SourceString.find('\\') == std::string::npos) return false;
  const vendrel::VBProject* parent = ParentProject();
  if (parent && parent->Reading.KeepAbsentReferences && !FileName.Exists()) return false;
  return FileName.IsRelocatable() ||
         (parent && !EqualsNoCase(parent->FileName.FullPath(), parent->OutputFileName.FullPath()));
}

std::string Reference::CompiledForm(std::string_view classId, std::string_view path) const {
  std::string line;
  if (ReferenceType == "Reference") {
    line.append("Reference=*\\G").append(classId).append("#").append(Version).append("#");
    return line.append(Locale).append("#").append(path).append("#").append(Name());
  }
  if (ReferenceType == "Object") {
    line.append("Object=").append(classId).append("#").append(Version).append("#");
    return line.append(Locale).append("; ").append(path);
  }
  return SourceString;
}

std::string Reference::CompiledLine() try {
  vendrel::VBProject* project = ReferencedProject();
  if (!project && !CompiledReference) return {};
  if (!project)
    return MustRebuild() ? CompiledForm(StoredCLSID, FileName.RelativePath()) : SourceString;
  const std::string classId = project->ClsID();
  if (classId.empty()) return {};
  if (Version.empty()) {
    Version = "1.0";
    Locale = "0";
  }
  if (vendrel::VBProject* parent = ParentProject()) FileName.SetBaseFile(&parent->FileName);
  return CompiledForm(classId, FileName.FullPath());
}
VENDREL_CONTEXT(trace::Field("Name", mName))

std::string Reference::CodeLine() try {
  if (!CompiledReference) return SourceString;
  vendrel::VBProject* project = ReferencedProject();
  if (!project) return {};
  if (ReferenceType == "Line") return SourceString;
  FileSystemObject& file = project->FileName;
  FileSystemObject* const savedBase = file.BaseFile();
  if (vendrel::VBProject* parent = ParentProject()) file.SetBaseFile(&parent->FileName);
  const std::string path = file.RelativePath();
  file.SetBaseFile(savedBase);
  return ReferenceType + "=*\\A" + path;
}
VENDREL_CONTEXT(trace::Field("Name", mName))

std::string Reference::Description() const {
  const vendrel::VBProject* project = ReferencedProject();
  return project ? project->Description() : Name();
}

}  // namespace vendrel
