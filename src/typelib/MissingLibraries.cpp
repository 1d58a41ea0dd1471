#include "typelib/MissingLibraries.h"

#include "core/Workspace.h"
#include "diagnostics/Diagnostic.h"
#include "typelib/reader/LibraryFinder.h"

namespace vendrel {
namespace {

using namespace typelib;

struct OpenCount {
  MissingLibraries* Innermost = nullptr;
};

}  // namespace

std::string MissingLibraryOf(const TypeLibInfo& importer, TypeReference reference) {
  if (!reference.IsExternal() || reference.Index() >= importer.ImportedTypes.size()) return {};
  const ImportedType& type = importer.ImportedTypes[reference.Index()];
  if (type.Library >= importer.Imports.size() || importer.TryResolve(reference)) return {};
  const LibraryImport& import = importer.Imports[type.Library];
  const bool isOwn = import.LibraryId == importer.Id && !importer.Id.IsNull();
  if (isOwn || (importer.Finder && importer.Finder->Find(import, importer))) return {};
  const std::string name = import.LeafName.empty() ? "without a file name" : import.LeafName;
  return name + " (" + import.LibraryId.Text() + " " + std::to_string(import.MajorVersion) + "." +
         std::to_string(import.MinorVersion) + ")";
}

MissingLibraries::MissingLibraries()
    : mInnermost(InUse<OpenCount>().Innermost), mOuter(mInnermost) {
  mInnermost = this;
}
MissingLibraries::~MissingLibraries() { mInnermost = mOuter; }

bool MissingLibraries::Count(const std::string& library) {
  MissingLibraries* counting = InUse<OpenCount>().Innermost;
  if (!counting || library.empty()) return false;
  auto& missed = counting->mMissed;
  const auto [entry, isNew] = counting->mPlaces.try_emplace(library, missed.size());
  if (isNew) missed.emplace_back(library, 0);
  ++missed[entry->second].second;
  return true;
}

void MissingLibraries::Report() const {
  for (const auto& [library, count] : mMissed)
    vendrel::Report(DiagnosticCode::MissingLibrary,
                    {library, std::to_string(count) + (count == 1 ? " place" : " places")});
}

}  // namespace vendrel
