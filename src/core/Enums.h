#pragma once
// The public enumerations. Their numbers are interface: clients store them, the manifest prints
// them, so none is ever renumbered.

#include <cstdint>
#include <span>
#include <string_view>

namespace vendrel {

/// One value of an enumeration: its number, its name, and what people call it.
struct EnumName {
  std::int32_t Value;
  std::string_view Name;
  /// Empty where the name says enough.
  std::string_view Words;
};

// An enumeration and the table of its names, from one list of X(name, number): `NamesOf(E())`.
// clang-format off
#define VENDREL_ENUM_VALUE(name, number) name = number,
#define VENDREL_ENUM_NAME(name, number) {number, #name, {}},
#define VENDREL_ENUM(type, list)                                                                   \
  enum type : std::int32_t { list(VENDREL_ENUM_VALUE) };                                           \
  inline constexpr EnumName kNamesOf##type[] = {list(VENDREL_ENUM_NAME)};                          \
  constexpr std::span<const EnumName> NamesOf(type) { return kNamesOf##type; }
// The same for a list of X(name, number, words).
#define VENDREL_ENUM_VALUE_IN_WORDS(name, number, words) name = number,
#define VENDREL_ENUM_NAME_IN_WORDS(name, number, words) {number, #name, words},
#define VENDREL_ENUM_IN_WORDS(type, list)                                                          \
  enum type : std::int32_t { list(VENDREL_ENUM_VALUE_IN_WORDS) };                                  \
  inline constexpr EnumName kNamesOf##type[] = {list(VENDREL_ENUM_NAME_IN_WORDS)};                 \
  constexpr std::span<const EnumName> NamesOf(type) { return kNamesOf##type; }

/// What a source line is. Gaps in the numbers belong to values that no longer exist.
#define VENDREL_LINE_TYPE_VALUES(X) \
  X(START_FUNCTION, 9) \
  X(END_FUNCTION, 10) \
  X(START_SUB, 11) \
  X(END_SUB, 12) \
  X(VAR_DECLARATION, 13) \
  X(BLANK_LINE, 14) \
  X(Comment, 15) \
  X(OTHER, 16) \
  X(DECLARE_FUNCTION, 17) \
  X(DECLARE_SUB, 18) \
  X(START_PROPERTY, 19) \
  X(END_PROPERTY, 20) \
  X(START_CLASS_INITIALISE, 21) \
  X(START_CLASS_TERMINATE, 22) \
  X(END_CLASS_INITIALISE, 26) \
  X(END_CLASS_TERMINATE, 27) \
  X(CONST_DECLARATION, 28) \
  X(SELECT_CASE_LINE, 29) \
  X(CASE_LINE, 30) \
  X(END_SELECT_LINE, 31) \
  X(ATTRIBUTE_LINE, 32) \
  X(EXIT_LINE, 33) \
  X(FORM_LOAD, 40) \
  X(FORM_UNLOAD, 41) \
  X(START_ENUM, 47) \
  X(END_ENUM, 48) \
  X(START_TYPE, 49) \
  X(END_TYPE, 50) \
  X(EVENT_DECLARATION, 51) \
  X(COMPILER_DIRECTIVE, 52) \
  X(DECLARE_STATEMENT, 53) \
  X(START_USERCONTROL_INITIALISE, 54) \
  X(START_USERCONTROL_TERMINATE, 55) \
  X(START_USERDOCUMENT_INITIALISE, 56) \
  X(START_USERDOCUMENT_TERMINATE, 57) \
  X(TAGGED_COMMENT, 58) \
  X(INHERITS_STATEMENT, 59) \
  X(IMPLEMENTS_STATEMENT, 60) \
  X(START_PROPERTY_SUBBLOCK, 61) \
  X(END_PROPERTY_SUBBLOCK, 62) \
  X(START_NAMESPACE, 63) \
  X(END_NAMESPACE, 64) \
  X(START_CLASS, 65) \
  X(END_CLASS, 66) \
  X(START_TRY, 67) \
  X(CATCH_STATEMENT, 68) \
  X(FINALLY_STATEMENT, 69) \
  X(END_TRY, 70) \
  X(IMPORTS_STATEMENT, 71) \
  X(NESTED_CLASS_PLACEHOLDER, 72) \
  X(START_STRUCTURE, 73) \
  X(START_INTERFACE, 74)
VENDREL_ENUM(LineTypeEnum, VENDREL_LINE_TYPE_VALUES)

/// The kind of a Block.
#define VENDREL_BLOCK_TYPE_VALUES(X) \
  X(btSub, 1) \
  X(btFunction, 2) \
  X(btPropertyGet, 3) \
  X(btPropertyLet, 4) \
  X(btPropertySet, 5) \
  X(btDeclarations, 6) \
  X(btAttributes, 7) \
  X(btClassInitialize, 8) \
  X(btClassTerminate, 9) \
  X(btFormLoad, 10) \
  X(btFormUnload, 11) \
  X(btUnrecognised, 12) \
  X(btUserControlInitialise, 13) \
  X(btUserControlTerminate, 14) \
  X(btUserDocumentInitialise, 15) \
  X(btUserDocumentTerminate, 16)
VENDREL_ENUM(BlockTypeEnum, VENDREL_BLOCK_TYPE_VALUES)

/// How far a module has been read.
#define VENDREL_LOAD_STATE_VALUES(X) \
  X(lsNotLoaded, 0) \
  X(lsLoadedHeader, 1) \
  X(lsFullyLoaded, 2) \
  X(lsFullyLoadedNoCode, 3)
VENDREL_ENUM(LoadStateEnum, VENDREL_LOAD_STATE_VALUES)

/// The kind of a module file.
#define VENDREL_FILE_TYPE_VALUES(X) \
  X(ftUnknown, 0) \
  X(ftClass, 1) \
  X(ftModule, 2) \
  X(ftForm, 3) \
  X(ftUserControl, 4) \
  X(ftUserDocument, 5) \
  X(ftDesigner, 6) \
  X(ftOther, 9) \
  X(ftPropertyPage, 10)
VENDREL_ENUM(FileTypeEnum, VENDREL_FILE_TYPE_VALUES)

/// Which procedures a property has; 0 where none counts.
#define VENDREL_PROPERTY_TYPE_VALUES(X) \
  X(ptNone, 0) \
  X(ptWrite, 1) \
  X(ptRead, 2) \
  X(ptReadWrite, 3)
VENDREL_ENUM(PropertyTypeEnum, VENDREL_PROPERTY_TYPE_VALUES)

/// Access of an element as a number.
#define VENDREL_ACCESS_TYPE_VALUES(X) \
  X(atPublic, 0) \
  X(atPrivate, 1) \
  X(atFriend, 2) \
  X(atProtected, 4) \
  X(atProtectedFriend, 6)
VENDREL_ENUM(AccessTypeEnum, VENDREL_ACCESS_TYPE_VALUES)

/// Where a type name was found.
#define VENDREL_TYPE_CLASS_VALUES(X) \
  X(tcUnresolved, 0) \
  X(tcLocalProjectModule, 1) \
  X(tcOtherProjectModule, 2) \
  X(tcLocalModuleEnum, 3) \
  X(tcLocalProjectEnum, 4) \
  X(tcOtherProjectEnum, 5) \
  X(tcLocalModuleUDT, 6) \
  X(tcLocalProjectUDT, 7) \
  X(tcOtherProjectUDT, 8) \
  X(tcIntrinsic, 9)
VENDREL_ENUM(TypeClassEnum, VENDREL_TYPE_CLASS_VALUES)

/// What a project is compiled to; 0 where its `Type` line named none of these.
#define VENDREL_PROJECT_TYPE_VALUES(X) \
  X(ptUnknown, 0) \
  X(ptEXE, 1) \
  X(ptOleExe, 2) \
  X(ptOleDLL, 3) \
  X(ptControl, 4)
VENDREL_ENUM(ProjectTypeEnum, VENDREL_PROJECT_TYPE_VALUES)

#define VENDREL_COMPATIBLE_VALUES(X) \
  X(CompatibleNone, 0) \
  X(CompatibleProject, 1) \
  X(CompatibleBinary, 2)
VENDREL_ENUM(CompatibleEnum, VENDREL_COMPATIBLE_VALUES)

/// What a project was read from.
#define VENDREL_PROJECT_SOURCE_TYPE_VALUES(X) \
  X(ptsNone, 0) \
  X(ptsVisualBasicProject, 1) \
  X(ptsVisualBasicNETProject, 2) \
  X(ptsTypeLibrary, 3) \
  X(ptsVisualBasicFiles, 4)
VENDREL_ENUM(ProjectSourceTypeEnum, VENDREL_PROJECT_SOURCE_TYPE_VALUES)

#define VENDREL_PROJECT_SOURCE_ACCESS_VALUES(X) \
  X(psaNone, 0) \
  X(psaRead, 1) \
  X(psaReadWrite, 2)
VENDREL_ENUM(ProjectSourceAccessEnum, VENDREL_PROJECT_SOURCE_ACCESS_VALUES)

/// Where the types of an assembly are read from.
#define VENDREL_ASSEMBLY_TYPE_VALUES(X) \
  X(atCompiled, 1) \
  X(atVBNETSource, 2)
VENDREL_ENUM(AssemblyTypeEnum, VENDREL_ASSEMBLY_TYPE_VALUES)

/// What kind of type a VB.NET statement opens.
#define VENDREL_COMPONENT_TYPE_VALUES(X) \
  X(ctClass, 1) \
  X(ctModule, 2) \
  X(ctEnumeration, 3) \
  X(ctStructure, 4) \
  X(ctInterface, 5)
VENDREL_ENUM(ComponentTypeEnum, VENDREL_COMPONENT_TYPE_VALUES)

/// Language whose rules classify and parse a line.
#define VENDREL_LANGUAGE_VERSION_VALUES(X) \
  X(lvVisualBasic5or6, 0) \
  X(lvVisualBasicDotNet, 1)
VENDREL_ENUM(LanguageVersionEnum, VENDREL_LANGUAGE_VERSION_VALUES)

/// From which procedures of a property its comments are taken.
#define VENDREL_PROPERTY_COMMENTS_FROM_VALUES(X) \
  X(pcAll, 0, "all procedures") \
  X(pcPropertyGet, 1, "Get") \
  X(pcPropertyLetSet, 2, "Let and Set")
VENDREL_ENUM_IN_WORDS(PropertyCommentsFromEnum, VENDREL_PROPERTY_COMMENTS_FROM_VALUES)

/// How repeated text of a tag is joined.
#define VENDREL_WRAP_TYPE_VALUES(X) \
  X(wrapNone, 0) \
  X(wrapSpace, 1) \
  X(wrapLineBreak, 2) \
  X(wrapParagraph, 3)
VENDREL_ENUM(WrapTypeEnum, VENDREL_WRAP_TYPE_VALUES)

/// Kind of element that a tag belongs to; 0: told by the scope of its definition.
#define VENDREL_ELEMENT_TYPE_VALUES(X) \
  X(etNone, 0) \
  X(etProjectGroup, 1) \
  X(etProject, 2) \
  X(etModule, 3) \
  X(etMethod, 4) \
  X(etVariable, 5) \
  X(etParameter, 6) \
  X(etReserved, 7) \
  X(etEvent, 8) \
  X(etEnumeration, 9) \
  X(etEnumerationMember, 10) \
  X(etStructure, 11) \
  X(etStructureMember, 12) \
  X(etDeclareStatement, 13) \
  X(etImplementedInterface, 14)
VENDREL_ENUM(ElementTypeEnum, VENDREL_ELEMENT_TYPE_VALUES)

// clang-format on

/// The name of a number among the values of its enumeration; null if none has it.
constexpr const EnumName* FindName(std::span<const EnumName> names, std::int64_t number) {
  for (const EnumName& name : names)
    if (name.Value == number) return &name;
  return nullptr;
}

}  // namespace vendrel
