#pragma once
// What a hostile file may cost. Each figure is far above anything found in real libraries and keeps
// time and memory within a small multiple of the file.

#include <cstddef>
#include <cstdint>

namespace vendrel::typelib {

/// Largest library image and largest file taken into memory (real ones end at some 20 MB).
inline constexpr std::size_t kMaxImageBytes = std::size_t{512} << 20;
/// Pointer, array and alias steps from a type down to its base (real: 5).
inline constexpr int kMaxTypeDepth = 32;
/// Interfaces above an interface, across libraries (real: 9).
inline constexpr int kMaxBaseDepth = 64;
/// Dimensions of one fixed array; the language allows 60.
inline constexpr unsigned kMaxDimensions = 64;
/// Entries of one custom-data list (real: 12).
inline constexpr int kMaxCustomData = 256;
/// Characters of a name; the newer format cannot store more.
inline constexpr std::size_t kMaxNameBytes = 255;
/// Members that all flattened types of a library together may repeat from their bases: this many,
/// and one more for each `kInheritedShare` bytes of the image.
inline constexpr std::size_t kInheritedBase = 65536;
inline constexpr std::size_t kInheritedShare = 8;
/// Members and parameters that a tree is made of: this many, and one more for each `kShownShare`
/// bytes of the image.
inline constexpr std::size_t kShownBase = 8192;
inline constexpr std::size_t kShownShare = 4;
/// Bytes of help strings and text values that all references together may stand for: this many for
/// each byte of the image, since many members may point at one long string.
inline constexpr std::size_t kTextShare = 8;
inline constexpr std::size_t kTextBase = 65536;
/// Messages kept of one library.
inline constexpr std::size_t kMaxMessages = 200;
/// Libraries that one finder holds, and files that it looks into in one folder.
inline constexpr std::size_t kMaxLibraries = 128;
inline constexpr std::size_t kMaxFilesInFolder = 20000;
/// Words of one compressed help string (real: some 60).
inline constexpr int kMaxHelpWords = 4096;

}  // namespace vendrel::typelib
