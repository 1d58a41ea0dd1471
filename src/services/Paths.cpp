#include "services/Paths.h"

#include <vector>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "core/Utf8.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"

namespace vendrel {
namespace {

// Bytes that a Windows path cannot hold stand at this distance in the private use area.
constexpr char32_t PrivateBytes = 0xF000;

bool IsSeparator(char c) { return c == '\\' || c == '/'; }

bool HasDrive(std::string_view path) {
  return path.size() >= 2 && path[1] == ':' && IsLetterAscii(path[0]);
}

std::string Turned(std::string_view path, char from, char to) {
  std::string result(path);
  for (std::size_t at = 0; (at = result.find(from, at)) != std::string::npos; ++at) result[at] = to;
  return result;
}

std::string TurnSlashes(std::string_view path) { return Turned(path, '/', '\\'); }

// Length of what ".." cannot leave: "C:\", "\\server\share\", "\", or nothing.
std::size_t RootLength(std::string_view path) {
  if (HasDrive(path)) return path.size() > 2 && path[2] == '\\' ? 3 : 2;
  if (path.substr(0, 2) == "\\\\") {
    const std::size_t server = path.find('\\', 2);
    if (server == std::string_view::npos) return path.size();
    const std::size_t share = path.find('\\', server + 1);
    return share == std::string_view::npos ? path.size() : share + 1;
  }
  return !path.empty() && path[0] == '\\' ? 1 : 0;
}

std::vector<std::string_view> Parts(std::string_view path) {
  std::vector<std::string_view> parts;
  while (!path.empty()) parts.push_back(TakeField(path, '\\'));
  return parts;
}

std::string Joined(std::string_view root, const std::vector<std::string_view>& parts, bool closed) {
  std::string path(root);
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (i) path.push_back('\\');
    path.append(parts[i]);
  }
  if (closed && !path.empty() && path.back() != '\\') path.push_back('\\');
  return path;
}

// Whether there is nothing to change, as in most paths: parts between single backslashes behind a
// drive's root or nothing, none of which begins with a dot.
bool IsNormal(std::string_view path) {
  if (path.empty() || path.front() == '\\' || path.front() == '.') return false;
  if (HasDrive(path) && (path.size() < 4 || path[2] != '\\')) return false;
  if (path.find('/') != std::string_view::npos) return false;
  for (std::size_t at = 0; (at = path.find('\\', at)) != std::string_view::npos; ++at) {
    const char next = at + 1 < path.size() ? path[at + 1] : '\0';
    if (next == '\\' || next == '.') return false;
  }
  return true;
}

bool IsPrivateByte(char32_t c) {
  return c == PrivateBytes + '\\' || (c >= PrivateBytes + 0x80 && c <= PrivateBytes + 0xFF);
}

}  // namespace

DriveMap& DriveMap::Current() { return InUse<DriveMap>(); }

void DriveMap::Reset() {
  mDrives = {};
  mDrives['Z' - 'A'] = {true, ""};
}

void DriveMap::Set(char letter, std::string_view nativeFolder) try {
  if (!IsLetterAscii(letter) || (!nativeFolder.empty() && nativeFolder[0] != '/'))
    throw VendrelError(errInvalidArgument,
                       std::string(1, letter) + "=" + std::string(nativeFolder));
  Drive& drive = mDrives[static_cast<std::size_t>(UpperAscii(letter) - 'A')];
  drive.Mapped = !nativeFolder.empty();
  while (!nativeFolder.empty() && nativeFolder.back() == '/') nativeFolder.remove_suffix(1);
  drive.Folder = nativeFolder;
}
VENDREL_CONTEXT(nativeFolder, trace::Parameter("letter", std::string(1, letter)))

void DriveMap::SetFromText(std::string_view text) try {
  std::size_t equals = text.find('=');
  if ((equals != 1 && equals != 2) || (equals == 2 && text[1] != ':'))
    throw VendrelError(errInvalidArgument, text);
  Set(text[0], text.substr(equals + 1));
}
VENDREL_CONTEXT(text)

const std::string* DriveMap::Folder(char letter) const {
  if (!IsLetterAscii(letter)) return nullptr;
  const Drive& drive = mDrives[static_cast<std::size_t>(UpperAscii(letter) - 'A')];
  return drive.Mapped ? &drive.Folder : nullptr;
}

std::string WindowsLeaf(std::string_view nativeLeaf) {
  const bool isPlain = IsValidUtf8(nativeLeaf) && nativeLeaf.find('\\') == std::string_view::npos;
  if (isPlain) return std::string(nativeLeaf);
  std::string leaf;
  std::size_t i = 0;
  while (i < nativeLeaf.size()) {
    const std::size_t start = i;
    const char32_t c = TakeCharacter(nativeLeaf, i);
    if (c == IllFormed || c == '\\')
      AppendUtf8(leaf, PrivateBytes + static_cast<unsigned char>(nativeLeaf[start]));
    else
      leaf.append(nativeLeaf.substr(start, i - start));
  }
  return leaf;
}

std::string WindowsPath(std::string_view native) {
  const DriveMap& map = DriveMap::Current();
  char letter = '\0';
  std::string_view nearest;
  for (char c = 'Z'; c >= 'A'; --c) {
    const std::string* folder = map.Folder(c);
    const bool within = folder && native.substr(0, folder->size()) == *folder &&
                        (native.size() == folder->size() || native[folder->size()] == '/');
    if (!within || (letter && folder->size() <= nearest.size())) continue;
    letter = c;
    nearest = *folder;
  }
  const bool absolute = !native.empty() && native[0] == '/';
  std::string path;
  if (absolute && letter) {
    path = {letter, ':'};
    native.remove_prefix(nearest.size());
    if (native.empty()) return path + '\\';
  }
  return NormalPath(path + TurnSlashes(WindowsLeaf(native)));
}

