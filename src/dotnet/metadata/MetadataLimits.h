#pragma once
// What a hostile file may cost. Each figure is far above anything found in real assemblies and
// keeps time and memory within a small multiple of the file.

#include <cstddef>

namespace vendrel::metadata {

/// Largest file taken into memory (real ones end at some 40 MB).
inline constexpr std::size_t kMaxFileBytes = std::size_t{512} << 20;
/// Largest debris of headers looked at for the place of the metadata.
inline constexpr std::size_t kMaxHeaderBytes = std::size_t{1} << 20;
/// Steps into a signature: arrays, pointers, arguments of generics (real: 9).
inline constexpr int kMaxSignatureDepth = 64;
/// Types around a nested one (real: 6).
inline constexpr int kMaxNesting = 64;
/// Classes above a class, across assemblies (real: 12), and interfaces above an interface.
inline constexpr int kMaxBases = 128;
/// Assemblies through which a forwarded type is followed (real: 3).
inline constexpr int kMaxForwards = 32;
/// Dimensions of an array (real: 4).
inline constexpr unsigned kMaxDimensions = 64;
/// Characters of one name and of one type text: arguments of generics can double at each step.
inline constexpr std::size_t kMaxNameText = 4096;
inline constexpr std::size_t kMaxTypeText = 16384;
/// Parameters of one signature; its blob ends first in real files (real: 60).
inline constexpr std::size_t kMaxParameters = 65535;
/// Characters of all names, and of all that a listing shows: this many, and some for each byte of
/// the file, since many rows may point at one long signature or name.
inline constexpr std::size_t kTextShare = 16;
inline constexpr std::size_t kTextBase = std::size_t{1} << 20;
/// Characters of all types of one signature (real: 3,000).
inline constexpr std::size_t kMaxSignatureText = 65536;
/// Bytes that a tree may take: this many, and some for each byte of the file.
inline constexpr std::size_t kTreeBase = std::size_t{128} << 20;
inline constexpr std::size_t kTreeShare = 128;
/// What one element of a tree counts for, besides its texts.
inline constexpr std::size_t kTreeElement = 400;
/// Members that a class may inherit.
inline constexpr std::size_t kMaxInherited = 20000;
/// Messages kept of one file.
inline constexpr std::size_t kMaxMessages = 200;
/// Assemblies that one store holds.
inline constexpr std::size_t kMaxAssemblies = 512;

}  // namespace vendrel::metadata
