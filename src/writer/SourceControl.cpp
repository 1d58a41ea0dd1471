#include "writer/SourceControl.h"

#include "core/Ascii.h"
#include "core/ObjectRegistry.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "project/VBProject.h"
#include "services/IniFile.h"
#include "services/SettingsReader.h"
#include "text/Like.h"
#include "text/Words.h"

namespace vendrel {
namespace {

constexpr std::string_view kLinkFile = "mssccprj.scc";
constexpr std::string_view kDatabaseFile = "srcsafe.ini";
constexpr std::string_view kNotControlled = "this project is not under source code control";
constexpr std::string_view kSettingsKey = "Software\\Vendrelsoft";

// What the file beside the project says of it.
struct Link {
  std::string Project;
  std::string AuxPath;
};

Link ReadLink(const FileSystemObject& projectFile) {
  FileSystemObject file(projectFile.FolderPath() + std::string(kLinkFile));
  if (!file.Exists()) return {};
  file.OpenFile(omRead);
  const IniFile values(file.Source()->Text);
  const std::string section = projectFile.LeafName();
  Link link{values.Value(section, "SCC_Project_Name"), values.Value(section, "SCC_Aux_Path")};
  file.CloseFile();
  return link;
}

std::string DatabasePath(std::string_view auxPath) {
  if (const std::size_t comma = auxPath.find(','); comma != std::string_view::npos)
    auxPath.remove_prefix(comma + 1);
  std::string path(StripQuotes(Trim(auxPath)));
  if (LikeNoCase(path, "*\\srcsafe.ini")) return path;
  if (!path.ends_with('\\')) path.push_back('\\');
  return path.append(kDatabaseFile);
}

std::string Setting(std::string_view name) {
  return SettingsReader::Default().ReadValue(HKEY_CURRENT_USER, kSettingsKey, name);
}

// A file or folder below the folder of the database.
class FolderItem final : public VSSItem {
 public:
  FolderItem(std::string itemPath, FileSystemObject place)
      : mItemPath(std::move(itemPath)), mPlace(std::move(place)) {}

  std::string Name() const override { return mItemPath.substr(mItemPath.rfind('/') + 1); }
  std::string Path() const override { return mItemPath; }
  bool IsProject() const override { return mPlace.IsFolder(); }

  void Checkout(std::string_view, std::string_view) override {
    throw VendrelError(errPathAccess, mItemPath + ": this database only reads");
  }

 private:
  std::string mItemPath;
  FileSystemObject mPlace;
};

bool IsParentName(std::string_view name) { return name == ".." || name == "."; }

}  // namespace

void FolderDatabase::Open(std::string_view iniPath, std::string_view, std::string_view) try {
  const FileSystemObject file(iniPath);
  if (!file.Exists()) throw VendrelError(errFileNotFound, iniPath);
  mFolder = file.FolderPath();
}
VENDREL_CONTEXT(iniPath)

std::shared_ptr<VSSItem> FolderDatabase::Item(std::string_view projectPath) try {
  if (mFolder.empty()) throw VendrelError(errObjectNotSet, "no database is open");
  std::string_view rest = projectPath;
  if (TakeField(rest, '/') != "$") throw VendrelError(errInvalidArgument, projectPath);
  std::string itemPath = "$";
  std::string place = mFolder;
  while (!rest.empty()) {
    const std::string_view name = TakeField(rest, '/');
    if (name.empty()) continue;
    if (IsParentName(name) || name.find('\\') != std::string_view::npos)
      throw VendrelError(errInvalidArgument, projectPath);
    itemPath.append("/").append(name);
    place.append(place.ends_with('\\') ? "" : "\\").append(name);
  }
  FileSystemObject found(place);
  if (!found.Exists() && !found.IsFolder()) throw VendrelError(errFileNotFound, projectPath);
  return std::make_shared<FolderItem>(std::move(itemPath), std::move(found));
}
VENDREL_CONTEXT(projectPath, trace::Field("Folder", mFolder))

std::shared_ptr<VSSItem> VBProject::SourceSafeItem() try {
  const Workspace::Use use(Workspace());
  if (!FileName.Exists()) return nullptr;
  const Link link = ReadLink(FileName);
  if (link.Project.empty() || StartsWithNoCaseAscii(link.Project, kNotControlled)) return nullptr;
  std::string_view fields = link.Project;
  const std::string_view path = StripQuotes(Trim(TakeField(fields, ',')));
  const auto database = ObjectRegistry::Create<VSSDatabase>(VSSDatabase::kProgID);
  if (!database) throw VendrelError(errCannotCreate, VSSDatabase::kProgID);
  database->Open(DatabasePath(link.AuxPath), Setting("Sourcesafe_User"),
                 Setting("Sourcesafe_Password"));
  return database->Item(path);
}
VENDREL_CONTEXT(*this)

}  // namespace vendrel
