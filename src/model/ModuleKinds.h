#pragma once
// The kinds of modules: one row each, from which reading, writing and showing take what they know
// of a kind.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/Ascii.h"
#include "core/Enums.h"

namespace vendrel {

/// A procedure that opens or closes a module: its block type, and the first line of its skeleton.
struct LifetimeProcedure {
  BlockTypeEnum Type = btUnrecognised;
  std::string_view FirstLine = {};
};

/// A kind of module.
struct ModuleKind {
  FileTypeEnum Type = ftUnknown;
  /// Of its line in a project file: "Form". Empty for a kind that has none of its own.
  std::string_view Key = {};
  /// Of its file, without the dot.
  std::string_view Extension = {};
  /// What people call it in a list of modules, and where nothing tells that it is one.
  std::string_view Word = "file";
  std::string_view FullWord = "module";
  /// How its file begins. A form may have another version than that of the row.
  std::string_view Header = {};
  /// Controls stand in its header.
  bool IsFormLike = false;
  /// Its line tells the name before the file: "Class=Name; path".
  bool LineTellsName = false;

  /// Prefix of the event procedures of the module itself.
  std::string_view EventPrefix = {};
  /// The procedures that open and close it.
  LifetimeProcedure Opens = {};
  LifetimeProcedure Closes = {};

  /// What `NewComponent` begins it with. Only a class gets its header there.
  std::string_view NewHeader = {};
  /// Extension that `NewComponent` gives: designers and files of unknown kind get that of standard
  /// modules.
  std::string_view NewExtension = "bas";
  /// `Component.Extension` tells the extension; of property pages it does not.
  bool TellsExtension = true;
};

// In the order in which messages name their extensions.
inline constexpr std::array kModuleKinds{
    ModuleKind{.Type = ftModule,
               .Key = "Module",
               .Extension = "bas",
               .Word = "module",
               .FullWord = "standard module",
               .LineTellsName = true},
    ModuleKind{.Type = ftClass,
               .Key = "Class",
               .Extension = "cls",
               .Word = "class",
               .FullWord = "class module",
               .Header = "VERSION 1.0 CLASS",
               .LineTellsName = true,
               .EventPrefix = "Class_",
               .Opens = {btClassInitialize, "Private Sub Class_Initialize()"},
               .Closes = {btClassTerminate, "Private Sub Class_Terminate()"},
               .NewHeader = "VERSION 1.0 CLASS\nBEGIN\nMultiUse = -1\nEND\n",
               .NewExtension = "cls"},
    ModuleKind{.Type = ftForm,
               .Key = "Form",
               .Extension = "frm",
               .Word = "form",
               .FullWord = "form",
               .Header = "VERSION 5.00",
               .IsFormLike = true,
               .EventPrefix = "Form_",
               .Opens = {btFormLoad, "Private Sub Form_Load()"},
               .Closes = {btFormUnload, "Private Sub Form_Unload(Cancel as Integer)"},
               .NewExtension = "frm"},
    ModuleKind{.Type = ftUserControl,
               .Key = "UserControl",
               .Extension = "ctl",
               .Word = "user control",
               .FullWord = "user control",
               .Header = "VERSION 5.00",
               .IsFormLike = true,
               .EventPrefix = "UserControl_",
               .Opens = {btUserControlInitialise, "Private Sub UserControl_Initialize()"},
               .Closes = {btUserControlTerminate, "Private Sub UserControl_Terminate()"},
               .NewExtension = "ctl"},
    ModuleKind{.Type = ftUserDocument,
               .Key = "UserDocument",
               .Extension = "dob",
               .Word = "user document",
               .FullWord = "user document",
               .Header = "VERSION 5.00",
               .IsFormLike = true,
               .EventPrefix = "UserDocument_",
               .Opens = {btUserDocumentInitialise, "Private Sub UserDocument_Initialize()"},
               .Closes = {btUserDocumentTerminate, "Private Sub UserDocument_Terminate()"},
               .NewExtension = "dob"},
    ModuleKind{.Type = ftPropertyPage,
               .Key = "PropertyPage",
               .Extension = "pag",
               .Word = "property page",
               .FullWord = "property page",
               .Header = "VERSION 5.00",
               .IsFormLike = true,
               .EventPrefix = "PropertyPage_",
               .NewExtension = "pag",
               .TellsExtension = false},
    ModuleKind{.Type = ftDesigner,
               .Key = "Designer",
               .Extension = "dsr",
               .Word = "designer",
               .FullWord = "designer",
               .Header = "VERSION 5.00",
               .IsFormLike = true},
    ModuleKind{.Type = ftOther},
    ModuleKind{.Type = ftUnknown},
};

/// The row of a type; that of `ftUnknown` for a number that is none.
constexpr const ModuleKind& KindOfModule(FileTypeEnum type) {
  const auto* found = std::ranges::find(kModuleKinds, type, &ModuleKind::Type);
  return found == kModuleKinds.end() ? kModuleKinds.back() : *found;
}

/// The kind that has that key in a project file (case ignored); null if none has.
inline const ModuleKind* ModuleKindOfKey(std::string_view key) {
  if (key.empty()) return nullptr;
  const auto* found = std::ranges::find_if(
      kModuleKinds, [&](const ModuleKind& kind) { return EqualsNoCaseAscii(kind.Key, key); });
  return found == kModuleKinds.end() ? nullptr : found;
}

/// The kind whose files have that extension (case ignored); null if none has.
inline const ModuleKind* ModuleKindOfExtension(std::string_view extension) {
  if (extension.empty()) return nullptr;
  const auto* found = std::ranges::find_if(kModuleKinds, [&](const ModuleKind& kind) {
    return EqualsNoCaseAscii(kind.Extension, extension);
  });
  return found == kModuleKinds.end() ? nullptr : found;
}

/// Whether each type has one row, and no other number any. A new type is no case here, which does
/// not compile.
constexpr bool EachModuleTypeHasOneRow() {
  for (std::int32_t number = 0; number < 64; ++number) {
    const auto type = static_cast<FileTypeEnum>(number);
    std::ptrdiff_t rows = 0;
    switch (type) {
      case ftUnknown:
      case ftClass:
      case ftModule:
      case ftForm:
      case ftUserControl:
      case ftUserDocument:
      case ftDesigner:
      case ftOther:
      case ftPropertyPage: rows = 1;
    }
    if (std::ranges::count(kModuleKinds, type, &ModuleKind::Type) != rows) return false;
  }
  return kModuleKinds.back().Type == ftUnknown;
}
static_assert(EachModuleTypeHasOneRow());

}  // namespace vendrel
