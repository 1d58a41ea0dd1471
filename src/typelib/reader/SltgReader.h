#pragma once
// The older format: blocks in a chain, one for each entry and one that describes the library. Each
// entry's block has a group of records linked by 16-bit offsets into that group.

#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "services/ByteStream.h"
#include "typelib/reader/HelpTree.h"
#include "typelib/reader/ImageTexts.h"
#include "typelib/reader/TypeLibReader.h"

namespace vendrel::typelib {

class SltgReader {
 public:
  /// Reads `library.Image` into `library`. Raises DataError when the frame is damaged.
  SltgReader(TypeLibInfo& library, const TypeLibOptions& options);
  ~SltgReader();
  void Read();

 private:
  struct Entry;
  struct Group;

  void ReadFrame();
  void ReadLibraryBlock();
  void ReadEntry(ByteStream& block, Entry& entry);
  void ReadNameTable(ByteStream block, std::size_t offset);
  void ReadTypes();
  void ReadType(Entry& entry, TypeInfo& type);
  void ReadReferences(ByteStream block, std::size_t offset, Group& group);
  TypeReference ParseReference(std::string_view text);
  std::uint32_t ImportOf(std::string_view description);
  void ReadGroup(Group& group, TypeInfo& type);
  void ReadImplemented(Group& group, TypeInfo& type, std::uint16_t first, std::size_t count);
  void ReadVariables(Group& group, TypeInfo& type, std::uint16_t first, std::size_t count);
  void ReadFunctions(Group& group, TypeInfo& type, std::uint16_t first, std::size_t count);
  std::uint16_t ReadVariable(Group& group, TypeInfo& type, std::uint16_t place);
  std::uint16_t ReadFunction(Group& group, TypeInfo& type, std::uint16_t place);
  void ReadMemberType(Group& group, MemberInfo& member, std::uint16_t word, bool isInPlace);
  void ReadHelp(Group& group, MemberInfo& member, std::uint16_t context, std::uint16_t text);
  void MarkOptional(const MemberInfo& member);
  void ReadParameters(Group& group, std::uint16_t place, std::size_t count);
  const TypeLibValue* ReadConstant(Group& group, const VarTypeInfo& type, std::uint16_t value,
                                   bool isInPlace);

  TypeCode ReadTypeAt(Group& group, std::uint16_t offset);
  TypeCode ReadTypeWords(Group& group, ByteStream& words, std::uint16_t first);
  TypeCode AddNode(TypeNode node);
  void ReadBounds(Group& group, std::uint16_t offset, TypeNode& node);
  TypeReference GroupReference(const Group& group, std::uint16_t stored) const;
  std::uint32_t HelpContext(Group& group, std::uint16_t word);
  std::string_view HelpString(Group& group, std::uint16_t offset);
  std::string_view MemberName(Group& group, std::uint16_t offset);
  std::string_view Name(std::uint32_t offset);
  std::string_view PrefixedText(ByteStream& stream);
  template <typename Step>
  void Guarded(std::string_view what, Step step);

  TypeLibInfo& mLibrary;
  const TypeLibOptions& mOptions;
  ByteStream mImage;
  std::unique_ptr<ImageTexts> mTexts;
  /// Blocks of entries by their index string; each is used once.
  std::map<std::string, ByteStream, std::less<>> mBlocks;
  ByteStream mLibraryBlock;
  ByteStream mNames;
  HelpTree mHelp;
  std::vector<Entry> mEntries;
  std::unordered_map<std::uint64_t, TypeCode> mNodes;
  std::unordered_map<std::string, std::uint32_t> mImports;
};

}  // namespace vendrel::typelib
