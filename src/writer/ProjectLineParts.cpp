#include "writer/ProjectLineParts.h"

#include "core/Ascii.h"
#include "model/ModuleKinds.h"

namespace vendrel {
namespace {

Region Between(std::size_t begin, std::size_t end) { return {begin, end - begin}; }

// Up to the next delimiter from `begin` on; nothing where the field is empty.
std::optional<Region> FieldAt(std::string_view line, std::size_t begin, char delimiter) {
  if (begin >= line.size()) return std::nullopt;
  const Region field = Between(begin, std::min(line.find(delimiter, begin), line.size()));
  return field.Length > 0 ? std::optional(field) : std::nullopt;
}

}  // namespace

std::string ProjectLineKey(std::string_view line) {
  const std::size_t equals = line.find('=');
  return equals == kNotFound ? std::string() : UpperAscii(Trim(line.substr(0, equals)));
}

Region ValueRegion(std::string_view line) {
  const std::size_t equals = line.find('=');
  const std::size_t begin = equals == kNotFound ? line.size() : equals + 1;
  return Between(begin, line.size()).Trimmed(line).WithoutQuotes(line);
}

Region ModulePathRegion(std::string_view line) {
  const std::size_t begin = std::min(line.find('='), line.size() - 1) + 1;
  const std::size_t semicolon = line.find(';', begin);
  if (semicolon == kNotFound) return Between(begin, line.size()).Trimmed(line);
  return Between(semicolon + 1, std::min(line.find(';', semicolon + 1), line.size())).Trimmed(line);
}

std::optional<Region> ModuleNameRegion(std::string_view line) {
  for (const ModuleKind& kind : kModuleKinds) {
    const std::size_t equals = kind.Key.size();
    const std::size_t semicolon = line.find(';', equals);
    const bool isOfKind = StartsWithNoCaseAscii(line, kind.Key) && line.substr(equals, 1) == "=";
    if (kind.LineTellsName && isOfKind && semicolon != kNotFound)
      return Between(equals + 1, semicolon);
  }
  return std::nullopt;
}

std::string WrittenLine(Reference& reference, FileSystemObject& output) {
  FileSystemObject& file = reference.FileName;
  file.FullPath();  // a relative path is settled while its base is the one it was given for
  FileSystemObject* const base = file.BaseFile();
  const std::string version = reference.Version, locale = reference.Locale;
  file.SetBaseFile(&output);
  std::string line = reference.CompiledLine();
  if (line.empty()) line = reference.CodeLine();
  file.SetBaseFile(base);
  reference.Version = version;
  reference.Locale = locale;
  return line;
}

// "Reference=*\G{id}#version#locale#path#name", "Object={id}#version#locale; path", or "*\A" and
// the path of a project. The blank behind the semicolon is part of the form.
std::optional<Region> ReferencePathRegion(std::string_view line) {
  const bool isObject = line.starts_with("Object");
  const std::size_t value = isObject ? 7 : 10;
  if (line.size() <= value + 3) return std::nullopt;
  if (line.substr(value).starts_with("*\\A"))
    return isObject ? Between(value + 3, line.size()) : FieldAt(line, value + 3, '#');
  if (isObject) {
    const std::size_t semicolon = line.find(';', value);
    if (semicolon == kNotFound || semicolon + 2 >= line.size()) return std::nullopt;
    return Between(semicolon + 2, line.size());
  }
  std::size_t begin = value + 3;
  for (int i = 0; i < 3; ++i) {
    const auto field = FieldAt(line, begin, '#');
    if (!field) return std::nullopt;
    begin = field->Begin + field->Length + 1;
  }
  return FieldAt(line, begin, '#');
}

}  // namespace vendrel