std::string NativePath(std::string_view windows) {
  if (!HasDrive(windows)) return {};
  const std::string* folder = DriveMap::Current().Folder(windows[0]);
  if (!folder) return {};
  std::string path = *folder;
  if (windows.size() == 2 || !IsSeparator(windows[2])) path.push_back('/');
  std::size_t i = 2;
  if (FirstNonAscii(windows) == windows.size())
    return path.append(Turned(windows.substr(i), '\\', '/'));
  while (i < windows.size()) {
    const std::size_t start = i;
    const char32_t c = TakeCharacter(windows, i);
    if (c == '\\') {
      path.push_back('/');
    } else if (IsPrivateByte(c)) {
      path.push_back(static_cast<char>(c & 0xFF));
    } else {
      path.append(windows.substr(start, i - start));
    }
  }
  return path;
}

bool IsAbsolutePath(std::string_view path) {
  if (HasDrive(path)) return path.size() > 2 && IsSeparator(path[2]);
  return path.size() > 1 && IsSeparator(path[0]) && IsSeparator(path[1]);
}

std::string NormalPath(std::string_view given) {
  if (IsNormal(given)) return std::string(given);
  const std::string turned = TurnSlashes(given);
  std::string_view path = turned;
  if (path.substr(0, 4) == "\\\\?\\" && HasDrive(path.substr(4))) path.remove_prefix(4);
  const std::string_view root = path.substr(0, RootLength(path));
  std::vector<std::string_view> kept;
  const std::vector<std::string_view> parts = Parts(path.substr(root.size()));
  for (const std::string_view part : parts) {
    if (part.empty() || part == ".") continue;
    const bool up = part == "..";
    if (up && !kept.empty() && kept.back() != "..") {
      kept.pop_back();
    } else if (!up || root.empty()) {
      kept.push_back(part);
    }
  }
  const bool closed =
      path.size() > root.size() &&
      (path.back() == '\\' || (!parts.empty() && (parts.back() == "." || parts.back() == "..")));
  return Joined(root, kept, closed);
}

std::string ResolvePath(std::string_view folder, std::string_view path) {
  if (IsAbsolutePath(path)) return NormalPath(path);
  if (HasDrive(path))
    return NormalPath(std::string(path.substr(0, 2)) + "\\" + std::string(path.substr(2)));
  if (!path.empty() && IsSeparator(path[0])) {
    std::string_view root = folder.substr(0, RootLength(folder));
    return NormalPath(std::string(root) + std::string(path.substr(root.empty() ? 0 : 1)));
  }
  return NormalPath(std::string(folder) + std::string(path));
}

std::string RelativePath(std::string_view folder, std::string_view path) {
  const std::size_t root = RootLength(folder);
  if (root == 0 || !EqualsNoCase(folder.substr(0, root), path.substr(0, RootLength(path))))
    return std::string(path);
  const std::vector<std::string_view> from = Parts(folder.substr(root)),
                                      to = Parts(FolderPart(path).substr(root));
  std::size_t common = 0;
  while (common < from.size() && common < to.size() && EqualsNoCase(from[common], to[common]))
    ++common;
  std::string result;
  for (std::size_t i = common; i < from.size(); ++i) result += "..\\";
  for (std::size_t i = common; i < to.size(); ++i) result.append(to[i]).push_back('\\');
  return result.append(LeafPart(path));
}

std::string_view FolderPart(std::string_view path) {
  std::size_t end = path.size();
  while (end > 0 && !IsSeparator(path[end - 1])) --end;
  if (end == 0 && HasDrive(path)) end = 2;
  return path.substr(0, end);
}

std::string_view LeafPart(std::string_view path) { return path.substr(FolderPart(path).size()); }

bool MatchesPattern(std::string_view leaf, std::string_view pattern) {
  if (pattern == "*.*") return true;
  if (pattern.size() > 2 && pattern.substr(pattern.size() - 2) == ".*" &&
      leaf.find('.') == std::string_view::npos)
    pattern.remove_suffix(2);
  const std::string name = FoldKey(leaf), wanted = FoldKey(pattern);
  const auto goOver = [&](std::size_t& at) {  // a character of the name
    if (static_cast<unsigned char>(name[at]) < 0x80)
      ++at;
    else
      TakeCharacter(name, at);
  };
  // On a mismatch only the last star can take one character more, so nothing is tried twice.
  std::size_t n = 0, w = 0, starAt = std::string::npos, resume = 0;
  while (n < name.size()) {
    std::size_t next = n;
    goOver(next);
    if (w < wanted.size() && wanted[w] == '*') {
      starAt = ++w;
      resume = n;
    } else if (w < wanted.size() && wanted[w] == '?') {
      ++w;
      n = next;
    } else if (w < wanted.size() && wanted[w] == name[n]) {
      ++w;
      ++n;
    } else if (starAt != std::string::npos) {
      w = starAt;
      n = resume;
      goOver(n);
      resume = n;
    } else {
      return false;
    }
  }
  while (w < wanted.size() && wanted[w] == '*') ++w;
  return w == wanted.size();
}

}  // namespace vendrel
