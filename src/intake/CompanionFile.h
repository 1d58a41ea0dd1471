#pragma once
// The binary companion of a form-like module (.frx, .ctx, .dox, .pgx, .dsx): texts, lists and
// pictures of its controls. docs/reading.md shows the records.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/Component.h"
#include "services/ByteSource.h"

namespace vendrel {

/// A place in a companion file as a description names it: "Main.frx":0A4C, with "$" in front where
/// a text with a count of four bytes stands there.
struct CompanionPlace {
  std::string_view File;
  std::uint64_t Offset = 0;
  bool Counted = false;
};

/// The place that a value names; nothing if it is any other value.
std::optional<CompanionPlace> CompanionPlaceOf(std::string_view value);

/// Whether a text can stand at a place that this property of a control of that class names.
bool HoldsText(const CompanionPlace& place, std::string_view progID, std::string_view property);

/// Reads records of the companion files of a module. A file is opened at its first record, and only
/// the record is read.
class CompanionFile {
 public:
  explicit CompanionFile(const Component& component) : mComponent(component) {}

  /// The text at a place; nothing if the file cannot be read, if the record does not end in it, or
  /// if it is no text.
  std::optional<std::string> Text(const CompanionPlace& place);
  /// The same for a list of texts.
  std::optional<std::vector<std::string>> List(const CompanionPlace& place);

 private:
  bool Open(std::string_view file);
  std::optional<std::string> Bytes(std::uint64_t offset, std::uint64_t length);
  std::optional<std::uint32_t> Number(std::uint64_t offset, std::size_t length);
  std::string Decoded(std::string_view bytes) const;

  const Component& mComponent;
  std::string mName;
  std::unique_ptr<ByteSource> mBytes;
  std::uint64_t mRead = 0;
};

}  // namespace vendrel
