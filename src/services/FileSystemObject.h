#pragma once
// The one way to files. A project keeps each of its files as such an object: a path in the form of
// its project file, resolved against the file that names it, and at most one open text stream.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/WeakHandle.h"
#include "services/FolderCache.h"
#include "services/SourceText.h"

namespace vendrel {

class AtomicFile;

/// Modes of `OpenFile`.
enum OpenModeEnum : int { omRead = 3, omWrite = 4 };

/// One file path, known or unknown to exist. All paths are in Windows form. A copy has the path and
/// the base file, but not the open stream.
class FileSystemObject : public HandleTarget {
 public:
  FileSystemObject();
  /// As `SetFullPath`.
  explicit FileSystemObject(std::string_view path);
  FileSystemObject(const FileSystemObject& other);
  FileSystemObject(FileSystemObject&& other) noexcept;
  FileSystemObject& operator=(const FileSystemObject& other);
  FileSystemObject& operator=(FileSystemObject&& other) noexcept;
  ~FileSystemObject() override;

  /// The file against whose folder a relative path is resolved and `RelativePath` computed; not
  /// kept alive. nullptr if none was set or it has gone.
  FileSystemObject* BaseFile() const { return mBaseFile.Get(); }
  void SetBaseFile(FileSystemObject* file) { mBaseFile = file; }

  /// The absolute path; empty if none was assigned.
  std::string FullPath() const;
  /// Stores a path. A relative one is resolved as soon as `BaseFile` has a path, at the latest when
  /// it is read (then, without a base file, against the current folder each time). A native path
  /// ("/src/a.bas") is taken in its Windows form. Closes the stream.
  void SetFullPath(std::string_view path);

  /// File name without folder and extension. Setting it changes that part only.
  std::string BaseName() const;
  void SetBaseName(std::string_view name);
  /// What follows the last dot of the file name. Setting it changes that part only; an empty one
  /// takes the dot away.
  std::string Extension() const;
  void SetExtension(std::string_view extension);
  /// File name with extension.
  std::string LeafName() const;
  /// The folder, with a closing backslash; empty if there is no path.
  std::string FolderPath() const;
  /// Places the file in a folder, given with or without closing backslash; the leaf name stays.
  void SetFolderPath(std::string_view folder);
  /// The path as seen from the folder of `BaseFile`: "..\lib\a.bas". Absolute without a base file
  /// or on another drive.
  std::string RelativePath() const;
  /// Whether the path was assigned as a relative one.
  bool IsRelocatable() const { return mIsRelative; }

  /// Whether a file is there now (a folder is none).
  bool Exists() const;
  /// Whether the path names an existing folder.
  bool IsFolder() const;
  /// Whether the file is there and its owner's write bit is off.
  bool IsReadOnly() const;
  /// The path on this machine: as the disk spells it as far as it is found, else as written. Empty
  /// if the drive is not mapped.
  std::string NativePath() const;
  /// How `NativePath` was found; looks for it first.
  PathMatch Match() const;
  /// Looks for the file anew: where it is, how it was found, or why that cannot be told.
  FoundPath Find() const;

  /// Opens the stream: mode 3 reads from the first line, mode 4 writes a new file beside the old
  /// one, which `CloseFile` puts in its place. `access` and `lock` change nothing. Raises 5 for
  /// another mode, 53 (missing), 70 (permission) or 75 (folder, device, read-only, too large).
  void OpenFile(int mode = omRead, int access = 1, int lock = 1);
  /// Opens for reading from the first line what was read and decoded earlier.
  void OpenDecoded(std::shared_ptr<const SourceText> source);
  /// Whether the last `OpenFile` succeeded and the stream stands open.
  bool IsOpen() const { return mSource || mWriter; }
  /// Closes the stream; nothing if none is open. After writing, the file is on the disk and in its
  /// place, or this raises and the old one stands. A stream that is never closed writes nothing.
  void CloseFile();
  /// Drops the stream; what was written is forgotten.
  void Discard();

  /// True when no further line can be read.
  bool AtEnd() const { return mRest.empty(); }
  /// The next line without its end; empty at the end of the file. Raises 75 if not open.
  std::string ReadLine() { return std::string(NextLine()); }
  /// The same as a view, valid as long as `Source` lives.
  std::string_view NextLine();
  /// What has not been read yet, as a view that is valid as long as `Source` lives.
  std::string_view Rest() const { return mRest; }
  /// Goes on behind that many bytes of it, which must be whole lines.
  void Skip(std::size_t bytes) { mRest.remove_prefix(bytes); }
  /// The whole remaining text.
  std::string ReadAll();
  /// The decoded file while it is open for reading, else empty.
  const std::shared_ptr<const SourceText>& Source() const { return mSource; }

  /// Encoding in which `WriteLine` writes: at first the code page in force. Set it before writing.
  void SetWriteForm(const TextForm& form) { mWriteForm = form; }
  /// Writes the text and CR LF. A character that the encoding cannot hold is told as a diagnostic
  /// and raises 5; the file is then not written.
  void WriteLine(std::string_view text);
  /// Writes bytes as they are.
  void WriteBytes(std::string_view bytes);

  /// Adds the files under the folder at this path whose leaf name matches `pattern` ("*" and "?"),
  /// in the order of their paths, case ignored. With flag 0 subfolders too, each once however
  /// links lead to it; with flag 1 this folder alone. A subfolder that cannot be read is told as a
  /// diagnostic; raises 75 or 70 if this folder cannot.
  void FindFiles(std::string_view pattern, int flag, std::vector<FileSystemObject>& result) const;
  /// Makes the folder of the path with any missing parents. Raises 70 or 75.
  void CreateFolderPath();
  /// Deletes the file; a missing one is no failure.
  void DeleteFile();

  /// The class id of the compiled file at the path, in braces; empty if it has none.
  std::string ClassID() const;
  /// How class ids are read; installed by the room that reads type libraries.
  using ClassIdReader = std::string (*)(const std::string& nativePath);
  static void SetClassIdReader(ClassIdReader reader);

 private:
  void StorePath(std::string path);
  void Freeze() const;
  std::string AbsolutePath() const;
  void OpenForReading();

  /// Relative until `Freeze` could resolve it.
  mutable std::string mPath;
  /// Where the path was found last; empty if not looked for.
  mutable std::string mNative;
  mutable PathMatch mMatch = PathMatch::None;
  bool mIsRelative = false;
  WeakHandle<FileSystemObject> mBaseFile;

  std::shared_ptr<const SourceText> mSource;
  std::string_view mRest;
  std::unique_ptr<AtomicFile> mWriter;
  TextForm mWriteForm;
};

}  // namespace vendrel
