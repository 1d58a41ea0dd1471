#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vendrel::typelib {

/// A 16-byte identifier, kept in the order of the file.
struct Guid {
  std::array<std::uint8_t, 16> Bytes{};

  static Guid FromBytes(std::span<const std::uint8_t> bytes);
  /// From "{00020430-0000-0000-C000-000000000046}", braces optional, any case; nothing if it is not
  /// one.
  static std::optional<Guid> Parse(std::string_view text);
  /// In braces and upper case.
  std::string Text() const;
  bool IsNull() const { return *this == Guid{}; }
  auto operator<=>(const Guid&) const = default;
};

struct GuidHash {
  std::size_t operator()(const Guid& guid) const noexcept {
    return std::hash<std::string_view>{}(
        {reinterpret_cast<const char*>(guid.Bytes.data()), guid.Bytes.size()});
  }
};

}  // namespace vendrel::typelib
