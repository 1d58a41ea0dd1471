#pragma once
// The newer format: a header, a directory of segments (names, strings, type descriptions and so
// on), and a block of member records for each entry. References are byte offsets into segments,
// -1 for none.

#include <array>
#include <functional>
#include <unordered_map>

#include "services/ByteStream.h"
#include "typelib/reader/ImageTexts.h"
#include "typelib/reader/TypeLibReader.h"

namespace vendrel::typelib {

class MsftReader {
 public:
  /// Reads `library.Image` into `library`. Raises DataError when the header is damaged.
  MsftReader(TypeLibInfo& library, const TypeLibOptions& options);
  void Read();

 private:
  enum SegmentNumber : int {
    segTypeInfos,
    segImportedTypes,
    segImports,
    segReferences,
    segGuidHash,
    segGuids,
    segNameHash,
    segNames,
    segStrings,
    segTypeNodes,
    segArrays,
    segValues,
    segCustomData,
    segCount = 15,
  };
  struct MemberBlock;
  /// Size of the record of a type.
  static constexpr std::size_t kTypeInfoBytes = 100;

  void ReadHeader();
  void ReadDirectory();
  void ChooseCodePage();
  void ReadLibraryTexts();
  void ReadImports();
  void ReadImportedTypes();
  void ReadTypeNodes();
  void ReadBounds(std::int32_t offset, TypeNode& node);
  void ReadTypeInfos();
  void ReadTypeInfo(ByteStream record, TypeInfo& type, MemberBlock& block);
  void ReadBase(TypeInfo& type, std::int32_t dataType, int implemented);
  void ReadImplemented(TypeInfo& type, std::int32_t offset, int count);
  void ReadMembers(TypeInfo& type, const MemberBlock& block);
  void ReadFunction(ByteStream record, MemberInfo& member);
  void ReadFunctionExtras(ByteStream& record, std::size_t count, std::uint32_t bits,
                          MemberInfo& member, std::vector<std::int32_t>& parameterData);
  void ReadParameter(ByteStream& record, ParameterInfo& parameter);
  void ReadVariable(ByteStream record, MemberInfo& member);

  std::string_view Name(std::int32_t offset);
  std::string_view String(std::int32_t offset);
  Guid ReadGuid(std::int32_t offset);
  const TypeLibValue* Value(std::int32_t stored);
  TypeLibValue StoredValue(std::size_t offset);
  void ReadText(ByteStream& entry, TypeLibValue& value);
  std::int32_t CustomData(std::int32_t offset);
  TypeReference Reference(std::int32_t stored) const;
  TypeCode Code(std::int32_t stored) const;
  VarTypeInfo Type(std::int32_t stored) const { return {&mLibrary, Code(stored)}; }
  /// Runs one step; what it cannot read becomes a message with `what` in front.
  void Guarded(const char* what, const std::function<void()>& step);

  TypeLibInfo& mLibrary;
  const TypeLibOptions& mOptions;
  ByteStream mImage;
  std::array<ByteStream, segCount> mSegments;
  std::unique_ptr<ImageTexts> mTexts;

  // From the header.
  std::int32_t mIdOffset = -1, mHelpString = -1, mName = -1, mHelpFile = -1, mCustomData = -1;
  std::uint32_t mTypeCount = 0;
  bool mHasHelpStringDll = false;
  std::size_t mDirectoryOffset = 0;

  /// First of the imports for each offset in their segment.
  std::unordered_map<std::int32_t, std::uint32_t> mImportByOffset;
  std::unordered_map<std::int32_t, std::int32_t> mCustomDataByOffset;
  std::unordered_map<std::int32_t, const TypeLibValue*> mValueByOffset;
  std::unordered_map<std::int32_t, std::pair<std::uint32_t, std::uint16_t>> mBoundsByOffset;
  std::size_t mCustomDataCount = 0;
  /// Bytes of member records that may still be read: blocks do not overlap in a sound file.
  std::size_t mRecordBytesLeft = 0;
};

/// A stored value: packed into the word itself, or a number with its type in the values segment.
TypeLibValue UnpackValue(std::uint32_t packed);

}  // namespace vendrel::typelib
