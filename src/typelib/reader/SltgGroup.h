#pragma once

#include "typelib/reader/SltgReader.h"

namespace vendrel::typelib {

/// Names of libraries that are referred to are paths, and longer than names of members.
inline constexpr std::size_t kMaxPrefixedName = 1024;
inline constexpr std::size_t kTailBytes = 54;
/// Stands for the name of the member before.
inline constexpr std::uint16_t kPreviousName = 0xFFFE;

/// What the library block says of an entry.
struct SltgReader::Entry {
  std::string_view Index;
  std::uint16_t Name = 0;
  ByteStream Help;
  std::uint32_t HelpContext = 0;
  Guid Id;
  int Kind = 0;
};

/// The members of one entry while they are read.
struct SltgReader::Group {
  ByteStream Block, Records, Tail;
  std::vector<TypeReference> References;
  std::uint32_t BaseHelpContext = 0;
  std::string_view LastName;
  std::size_t ParametersLeft = 0;
};

/// Runs one step; what it cannot read becomes a message with `what` in front.
template <typename Step>
void SltgReader::Guarded(std::string_view what, Step step) {
  try {
    step();
  } catch (const DataError& error) {
    mLibrary.Warn(std::string(what) + ": " + error.what());
  }
}

}  // namespace vendrel::typelib
