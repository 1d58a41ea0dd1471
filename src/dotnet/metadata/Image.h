#pragma once
// One file of an assembly in memory: its tables and heaps, and the indexes over them, each made
// when it is first asked for. Rows are numbers from 1; what a row says is read where it stands.

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "dotnet/metadata/MetadataRoot.h"
#include "dotnet/metadata/Tables.h"
#include "services/ByteStream.h"

namespace vendrel::metadata {

/// Flags of types.
enum TypeFlags : std::uint32_t {
  tfVisibility = 7,
  tfInterface = 0x20,
  tfAbstract = 0x80,
  tfSealed = 0x100,
};
/// Values of `flags & tfVisibility`.
enum TypeVisibility : std::uint32_t {
  tvNotPublic = 0,
  tvPublic = 1,
  tvNestedPublic = 2,
  tvNestedPrivate = 3,
  tvNestedFamily = 4,
  tvNestedAssembly = 5,
  tvNestedFamilyAndAssembly = 6,
  tvNestedFamilyOrAssembly = 7,
};

/// Attributes whose content counts.
enum class KnownAttribute : std::uint8_t {
  None,
  Obsolete,
  DefaultMember,
  ParamArray,
  Extension,
  StandardModule,
  DecimalConstant,
  DateTimeConstant,
};

/// The methods that make a property or an event.
struct Accessors {
  std::uint32_t Get = 0, Set = 0, Add = 0, Remove = 0, Raise = 0, Other = 0;
};

/// Name and version by which files refer to each other.
struct AssemblyIdentity {
  std::string Name;
  std::uint16_t Version[4] = {0, 0, 0, 0};
  std::string VersionText() const;
};

/// Reads from bytes alone; trusts no count and no offset. What cannot be read raises DataError at
/// the one thing asked for.
class Image {
 public:
  /// `bytes`: a whole file. Raises VendrelError 321 with the reason where it holds no metadata or
  /// their frame cannot be followed.
  static std::shared_ptr<const Image> Open(std::vector<std::uint8_t> bytes, std::string path);

  const std::string& Path() const { return mPath; }
  std::size_t Size() const { return mBytes.size(); }
  std::string_view RuntimeVersion() const { return mStreams.Version; }
  const metadata::Tables& Tables() const { return mTables; }
  /// The assembly of the file; the name of the module for a part of one.
  AssemblyIdentity Identity() const;
  AssemblyIdentity Reference(std::uint32_t assemblyRef) const;

  /// A text of the heap, as it stands; empty outside.
  std::string_view Text(std::uint32_t index) const;
  /// The text in a cell.
  std::string_view Text(Table table, unsigned column, std::uint32_t row) const {
    return Text(mTables.Cell(table, column, row));
  }
  /// A blob; index 0 is empty.
  ByteStream Blob(std::uint32_t index) const;
  ByteStream Blob(Table table, unsigned column, std::uint32_t row) const {
    return Blob(mTables.Cell(table, column, row));
  }

  // Indexes over the tables.
  /// The type around a nested one; 0 if none, also where types lie in each other in a ring.
  std::uint32_t Encloser(std::uint32_t type) const;
  const std::vector<std::uint32_t>& NestedIn(std::uint32_t type) const;
  /// Number of generic parameters, those of the types around it included.
  std::uint32_t Arity(std::uint32_t type) const;
  /// What the method is part of; none if it stands for itself.
  Token PartOf(std::uint32_t method) const;
  Accessors AccessorsOf(Token propertyOrEvent) const;
  RowRange Properties(std::uint32_t type) const;
  RowRange Events(std::uint32_t type) const;
  /// The declaration that a method implements under another name; none for most.
  Token Implemented(std::uint32_t method) const;
  std::span<const Token> Interfaces(std::uint32_t type) const;
  /// Row of the constant of a field, parameter or property; 0 if none.
  std::uint32_t ConstantOf(Token owner) const;
  /// Row of the first attribute of that kind; 0 if none.
  std::uint32_t AttributeOf(Token owner, KnownAttribute kind) const;
  /// The type of that name outside all others: 0 if none.
  std::uint32_t FindType(std::string_view space, std::string_view name) const;
  /// The row of that name in the table of exported types; 0 if none.
  std::uint32_t FindExported(std::string_view space, std::string_view name) const;

  /// What was left out while opening.
  const std::vector<std::string>& Messages() const { return mMessages; }

 private:
  struct Indexes;
  Image();
  void ReadMetadata(std::uint64_t offset, std::uint32_t size);
  KnownAttribute KindOf(std::uint32_t attribute) const;
  KnownAttribute KindOfConstructor(Token constructor) const;
  std::uint32_t MethodOwner(std::uint32_t method) const;

  std::vector<std::uint8_t> mBytes;
  std::string mPath;
  Streams mStreams;
  metadata::Tables mTables;
  std::vector<std::string> mMessages;
  std::shared_ptr<Indexes> mIndexes;
};

/// Opens a file of this machine. Raises 53, 75 or 321.
std::shared_ptr<const Image> OpenImage(const std::string& nativePath);

}  // namespace vendrel::metadata
