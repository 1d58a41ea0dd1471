#pragma once
// Files in memory for tests: a project of five files is five literals. Any call can be made to
// fail.

#include <cerrno>
#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "services/FileSource.h"

namespace vendrel::test {

/// The errors of the system that matter: disk full, faulty, gone, too many files open, not allowed.
inline constexpr int kFileErrors[] = {ENOSPC, EIO, ESTALE, EMFILE, EACCES};

/// A machine whose files are these. While the object lives it is the file source in force:
///     MemoryFiles files{{"/p/A.vbp", "Type=Exe\r\n"}, {"/p/m.bas", "..."}};
/// `files["/p/A.vbp"]` is the content of a file.
class MemoryFiles {
 public:
  struct File {
    std::string Bytes;
    std::uint32_t Mode = 0644;
    std::uint64_t Number = 0;
    bool Locked = false;
  };

  class Source;

  MemoryFiles(std::initializer_list<std::pair<std::string, std::string>> files = {});
  ~MemoryFiles();
  MemoryFiles(const MemoryFiles&) = delete;
  MemoryFiles& operator=(const MemoryFiles&) = delete;

  /// Adds or replaces a file; its folders come into being.
  void Add(const std::string& path, std::string bytes, std::uint32_t mode = 0644);
  void AddFolder(std::string path);
  /// Changes the bytes of a file, seen by those who have it open.
  void Change(const std::string& path, const std::function<void(std::string&)>& change);
  /// Removes a file or an empty folder.
  void Remove(const std::string& path);
  /// Something that is neither file nor folder.
  void AddPipe(const std::string& path);
  /// Some other process holds the lock of a file.
  void Lock(const std::string& path);
  /// A symbolic link to a folder: listed, and followed where it is a whole path.
  void Link(const std::string& path, const std::string& target);
  /// Content of a file; empty if there is none.
  std::string operator[](const std::string& path) const;
  bool Has(const std::string& path) const;
  std::vector<std::string> Paths() const;
  /// The n-th call from now (1-based) fails with this errno; 0 takes that back.
  void FailAt(int n, int systemError);
  /// From the n-th call on the disk is full: nothing can be made or written.
  void FullFrom(int n);
  /// Before the n-th call from now something else happens on the disk.
  void ActAt(int n, std::function<void()> action);
  /// Every call on this path fails.
  void FailOn(const std::string& path, int systemError);
  /// Names of the calls so far, "Status /a"; cleared by `ForgetCalls`.
  const std::vector<std::string>& Calls() const;
  void ForgetCalls();

 private:
  std::shared_ptr<Source> mSource;
};

}  // namespace vendrel::test
