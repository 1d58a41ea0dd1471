#pragma once
// Paths are held and shown as project files write them: drive, backslashes. These functions work on
// text alone; whether anything is there, services/FolderCache.h tells.

#include <array>
#include <string>
#include <string_view>

namespace vendrel {

/// Which folder of this machine stands behind a drive letter. Z is the root at first, as under
/// Wine, so that a Windows compiler called through it understands our paths.
class DriveMap {
 public:
  DriveMap() { Reset(); }
  /// `letter` in either case, `nativeFolder` absolute; an empty folder takes the drive away.
  /// Raises 5 for anything else.
  void Set(char letter, std::string_view nativeFolder);
  /// "C=/home/me/c", as an option gives it. Raises 5 if it is none.
  void SetFromText(std::string_view text);
  /// Native folder without a closing slash ("" for the root); nullptr if the drive is not mapped.
  const std::string* Folder(char letter) const;
  /// Only Z, the root.
  void Reset();

  /// That of the workspace in use.
  static DriveMap& Current();

 private:
  struct Drive {
    bool Mapped = false;
    std::string Folder;
  };
  std::array<Drive, 26> mDrives = {};
  friend std::string WindowsPath(std::string_view);
};

/// The Windows form of an absolute native path, on the drive whose folder is nearest:
/// "/src/a.bas" is "Z:\src\a.bas". A backslash and bytes that are no text become characters of the
/// private use area, which `NativePath` turns back. A relative path gets backslashes only.
std::string WindowsPath(std::string_view native);

/// The native path of an absolute Windows path; empty if its drive is not mapped, or it is
/// relative or on another computer. Letter case is not looked at.
std::string NativePath(std::string_view windows);

/// One leaf of a native path in the form that it has within a Windows path.
std::string WindowsLeaf(std::string_view nativeLeaf);

/// Whether a path begins with a drive and backslash, or with two backslashes.
bool IsAbsolutePath(std::string_view path);

/// Forward slashes turned, "." and ".." taken out, doubled separators made one. A closing backslash
/// stays. ".." beyond the root vanishes; in a relative path it stays in front.
std::string NormalPath(std::string_view path);

/// `path` as seen from `folder` (absolute, closing backslash): itself if absolute, else joined and
/// normalised. "\x" is on the drive of `folder`; "C:x" counts as "C:\x".
std::string ResolvePath(std::string_view folder, std::string_view path);

/// `path` relative to `folder`: "..\lib\a.bas". Both absolute; on different drives it is `path`.
std::string RelativePath(std::string_view folder, std::string_view path);

/// Folder with its closing backslash ("" if there is none), and what follows it.
std::string_view FolderPart(std::string_view path);
std::string_view LeafPart(std::string_view path);

/// Whether a leaf matches a pattern of "*" and "?", letter case ignored. "*.*" matches all names,
/// and "a.*" matches "a", as is the custom where these patterns come from.
bool MatchesPattern(std::string_view leaf, std::string_view pattern);

}  // namespace vendrel
