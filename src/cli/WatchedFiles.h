#pragma once
// What one run of the tool did to files: every call on files passes here.

#include <memory>
#include <string>
#include <vector>

#include "core/Workspace.h"
#include "services/FileSource.h"

namespace vendrel::cli {

/// Knows every file that was read, by device and number, and every one that was put in place. Where
/// a signal was noted, the next call that opens, reads, makes, writes or renames raises
/// `Interrupted`. The files of the machine are those that were in force before.
class WatchedFiles {
 public:
  WatchedFiles();
  ~WatchedFiles();
  WatchedFiles(const WatchedFiles&) = delete;
  WatchedFiles& operator=(const WatchedFiles&) = delete;

  /// Those of the run at hand; null outside of one.
  static WatchedFiles* Current();
  /// Puts those of the run at hand in force in a workspace of the same run, which another thread
  /// may use.
  static void ShareWith(Workspace& other);
  /// Whether nobody put files of their own in the place of the machine's.
  static bool AreOfThisMachine();

  /// The path under which the file that this path names was read; null if it was not.
  const std::string* SourceAt(const std::string& nativePath) const;
  /// Paths of the files that were put in place, in that order, as their writers named them: links
  /// are not followed.
  const std::vector<std::string>& Written() const;
  /// The path under which a writer asked for a file that lies behind links.
  const std::string& AsAsked(const std::string& realPath) const;

  /// From now on a folder in which a file is made loses the files that killed runs left there.
  void RemoveLeftFiles();

  /// While one lives nothing can be put in the place of a file that was read.
  class Protection {
   public:
    explicit Protection(bool isOn = true);
    ~Protection();
    Protection(const Protection&) = delete;
    Protection& operator=(const Protection&) = delete;

   private:
    bool mBefore;
  };
  /// While one lives nothing that is read or written counts.
  class Aside {
   public:
    Aside();
    ~Aside();
    Aside(const Aside&) = delete;
    Aside& operator=(const Aside&) = delete;

   private:
    bool mBefore;
  };

 private:
  class Source;
  std::shared_ptr<Source> mSource;
  std::shared_ptr<FileSource> mUnder;
};

}  // namespace vendrel::cli
