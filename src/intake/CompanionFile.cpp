#include "intake/CompanionFile.h"

#include <algorithm>
#include <charconv>

#include "core/Ascii.h"
#include "diagnostics/VendrelError.h"
#include "services/FileSystemObject.h"
#include "services/SourceText.h"
#include "text/Words.h"

namespace vendrel {
namespace {

// Many places of a hostile description may name one long record.
constexpr std::uint64_t kMostBytes = std::uint64_t{64} << 20;

// Cuts the next item of a list, two bytes of length and the text, off the front.
std::optional<std::string_view> TakeItem(std::string_view& rest) {
  if (rest.size() < 2) return std::nullopt;
  const std::size_t length =
      static_cast<unsigned char>(rest[0]) | static_cast<unsigned char>(rest[1]) << 8;
  if (length > rest.size() - 2) return std::nullopt;
  const std::string_view item = rest.substr(2, length);
  rest.remove_prefix(2 + length);
  return item;
}

}  // namespace

std::optional<CompanionPlace> CompanionPlaceOf(std::string_view value) {
  CompanionPlace place;
  place.Counted = value.starts_with('$');
  if (place.Counted) value.remove_prefix(1);
  if (!value.starts_with('"')) return std::nullopt;
  const std::size_t close = value.find('"', 1);
  if (close == std::string_view::npos || close == 1) return std::nullopt;
  place.File = value.substr(1, close - 1);
  value.remove_prefix(close + 1);
  if (value.size() < 2 || value.front() != ':') return std::nullopt;
  const char* end = value.data() + value.size();
  const auto offset = std::from_chars(value.data() + 1, end, place.Offset, 16);
  if (offset.ec != std::errc() || offset.ptr != end) return std::nullopt;
  return place;
}

// Without "$" the record does not tell what it is; the intrinsic controls write these two as texts.
bool HoldsText(const CompanionPlace& place, std::string_view progID, std::string_view property) {
  return place.Counted ||
         ((property == "Text" || property == "Caption") && StartsWithNoCaseAscii(progID, "VB."));
}

bool CompanionFile::Open(std::string_view file) {
  if (mName == file) return mBytes != nullptr;
  mName = file;
  mBytes.reset();
  const FileSystemObject companion(mComponent.FileName.FolderPath() + mName);
  try {
    if (companion.Exists()) mBytes = OpenBytes(companion.NativePath());
  } catch (const VendrelError&) {
    // as good as missing: the caller tells, with the control
  }
  return mBytes != nullptr;
}

std::optional<std::string> CompanionFile::Bytes(std::uint64_t offset, std::uint64_t length) {
  const std::uint64_t size = mBytes->Size();
  if (offset > size || length > size - offset || length > kMostBytes - mRead) return std::nullopt;
  try {
    const auto bytes = mBytes->Read(offset, static_cast<std::size_t>(length));
    if (bytes.size() < length) return std::nullopt;
    mRead += length;
    return std::string(bytes.begin(), bytes.end());
  } catch (const VendrelError&) {
    return std::nullopt;
  }
}

// Numbers stand with their low byte first.
std::optional<std::uint32_t> CompanionFile::Number(std::uint64_t offset, std::size_t length) {
  const auto bytes = Bytes(offset, length);
  if (!bytes) return std::nullopt;
  std::uint32_t number = 0;
  for (std::size_t i = length; i-- > 0;)
    number = number << 8 | static_cast<unsigned char>((*bytes)[i]);
  return number;
}

// A short text has a count of one byte; where that is 255 one of two bytes follows.
std::optional<std::string> CompanionFile::Text(const CompanionPlace& place) {
  if (!Open(place.File)) return std::nullopt;
  std::uint64_t at = place.Offset;
  std::size_t width = place.Counted ? 4 : 1;
  auto count = Number(at, width);
  if (count == 255u && !place.Counted) {
    at += 1;
    width = 2;
    count = Number(at, width);
  }
  if (!count) return std::nullopt;
  const auto bytes = Bytes(at + width, *count);
  if (!bytes || bytes->find('\0') != std::string::npos) return std::nullopt;
  return Decoded(*bytes);
}

// Two bytes of count; if there are items two bytes of the greatest length (3 at least) and each
// item behind two bytes of its length.
std::optional<std::vector<std::string>> CompanionFile::List(const CompanionPlace& place) {
  if (!Open(place.File)) return std::nullopt;
  const auto count = Number(place.Offset, 2);
  if (!count) return std::nullopt;
  std::vector<std::string> items;
  if (*count == 0) return items;
  const auto longest = Number(place.Offset + 2, 2);
  if (!longest) return std::nullopt;
  const std::uint64_t start = place.Offset + 4;
  const std::uint64_t most = std::uint64_t{*count} * (2 + *longest);
  const auto bytes = Bytes(start, std::min(most, mBytes->Size() - start));
  if (!bytes) return std::nullopt;
  std::string_view rest = *bytes;
  for (std::uint32_t i = 0; i < *count; ++i) {
    const auto item = TakeItem(rest);
    if (!item || item->size() > *longest) return std::nullopt;
    items.push_back(Decoded(*item));
  }
  return items;
}

// The companion is never converted with its module: its texts are in the code page of the machine
// that wrote both, unless that wrote UTF-8.
std::string CompanionFile::Decoded(std::string_view bytes) const {
  const TextForm& form = *mComponent.SourceForm;
  if (form.Encoding == TextEncoding::Utf8 || form.Encoding == TextEncoding::Utf8Bom)
    return SourceText::Decode(std::string(bytes), PageOf(form))->Text;
  std::string text;
  PageOf(form).Decode(bytes, text);
  return text;
}

}  // namespace vendrel
