#pragma once
// The tables of the metadata. Widths are computed once; a cell is read where it stands.

#include <array>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace vendrel::metadata {

/// Numbers of the tables that this reader asks.
enum Table : std::uint8_t {
  tModule = 0x00,
  tTypeRef = 0x01,
  tTypeDef = 0x02,
  tFieldPtr = 0x03,
  tField = 0x04,
  tMethodPtr = 0x05,
  tMethod = 0x06,
  tParamPtr = 0x07,
  tParam = 0x08,
  tInterfaceImpl = 0x09,
  tMemberRef = 0x0A,
  tConstant = 0x0B,
  tCustomAttribute = 0x0C,
  tEventMap = 0x12,
  tEventPtr = 0x13,
  tEvent = 0x14,
  tPropertyMap = 0x15,
  tPropertyPtr = 0x16,
  tProperty = 0x17,
  tMethodSemantics = 0x18,
  tMethodImpl = 0x19,
  tModuleRef = 0x1A,
  tTypeSpec = 0x1B,
  tAssembly = 0x20,
  tAssemblyRef = 0x23,
  tFile = 0x26,
  tExportedType = 0x27,
  tNestedClass = 0x29,
  tGenericParam = 0x2A,
  tMethodSpec = 0x2B,
};
inline constexpr std::size_t kTables = 0x2D;

/// Kinds of coded indexes: a row and, in the low bits, which of several tables it is of.
enum CodedKind : std::uint8_t {
  cTypeDefOrRef,
  cHasConstant,
  cHasCustomAttribute,
  cHasFieldMarshal,
  cHasDeclSecurity,
  cMemberRefParent,
  cHasSemantics,
  cMethodDefOrRef,
  cMemberForwarded,
  cImplementation,
  cCustomAttributeType,
  cResolutionScope,
  cTypeOrMethodDef,
};

/// A row of some table; row 0: none.
struct Token {
  Table Of = tModule;
  std::uint32_t Row = 0;
  explicit operator bool() const { return Row != 0; }
  bool operator==(const Token&) const = default;
};

/// Rows [First, Last) of a table.
struct RowRange {
  std::uint32_t First = 1;
  std::uint32_t Last = 1;
  std::uint32_t Count() const { return Last - First; }
};

/// The table stream of one file.
class Tables {
 public:
  Tables() = default;
  /// Raises DataError where the header is cut off; tables that run past the end lose rows, which
  /// `messages` tells. `wide`: every index has four bytes.
  Tables(std::span<const std::uint8_t> stream, bool wide, std::vector<std::string>& messages);

  std::uint32_t Rows(Table table) const { return mTables[table].Rows; }
  /// The number in a cell; 0 for a row that does not exist.
  std::uint32_t Cell(Table table, unsigned column, std::uint32_t row) const {
    const Layout& layout = mTables[table];
    if (row - 1 >= layout.Rows) return 0;
    const std::uint8_t* at =
        layout.Start + std::size_t{layout.RowSize} * (row - 1) + layout.Offset[column];
    const std::uint32_t low = static_cast<std::uint32_t>(at[0] | at[1] << 8);
    if (layout.Width[column] == 2) return low;
    return low | static_cast<std::uint32_t>(at[2]) << 16 | static_cast<std::uint32_t>(at[3]) << 24;
  }
  /// A cell that holds a coded index; none where its tag means nothing or its row does not exist.
  Token Coded(Table table, unsigned column, std::uint32_t row, CodedKind kind) const {
    return Decode(kind, Cell(table, column, row));
  }
  Token Decode(CodedKind kind, std::uint32_t value) const;
  /// The rows of `target` that belong to a row of `owner`: from its list column to that of the next
  /// row. Numbers that are out of order or out of range count as those before them, so that no row
  /// belongs to two.
  RowRange Run(Table owner, unsigned column, std::uint32_t row, Table target) const;
  /// The row that a place of a run stands for, where a table of pointers stands between.
  std::uint32_t Through(Table pointers, std::uint32_t place) const {
    return mTables[pointers].Rows == 0 ? place : Cell(pointers, 0, place);
  }

 private:
  struct Layout {
    const std::uint8_t* Start = nullptr;
    std::uint32_t Rows = 0;
    std::uint16_t RowSize = 0;
    std::array<std::uint8_t, 9> Offset{}, Width{};
  };
  void LayOut(Table table);
  std::uint8_t WidthOf(std::uint8_t column) const;
  const std::vector<std::uint32_t>& StartsOf(Table owner, unsigned column, Table target) const;

  std::array<Layout, kTables> mTables{};
  std::array<std::uint32_t, kTables> mDeclaredRows{};
  /// Where the lists begin, by the owner and the column; made at the first question.
  mutable std::map<std::pair<Table, unsigned>, std::vector<std::uint32_t>> mStarts;
  bool mWideStrings = false, mWideGuids = false, mWideBlobs = false, mAllWide = false;
};

}  // namespace vendrel::metadata
