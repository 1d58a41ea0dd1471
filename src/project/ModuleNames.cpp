#include "project/ModuleNames.h"

#include "core/Ascii.h"
#include "diagnostics/VendrelError.h"
#include "model/ModuleKinds.h"
#include "services/FileSystemObject.h"

namespace vendrel {
namespace {

// The decoded text of a file; nothing if it cannot be read.
std::shared_ptr<const SourceText> TextOf(std::string_view fileName) {
  FileSystemObject file(fileName);
  try {
    if (!file.Exists()) return nullptr;
    file.OpenFile(omRead);
    return file.Source();
  } catch (const VendrelError&) {
    return nullptr;  // met again, and told, when the module is loaded
  }
}

}  // namespace

std::string_view TakeLineOf(std::string_view& rest) { return TakeLine(rest); }

std::string GetProjectName(std::string_view FileName) {
  const auto source = TextOf(FileName);
  std::string_view rest = source ? std::string_view(source->Text) : std::string_view();
  while (!rest.empty()) {
    const std::string_view line = TakeLine(rest);
    if (!line.starts_with("Name=")) continue;
    return line.size() > 7 ? std::string(line.substr(6, line.size() - 7)) : std::string();
  }
  return {};
}

std::string GetComponentName(std::string_view FileName) {
  const auto source = TextOf(FileName);
  if (!source) return {};
  std::string_view rest = source->Text;
  std::string name;
  constexpr std::string_view kFormHeader = KindOfModule(ftForm).Header;
  bool version = false;
  while (!rest.empty()) {
    const std::string_view line = TakeLine(rest, source->LineEnds.Form);
    if (EqualsNoCaseAscii(line, kFormHeader)) version = true;
    if (StartsWithNoCaseAscii(line, "Attribute VB_Name ")) {
      std::string_view found = line.size() > 21 ? line.substr(21) : std::string_view();
      if (!found.empty()) found.remove_suffix(1);
      return std::string(found);
    }
    if (version && StartsWithNoCaseAscii(line, "begin vb.form ")) name = line.substr(14);
  }
  return name;
}

FileTypeEnum FileTypeOfExtension(std::string_view extension) {
  const ModuleKind* kind = ModuleKindOfExtension(extension);
  return kind ? kind->Type : ftOther;
}

}  // namespace vendrel
