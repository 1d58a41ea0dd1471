#include "dotnet/metadata/Tables.h"

#include <algorithm>
#include <initializer_list>

#include "services/ByteStream.h"

namespace vendrel::metadata {
namespace {

// What a column holds: a number, an index into a heap, into a table (kTable + number) or a coded
// one (kCoded + kind).
enum : std::uint8_t { kEnd = 0, kU2, kU4, kText, kGuid, kBlob };
constexpr std::uint8_t kTable = 0x20, kCoded = 0x80;

constexpr std::uint8_t To(Table table) { return static_cast<std::uint8_t>(kTable + table); }
constexpr std::uint8_t Of(CodedKind kind) { return static_cast<std::uint8_t>(kCoded + kind); }

using Columns = std::array<std::uint8_t, 10>;

// The columns of each table. Numbers of one byte are always followed by another, and read as one.
constexpr std::array<Columns, kTables> kColumns = {{
    {kU2, kText, kGuid, kGuid, kGuid},                                // 00 Module
    {Of(cResolutionScope), kText, kText},                             // 01 TypeRef
    {kU4, kText, kText, Of(cTypeDefOrRef), To(tField), To(tMethod)},  // 02 TypeDef
    {To(tField)},                                                     // 03
    {kU2, kText, kBlob},                                              // 04 Field
    {To(tMethod)},                                                    // 05
    {kU4, kU2, kU2, kText, kBlob, To(tParam)},                        // 06 Method
    {To(tParam)},                                                     // 07
    {kU2, kU2, kText},                                                // 08 Param
    {To(tTypeDef), Of(cTypeDefOrRef)},                                // 09
    {Of(cMemberRefParent), kText, kBlob},                             // 0A MemberRef
    {kU2, Of(cHasConstant), kBlob},                                   // 0B Constant
    {Of(cHasCustomAttribute), Of(cCustomAttributeType), kBlob},       // 0C
    {Of(cHasFieldMarshal), kBlob},                                    // 0D
    {kU2, Of(cHasDeclSecurity), kBlob},                               // 0E
    {kU2, kU4, To(tTypeDef)},                                         // 0F
    {kU4, To(tField)},                                                // 10
    {kBlob},                                                          // 11
    {To(tTypeDef), To(tEvent)},                                       // 12 EventMap
    {To(tEvent)},                                                     // 13
    {kU2, kText, Of(cTypeDefOrRef)},                                  // 14 Event
    {To(tTypeDef), To(tProperty)},                                    // 15
    {To(tProperty)},                                                  // 16
    {kU2, kText, kBlob},                                              // 17 Property
    {kU2, To(tMethod), Of(cHasSemantics)},                            // 18
    {To(tTypeDef), Of(cMethodDefOrRef), Of(cMethodDefOrRef)},         // 19
    {kText},                                                          // 1A ModuleRef
    {kBlob},                                                          // 1B TypeSpec
    {kU2, Of(cMemberForwarded), kText, To(tModuleRef)},               // 1C
    {kU4, To(tField)},                                                // 1D
    {kU4, kU4},                                                       // 1E
    {kU4},                                                            // 1F
    {kU4, kU2, kU2, kU2, kU2, kU4, kBlob, kText, kText},              // 20 Assembly
    {kU4},                                                            // 21
    {kU4, kU4, kU4},                                                  // 22
    {kU2, kU2, kU2, kU2, kU4, kBlob, kText, kText, kBlob},            // 23
    {kU4, To(tAssemblyRef)},                                          // 24
    {kU4, kU4, kU4, To(tAssemblyRef)},                                // 25
    {kU4, kText, kBlob},                                              // 26 File
    {kU4, kU4, kText, kText, Of(cImplementation)},                    // 27
    {kU4, kU4, kText, Of(cImplementation)},                           // 28
    {To(tTypeDef), To(tTypeDef)},                                     // 29
    {kU2, kU2, Of(cTypeOrMethodDef), kText},                          // 2A
    {Of(cMethodDefOrRef), kBlob},                                     // 2B
    {To(tGenericParam), Of(cTypeDefOrRef)},                           // 2C
}};

constexpr std::uint8_t kNone = 0xFF;
constexpr std::uint8_t tDeclSecurity = 0x0E, tStandAloneSig = 0x11, tManifestResource = 0x28,
                       tGenericParamConstraint = 0x2C;

struct CodedLayout {
  std::uint8_t Bits;
  std::array<std::uint8_t, 22> Tags;
  std::uint8_t Count;
};

constexpr CodedLayout Layout(std::uint8_t bits, std::initializer_list<std::uint8_t> tags) {
  CodedLayout layout{bits, {}, 0};
  for (const std::uint8_t tag : tags) layout.Tags[layout.Count++] = tag;
  return layout;
}

// In the order of `CodedKind`; tables in the order of their tags.
constexpr std::array kCodedLayouts = {
    Layout(2, {tTypeDef, tTypeRef, tTypeSpec}),
    Layout(2, {tField, tParam, tProperty}),
    Layout(5, {tMethod,           tField,        tTypeRef,
               tTypeDef,          tParam,        tInterfaceImpl,
               tMemberRef,        tModule,       tDeclSecurity,
               tProperty,         tEvent,        tStandAloneSig,
               tModuleRef,        tTypeSpec,     tAssembly,
               tAssemblyRef,      tFile,         tExportedType,
               tManifestResource, tGenericParam, tGenericParamConstraint,
               tMethodSpec}),
    Layout(1, {tField, tParam}),
    Layout(2, {tTypeDef, tMethod, tAssembly}),
    Layout(3, {tTypeDef, tTypeRef, tModuleRef, tMethod, tTypeSpec}),
    Layout(1, {tEvent, tProperty}),
    Layout(1, {tMethod, tMemberRef}),
    Layout(1, {tField, tMethod}),
    Layout(2, {tFile, tAssemblyRef, tExportedType}),
    Layout(3, {kNone, kNone, tMethod, tMemberRef, kNone}),
    Layout(2, {tModule, tModuleRef, tAssemblyRef, tTypeRef}),
    Layout(1, {tTypeDef, tMethod}),
};

}  // namespace

Tables::Tables(std::span<const std::uint8_t> stream, bool wide, std::vector<std::string>& messages)
    : mAllWide(wide) {
  ByteStream header(stream, "the table stream");
  const std::uint8_t heaps = header.Seek(6).U8();
  mWideStrings = (heaps & 1) != 0;
  mWideGuids = (heaps & 2) != 0;
  mWideBlobs = (heaps & 4) != 0;
  header.Skip(1);
  const std::uint64_t valid = header.U64();
  header.Skip(8);
  // Tables beyond those known have counts too, and rows behind all others.
  for (unsigned table = 0; table < 64; ++table) {
    if ((valid >> table & 1) == 0) continue;
    const std::uint32_t rows = header.U32();
    if (table < kTables) mDeclaredRows[table] = rows;
  }
  if ((heaps & 0x40) != 0) header.Skip(4);
  std::size_t at = header.Position();
  for (unsigned i = 0; i < kTables; ++i) {
    const auto table = static_cast<Table>(i);
    LayOut(table);
    Tables::Layout& layout = mTables[table];
    const std::size_t fitting = (stream.size() - at) / layout.RowSize;
    layout.Rows = static_cast<std::uint32_t>(std::min<std::size_t>(mDeclaredRows[i], fitting));
    layout.Start = stream.data() + at;
    if (layout.Rows < mDeclaredRows[i])
      messages.push_back("table " + std::to_string(i) +
                         " is cut off: " + std::to_string(layout.Rows) + " of " +
                         std::to_string(mDeclaredRows[i]) + " rows");
    at += std::size_t{layout.Rows} * layout.RowSize;
    if (layout.Rows < mDeclaredRows[i]) at = stream.size();
  }
}

void Tables::LayOut(Table table) {
  Tables::Layout& layout = mTables[table];
  for (std::size_t i = 0; kColumns[table][i] != kEnd; ++i) {
    layout.Offset[i] = static_cast<std::uint8_t>(layout.RowSize);
    layout.Width[i] = WidthOf(kColumns[table][i]);
    layout.RowSize = static_cast<std::uint16_t>(layout.RowSize + layout.Width[i]);
  }
}

std::uint8_t Tables::WidthOf(std::uint8_t column) const {
  const auto narrow = [&](bool isNarrow) -> std::uint8_t { return isNarrow && !mAllWide ? 2 : 4; };
  switch (column) {
    case kU2: return 2;
    case kU4: return 4;
    case kText: return narrow(!mWideStrings);
    case kGuid: return narrow(!mWideGuids);
    case kBlob: return narrow(!mWideBlobs);
    default: break;
  }
  if (column < kCoded) return narrow(mDeclaredRows[column - kTable] < 0x10000);
  const CodedLayout& coded = kCodedLayouts[column - kCoded];
  std::uint32_t most = 0;
  for (std::size_t i = 0; i < coded.Count; ++i)
    if (coded.Tags[i] != kNone) most = std::max(most, mDeclaredRows[coded.Tags[i]]);
  return narrow(most < std::uint32_t{1} << (16 - coded.Bits));
}

Token Tables::Decode(CodedKind kind, std::uint32_t value) const {
  const CodedLayout& coded = kCodedLayouts[kind];
  const std::uint32_t tag = value & ((std::uint32_t{1} << coded.Bits) - 1);
  const std::uint32_t row = value >> coded.Bits;
  if (tag >= coded.Count || coded.Tags[tag] == kNone) return {};
  const auto table = static_cast<Table>(coded.Tags[tag]);
  return row > mTables[table].Rows ? Token{} : Token{table, row};
}

namespace {

// The longest rising part of the numbers stays; each other one becomes the one before it. Where a
// file is as it should be that is all of them.
void MakeRising(std::vector<std::uint32_t>& numbers) {
  if (std::is_sorted(numbers.begin(), numbers.end())) return;
  std::vector<std::size_t> ends;  // by length: where the lowest end of such a part stands
  std::vector<std::size_t> before(numbers.size(), SIZE_MAX);
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    const auto place = std::upper_bound(
        ends.begin(), ends.end(), numbers[i],
        [&](std::uint32_t number, std::size_t end) { return number < numbers[end]; });
    if (place != ends.begin()) before[i] = *std::prev(place);
    if (place == ends.end())
      ends.push_back(i);
    else
      *place = i;
  }
  std::vector<bool> stays(numbers.size(), false);
  for (std::size_t i = ends.back(); i != SIZE_MAX; i = before[i]) stays[i] = true;
  std::uint32_t last = 1;
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    if (!stays[i]) numbers[i] = last;
    last = numbers[i];
  }
}

