// Type descriptions of the older format: words, outermost first.

#include "typelib/reader/SltgGroup.h"
#include "typelib/reader/TypeLibLimits.h"

namespace vendrel::typelib {
namespace {

constexpr std::uint16_t kTypeBits = 0x3F;
// Set together they put a pointer around the type of the word.
constexpr std::uint16_t kPointerBits = 0x0E00;

}  // namespace

TypeCode SltgReader::ReadTypeAt(Group& group, std::uint16_t offset) {
  ByteStream words = group.Records.At(offset);
  const std::uint16_t first = words.U16();
  return ReadTypeWords(group, words, first);
}

TypeCode SltgReader::ReadTypeWords(Group& group, ByteStream& words, std::uint16_t first) {
  std::vector<TypeNode> chain;
  TypeCode code = PlainType(vtEmpty);
  std::uint16_t word = first;
  while (true) {
    if (chain.size() > kMaxTypeDepth) throw DataError("a type without an end");
    if ((word & kPointerBits) == kPointerBits) chain.push_back({vtPointer, 0, 0, -1});
    TypeNode node;
    node.VarType = word & kTypeBits;
    if (node.VarType == vtUserDefined) {
      node.Link = GroupReference(group, words.U16()).Code;
      code = AddNode(node);
      break;
    }
    if (node.VarType == vtFixedArray) {
      ReadBounds(group, words.U16(), node);
    } else if (node.VarType == vtSafeArray) {
      words.Skip(2);
    } else if (node.VarType != vtPointer) {
      code = PlainType(node.VarType);
      break;
    }
    chain.push_back(node);
    word = words.U16();
  }
  while (!chain.empty()) {
    chain.back().Link = code;
    code = AddNode(chain.back());
    chain.pop_back();
  }
  return code;
}

// Equal steps are kept once.
TypeCode SltgReader::AddNode(TypeNode node) {
  const auto add = [&] {
    mLibrary.TypeNodes.push_back(node);
    return static_cast<TypeCode>(mLibrary.TypeNodes.size() - 1);
  };
  if (mLibrary.TypeNodes.size() > mLibrary.Image.size()) throw DataError("too many types");
  if (node.VarType == vtFixedArray) return add();
  const std::uint64_t key =
      std::uint64_t{node.VarType} << 32 | static_cast<std::uint32_t>(node.Link);
  const auto [known, isNew] = mNodes.try_emplace(key, 0);
  if (isNew) known->second = add();
  return known->second;
}

// {dimensions, fourteen bytes, then count and lower bound of each}.
void SltgReader::ReadBounds(Group& group, std::uint16_t offset, TypeNode& node) {
  ByteStream array = group.Records.At(offset);
  const std::uint16_t dimensions = array.U16();
  array.Skip(14);
  if (dimensions > kMaxDimensions) throw DataError("an array of too many dimensions");
  if (mLibrary.ArrayBounds.size() > mLibrary.Image.size()) throw DataError("too many arrays");
  node.FirstBound = static_cast<std::uint32_t>(mLibrary.ArrayBounds.size());
  for (unsigned i = 0; i < dimensions; ++i) {
    const std::uint32_t count = array.U32();
    mLibrary.ArrayBounds.push_back({count, array.I32()});
  }
  node.Dimensions = dimensions;
}

TypeReference SltgReader::GroupReference(const Group& group, std::uint16_t stored) const {
  const std::size_t index = stored / 4;
  if (index >= group.References.size()) throw DataError("a reference that does not exist");
  return group.References[index];
}

}  // namespace vendrel::typelib
