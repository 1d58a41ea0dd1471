#include "cli/CompiledInput.h"

#include "cli/Report.h"
#include "core/CaseFold.h"
#include "dotnet/Assemblies.h"
#include "dotnet/metadata/PeImage.h"
#include "services/ByteSource.h"
#include "services/ByteStream.h"

namespace vendrel::cli {
namespace {

constexpr std::string_view kCustom = "custom:";

[[noreturn]] void Refuse(const std::string& path, const std::string& reason) {
  throw InputError(path, "cannot be read: " + reason);
}

bool IsNative(const std::string& nativePath) {
  try {
    const auto file = OpenBytes(nativePath);
    return metadata::ReadHeaders(*file).Kind == metadata::FileKind::Native;
  } catch (const VendrelError&) {
    return false;
  } catch (const DataError&) {
    return false;
  }
}

bool IsAssembly(const FileSystemObject& file, const CommonOptions& options) {
  if (options.As == "assembly") return true;
  if (options.As == "typelib") return false;
  for (const char* extension : {"netmodule", "winmd"})
    if (EqualsNoCase(file.Extension(), extension)) return true;
  return file.Exists() && metadata::HoldsMetadata(file.NativePath());
}

void FillFromCustom(VBProject& project, std::string_view text, const CommonOptions& options) {
  const NamedValue custom = CutNamedValue("--custom", std::string(text));
  try {
    if (!options.Loader.empty())
      UseLoaderLibrary(FileSystemObject(AbsolutePath(options.Loader)).NativePath(), custom.Name);
    project.SetLanguageVersion(lvVisualBasicDotNet);
    project.LoadFromCustom(custom.Name, custom.Value);
  } catch (const VendrelError& error) {
    throw ToolError(exFailed, "--custom: " + error.Text());
  }
  if (project.ProjectName.empty()) project.ProjectName = custom.Name;
  project.Components.DoNotPopulate = true;
}

}  // namespace

bool IsCustomInput(const std::string& path) { return path.starts_with(kCustom); }

void TakeCustomInput(std::vector<std::string>& arguments) {
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (arguments[i].starts_with("--custom=")) {
      arguments[i].replace(0, 9, kCustom);
    } else if (arguments[i] == "--custom" && i + 1 < arguments.size()) {
      arguments[i + 1].insert(0, kCustom);
      arguments.erase(arguments.begin() + static_cast<std::ptrdiff_t>(i));
    }
  }
}

void FillFromCompiled(VBProject& project, const std::string& path, const CommonOptions& options) {
  if (IsCustomInput(path))
    return FillFromCustom(project, std::string_view(path).substr(kCustom.size()), options);
  const FileSystemObject file(path);
  if (!IsAssembly(file, options)) {
    if (project.LoadFromTypeLib(path)) return;
    Refuse(path, IsNative(file.NativePath())
                     ? "native code, with neither .NET metadata nor a type library"
                     : ReasonIn(project.LastErrorString, path));
  }
  try {
    project.FileName.SetFullPath(path);
    project.ProjectSourceType = ptsTypeLibrary;
    project.WasReadFromTypeLibrary = true;
    project.LoadFromAssembly(path);
  } catch (const VendrelError& error) {
    Refuse(path, ReasonOf(error, path));
  }
}

}  // namespace vendrel::cli
