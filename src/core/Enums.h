#pragma once
// The public enumerations. Their numbers are interface: clients store them, the manifest prints
// them, so none is ever renumbered.

#include <cstdint>

namespace vendrel {

/// What a source line is. Gaps in the numbers belong to values that no longer exist.
enum LineTypeEnum : std::int32_t {
  START_FUNCTION = 9,
  END_FUNCTION = 10,
  START_SUB = 11,
  END_SUB = 12,
  VAR_DECLARATION = 13,
  BLANK_LINE = 14,
  Comment = 15,
  OTHER = 16,
  DECLARE_FUNCTION = 17,
  DECLARE_SUB = 18,
  START_PROPERTY = 19,
  END_PROPERTY = 20,
  START_CLASS_INITIALISE = 21,
  START_CLASS_TERMINATE = 22,
  END_CLASS_INITIALISE = 26,
  END_CLASS_TERMINATE = 27,
  CONST_DECLARATION = 28,
  SELECT_CASE_LINE = 29,
  CASE_LINE = 30,
  END_SELECT_LINE = 31,
  ATTRIBUTE_LINE = 32,
  EXIT_LINE = 33,
  FORM_LOAD = 40,
  FORM_UNLOAD = 41,
  START_ENUM = 47,
  END_ENUM = 48,
  START_TYPE = 49,
  END_TYPE = 50,
  EVENT_DECLARATION = 51,
  COMPILER_DIRECTIVE = 52,
  DECLARE_STATEMENT = 53,
  START_USERCONTROL_INITIALISE = 54,
  START_USERCONTROL_TERMINATE = 55,
  START_USERDOCUMENT_INITIALISE = 56,
  START_USERDOCUMENT_TERMINATE = 57,
  TAGGED_COMMENT = 58,
  INHERITS_STATEMENT = 59,
  IMPLEMENTS_STATEMENT = 60,
  START_PROPERTY_SUBBLOCK = 61,
  END_PROPERTY_SUBBLOCK = 62,
  START_NAMESPACE = 63,
  END_NAMESPACE = 64,
  START_CLASS = 65,
  END_CLASS = 66,
  START_TRY = 67,
  CATCH_STATEMENT = 68,
  FINALLY_STATEMENT = 69,
  END_TRY = 70,
  IMPORTS_STATEMENT = 71,
  NESTED_CLASS_PLACEHOLDER = 72,
  START_STRUCTURE = 73,
  START_INTERFACE = 74,
};

/// The kind of a Block.
enum BlockTypeEnum : std::int32_t {
  btSub = 1,
  btFunction = 2,
  btPropertyGet = 3,
  btPropertyLet = 4,
  btPropertySet = 5,
  btDeclarations = 6,
  btAttributes = 7,
  btClassInitialize = 8,
  btClassTerminate = 9,
  btFormLoad = 10,
  btFormUnload = 11,
  btUnrecognised = 12,
  btUserControlInitialise = 13,
  btUserControlTerminate = 14,
  btUserDocumentInitialise = 15,
  btUserDocumentTerminate = 16,
};

/// How far a module has been read.
enum LoadStateEnum : std::int32_t {
  lsNotLoaded = 0,
  lsLoadedHeader = 1,
  lsFullyLoaded = 2,
  lsFullyLoadedNoCode = 3,
};

/// The kind of a module file.
enum FileTypeEnum : std::int32_t {
  ftUnknown = 0,
  ftClass = 1,
  ftModule = 2,
  ftForm = 3,
  ftUserControl = 4,
  ftUserDocument = 5,
  ftDesigner = 6,
  ftOther = 9,
  ftPropertyPage = 10,
};

/// Which procedures a property has; 0 where none counts.
enum PropertyTypeEnum : std::int32_t { ptNone = 0, ptWrite = 1, ptRead = 2, ptReadWrite = 3 };

/// Access of an element as a number.
enum AccessTypeEnum : std::int32_t {
  atPublic = 0,
  atPrivate = 1,
  atFriend = 2,
  atProtected = 4,
  atProtectedFriend = 6,
};

/// Where a type name was found.
enum TypeClassEnum : std::int32_t {
  tcUnresolved = 0,
  tcLocalProjectModule = 1,
  tcOtherProjectModule = 2,
  tcLocalModuleEnum = 3,
  tcLocalProjectEnum = 4,
  tcOtherProjectEnum = 5,
  tcLocalModuleUDT = 6,
  tcLocalProjectUDT = 7,
  tcOtherProjectUDT = 8,
  tcIntrinsic = 9,
};

/// What a project is compiled to; 0 where its `Type` line named none of these.
enum ProjectTypeEnum : std::int32_t {
  ptUnknown = 0,
  ptEXE = 1,
  ptOleExe = 2,
  ptOleDLL = 3,
  ptControl = 4,
};

enum CompatibleEnum : std::int32_t {
  CompatibleNone = 0,
  CompatibleProject = 1,
  CompatibleBinary = 2,
};

/// What a project was read from.
enum ProjectSourceTypeEnum : std::int32_t {
  ptsNone = 0,
  ptsVisualBasicProject = 1,
  ptsVisualBasicNETProject = 2,
  ptsTypeLibrary = 3,
  ptsVisualBasicFiles = 4,
};

enum ProjectSourceAccessEnum : std::int32_t { psaNone = 0, psaRead = 1, psaReadWrite = 2 };

/// Language whose rules classify and parse a line.
enum LanguageVersionEnum : std::int32_t { lvVisualBasic5or6 = 0, lvVisualBasicDotNet = 1 };

/// From which procedures of a property its comments are taken.
enum PropertyCommentsFromEnum : std::int32_t {
  pcAll = 0,
  pcPropertyGet = 1,
  pcPropertyLetSet = 2,
};

/// How repeated text of a tag is joined.
enum WrapTypeEnum : std::int32_t {
  wrapNone = 0,
  wrapSpace = 1,
  wrapLineBreak = 2,
  wrapParagraph = 3,
};

/// Kind of element that a tag belongs to; 0: told by the scope of its definition.
enum ElementTypeEnum : std::int32_t {
  etNone = 0,
  etProjectGroup = 1,
  etProject = 2,
  etModule = 3,
  etMethod = 4,
  etVariable = 5,
  etParameter = 6,
  etReserved = 7,
  etEvent = 8,
  etEnumeration = 9,
  etEnumerationMember = 10,
  etStructure = 11,
  etStructureMember = 12,
  etDeclareStatement = 13,
  etImplementedInterface = 14,
};

}  // namespace vendrel
