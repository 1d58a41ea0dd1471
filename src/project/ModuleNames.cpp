#include "project/ModuleNames.h"

#include <memory>
#include <optional>

#include "core/Ascii.h"
#include "core/Utf8.h"
#include "diagnostics/VendrelError.h"
#include "model/ModuleKinds.h"
#include "services/FileSystemObject.h"
#include "services/SourceCache.h"

namespace vendrel {
namespace {

constexpr std::string_view kNameAttribute = "Attribute VB_Name ";

// The decoded text of a file; nothing if it cannot be read.
std::shared_ptr<const SourceText> TextOf(FileSystemObject& file) {
  try {
    if (!file.Exists()) return nullptr;
    file.OpenFile(omRead);
    return file.Source();
  } catch (const VendrelError&) {
    return nullptr;  // met again, and told, when the module is loaded
  }
}

std::string NameInAttribute(std::string_view line) {
  std::string_view name = line.size() > 21 ? line.substr(21) : std::string_view();
  if (!name.empty()) name.remove_suffix(1);
  return std::string(name);
}

// The name that the bytes of a file tell by the attribute, whatever they mean: a line of ASCII is
// the same in all code pages. Nothing where that line is none, or there is none.
std::optional<std::string> NameInBytes(std::string_view bytes) {
  if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF") ||
      bytes.starts_with("\xEF\xBB\xBF"))
    return std::nullopt;
  for (std::size_t at = 0; (at = FindNoCaseAscii(bytes, kNameAttribute, at)) != kNotFound; ++at) {
    if (at > 0 && bytes[at - 1] != '\n' && bytes[at - 1] != '\r') continue;
    const std::string_view line = bytes.substr(at, bytes.find_first_of("\r\n", at) - at);
    if (FirstNonAscii(line) < line.size()) return std::nullopt;
    return NameInAttribute(line);
  }
  return std::nullopt;
}

std::optional<std::string> NameInBytesOf(FileSystemObject& file) {
  try {
    if (!file.Exists()) return std::nullopt;
    return NameInBytes(SourceCache::Bytes(file.NativePath()));
  } catch (const VendrelError&) {
    return std::nullopt;
  }
}

// By the attribute, else by the head of the form.
std::string NameInText(const SourceText& source) {
  std::string_view rest = source.Text;
  std::string name;
  constexpr std::string_view kFormHeader = KindOfModule(ftForm).Header;
  bool version = false;
  while (!rest.empty()) {
    const std::string_view line = TakeLine(rest, source.LineEnds.Form);
    if (EqualsNoCaseAscii(line, kFormHeader)) version = true;
    if (StartsWithNoCaseAscii(line, kNameAttribute)) return NameInAttribute(line);
    if (version && StartsWithNoCaseAscii(line, "begin vb.form ")) name = line.substr(14);
  }
  return name;
}

}  // namespace

std::string_view TakeLineOf(std::string_view& rest) { return TakeLine(rest); }

std::string GetProjectName(std::string_view FileName) {
  FileSystemObject file(FileName);
  const auto source = TextOf(file);
  return source ? ProjectNameIn(source->Text) : std::string();
}

std::string ProjectNameIn(std::string_view text) {
  while (!text.empty()) {
    const std::string_view line = TakeLine(text);
    if (!line.starts_with("Name=")) continue;
    return line.size() > 7 ? std::string(line.substr(6, line.size() - 7)) : std::string();
  }
  return {};
}

std::string GetComponentName(std::string_view FileName) {
  FileSystemObject file(FileName);
  if (std::optional<std::string> name = NameInBytesOf(file)) return *std::move(name);
  const auto source = TextOf(file);
  return source ? NameInText(*source) : std::string();
}

FileTypeEnum FileTypeOfExtension(std::string_view extension) {
  const ModuleKind* kind = ModuleKindOfExtension(extension);
  return kind ? kind->Type : ftOther;
}

}  // namespace vendrel