Table PointersTo(Table target) {
  switch (target) {
    case tField: return tFieldPtr;
    case tMethod: return tMethodPtr;
    case tParam: return tParamPtr;
    case tEvent: return tEventPtr;
    default: return tPropertyPtr;
  }
}

}  // namespace

const std::vector<std::uint32_t>& Tables::StartsOf(Table owner, unsigned column,
                                                   Table target) const {
  std::vector<std::uint32_t>& starts = mStarts[{owner, column}];
  if (!starts.empty()) return starts;
  // Where a table of pointers stands between, the lists count its rows.
  const Table counted = Rows(PointersTo(target)) > 0 ? PointersTo(target) : target;
  const std::uint32_t end = Rows(counted) + 1;
  starts.reserve(Rows(owner) + std::size_t{1});
  for (std::uint32_t row = 1; row <= Rows(owner); ++row)
    starts.push_back(std::clamp<std::uint32_t>(Cell(owner, column, row), 1, end));
  MakeRising(starts);
  starts.push_back(end);
  return starts;
}

RowRange Tables::Run(Table owner, unsigned column, std::uint32_t row, Table target) const {
  if (row - 1 >= Rows(owner)) return {};
  const std::vector<std::uint32_t>& starts = StartsOf(owner, column, target);
  return {starts[row - 1], starts[row]};
}

}  // namespace vendrel::metadata
