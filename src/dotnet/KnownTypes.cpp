#include "dotnet/KnownTypes.h"

#include <algorithm>

#include "core/CaseFold.h"
#include "diagnostics/VendrelError.h"
#include "dotnet/metadata/Members.h"
#include "dotnet/metadata/MetadataLimits.h"

namespace vendrel {

using namespace metadata;

namespace {

constexpr unsigned kExportedSpace = 3, kExportedName = 2, kExportedBy = 4;

std::string_view LastWordOf(std::string_view name) { return name.substr(name.rfind('.') + 1); }

// Of a type that another file has; one nested in such a type is named behind it.
std::string ExportedNameOf(const Image& image, std::uint32_t row, int depth = 0) {
  const std::string name(image.Text(tExportedType, kExportedName, row));
  const Token by = image.Tables().Coded(tExportedType, kExportedBy, row, cImplementation);
  if (by && by.Of == tExportedType)
    return depth > kMaxNesting ? name : ExportedNameOf(image, by.Row, depth + 1) + "." + name;
  const std::string_view space = image.Text(tExportedType, kExportedSpace, row);
  return space.empty() ? name : std::string(space) + "." + name;
}

}  // namespace

KnownTypes::Front KnownTypes::FrontOf(std::string_view space) {
  Front front;
  front.Exact = std::string(space) + ".";
  front.Folded = FoldKey(front.Exact);
  return front;
}

void KnownTypes::Keep(Known known) {
  known.Next = 0;
  const Known& kept = mKnown.emplace_back(std::move(known));
  const auto place = static_cast<std::uint32_t>(mKnown.size());
  Chain& chain = mWords[LastWordOf(kept.Folded)];
  if (chain.Last == 0)
    chain.First = place;
  else
    mKnown[chain.Last - 1].Next = place;
  chain.Last = place;
}

bool KnownTypes::Add(const AssemblyFile& file) {
  if (std::find(mFiles.begin(), mFiles.end(), &file) != mFiles.end()) return false;
  mFiles.push_back(&file);
  const Image& image = *file.Image;
  for (std::uint32_t row = 2; row <= image.Tables().Rows(tTypeDef); ++row) try {
      if (!IsHiddenType(image, row) && IsVisibleType(image, row))
        Keep({FoldKey(TypeHandle{&file, row}.Name()), &file, row, {}, 0});
    } catch (const DataError&) {
      // A type whose name cannot be read is not asked for.
    }
  for (std::uint32_t row = 1; row <= image.Tables().Rows(tExportedType); ++row) try {
      std::string name = ExportedNameOf(image, row);
      std::string folded = FoldKey(name);
      Keep({std::move(folded), &file, 0, std::move(name), 0});
    } catch (const DataError&) {
      // Nor is this one.
    }
  return true;
}

bool KnownTypes::HasWord(std::string_view word) const { return mWords.count(FoldKey(word)) != 0; }

TypeHandle KnownTypes::TypeOf(const Known& known, std::string_view front, std::string_view name,
                              AssemblyStore& store) const {
  if (known.Row != 0) return {known.File, known.Row};
  if (known.Exact.compare(0, front.size(), front) != 0 ||
      known.Exact.compare(front.size(), std::string::npos, name) != 0)
    return {};
  const TypeHandle type = store.FindByFullName(*known.File, known.Exact);
  return type && IsVisibleType(*type.File->Image, type.Row) ? type : TypeHandle{};
}

TypeHandle KnownTypes::Find(std::string_view name, const std::vector<const Front*>& fronts,
                            AssemblyStore& store) const {
  const std::string folded = FoldKey(name);
  const auto chain = mWords.find(LastWordOf(folded));
  if (chain == mWords.end()) return {};
  for (const Front* front : fronts) {
    const std::size_t length = front->Folded.size() + folded.size();
    for (std::uint32_t at = chain->second.First; at != 0; at = mKnown[at - 1].Next) {
      const Known& known = mKnown[at - 1];
      if (known.Folded.size() != length || !known.Folded.starts_with(front->Folded) ||
          !known.Folded.ends_with(folded))
        continue;
      if (const TypeHandle type = TypeOf(known, front->Exact, name, store)) return type;
    }
  }
  return {};
}

}  // namespace vendrel
