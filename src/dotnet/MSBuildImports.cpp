#include "dotnet/MSBuildImports.h"

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "diagnostics/Diagnostic.h"
#include "dotnet/NetXml.h"

namespace vendrel {

bool MSBuildImports::Holds(const XmlElement& e) const {
  const auto condition = AttributeOf(e, "Condition");
  return !condition || MSBuildCondition(*condition, mProperties, [&](const std::string& path) {
    FileSystemObject file;
    file.SetBaseFile(const_cast<FileSystemObject*>(&mProject));
    file.SetFullPath(path);
    return file.Exists() || file.IsFolder();
  });
}

void MSBuildImports::Enter(const FileSystemObject& file) {
  mProperties.Set("MSBuildThisFile", file.LeafName());
  mProperties.Set("MSBuildThisFileName", file.BaseName());
  mProperties.Set("MSBuildThisFileFullPath", file.FullPath());
  mProperties.Set("MSBuildThisFileDirectory", file.FolderPath());
}

void MSBuildImports::Take(const XmlElement& root, bool isSdk) {
  mTaken.insert(FoldKey(mProject.FullPath()));
  if (isSdk) ImportAbove("Directory.Build.props");
  TakeRoot(root, mProject);
  if (isSdk) ImportAbove("Directory.Build.targets");
}

// Of the folder of the project, else of the nearest one above that has it.
void MSBuildImports::ImportAbove(std::string_view leaf) {
  std::string folder = mProject.FolderPath();
  while (folder.size() > 1) {
    const FileSystemObject file(folder + std::string(leaf));
    if (file.Exists()) return Import(file);
    folder.pop_back();
    const std::size_t end = folder.rfind('\\');
    if (end == std::string::npos) return;
    folder.resize(end + 1);
  }
}

void MSBuildImports::TakeRoot(const XmlElement& root, const FileSystemObject& file) {
  Enter(file);
  for (const XmlElement part : root.Elements()) TakePart(part, file);
}

void MSBuildImports::TakePart(const XmlElement& part, const FileSystemObject& file) {
  if (!Holds(part)) return;
  if (IsNamed(part, "PropertyGroup")) return TakeProperties(part);
  if (IsNamed(part, "Import")) return Import(part, file);
  if (IsNamed(part, "ItemGroup")) mGroups.push_back({part, file});
  if (IsNamed(part, "ImportGroup"))
    for (const XmlElement import : part.Elements())
      if (Holds(import)) Import(import, file);
  if (!IsNamed(part, "Choose")) return;
  for (const XmlElement branch : part.Elements()) {
    if (!Holds(branch)) continue;
    for (const XmlElement inner : branch.Elements()) TakePart(inner, file);
    return;
  }
}

void MSBuildImports::TakeProperties(const XmlElement& group) {
  for (const XmlElement property : group.Elements())
    if (Holds(property))
      mProperties.Set(property.Name(), mProperties.Expand(Trim(property.Text())));
}

void MSBuildImports::Import(const XmlElement& e, const FileSystemObject& from) {
  const std::string written = AttributeOf(e, "Project").value_or("");
  if (written.empty() || AttributeOf(e, "Sdk")) return;
  const std::string path = mProperties.Expand(written);
  FileSystemObject file;
  file.SetBaseFile(const_cast<FileSystemObject*>(&from));
  file.SetFullPath(path);
  if (path.empty() || !file.Exists() || file.IsFolder()) {
    // A path out of properties mostly leads into the tool chain.
    if (written.find("$(") == std::string::npos)
      Report(DiagnosticCode::MissingReference, {file.FullPath()});
    return;
  }
  Import(FileSystemObject(file.FullPath()));
  Enter(from);
}

void MSBuildImports::Import(const FileSystemObject& file) {
  if (mDepth >= kDeepestImport || mTaken.size() > kMostImports ||
      !mTaken.insert(FoldKey(file.FullPath())).second)
    return;
  const auto document = std::make_shared<XmlDocument>();
  try {
    FileSystemObject open(file.FullPath());
    open.OpenFile(omRead);
    document->LoadXml(open.ReadAll());
  } catch (const VendrelError& error) {
    return Report(DiagnosticCode::UnreadableFile, {file.FullPath(), error.Text()});
  }
  mDocuments.push_back(document);
  ++mDepth;
  TakeRoot(document->Root(), file);
  --mDepth;
}

}  // namespace vendrel
