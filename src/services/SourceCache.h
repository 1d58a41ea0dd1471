#pragma once
// A load reads a source file up to three times: to guess the code page of the project, for the name
// that only the file of a form tells, and for the lines; each time it is looked for, too. While a
// `SourceCache::Scope` is open, each file is looked for and read once.

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "services/FolderCache.h"
#include "services/SourceText.h"

namespace vendrel {

/// What was read of files while a scope is open, in the workspace in use. A file that changes
/// meanwhile is seen as it was when it was first read.
class SourceCache {
 public:
  /// Scopes nest; what was read is dropped when the outermost one ends.
  class Scope {
   public:
    Scope();
    ~Scope();
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

   private:
    SourceCache& mCache;
  };

  /// Whether a scope is open, so that what is read is kept.
  static bool Keeps();
  /// The bytes of a file, kept for `Text` and further questions while a scope is open: then they
  /// stand until the next call. Raises as `ReadWholeFile` does.
  static std::string_view Bytes(const std::string& nativePath);
  /// The bytes that were read of a file and not decoded yet, for a thread that takes over; nothing
  /// where there are none.
  static std::optional<std::string> TakeBytes(const std::string& nativePath);
  /// Has a file read with these bytes, in a scope.
  static void Put(const std::string& nativePath, std::string bytes);
  /// Where that path led when it was looked for while a scope is open; null if it was not.
  static const FoundPath* Seen(const std::string& nativePath);
  /// Has it lead there. Nothing without a scope, or where it is not known what is there.
  static void Saw(const std::string& nativePath, const FoundPath& found);
  /// Has the paths looked for anew that did not lead to what is there as written: folders changed.
  static void ForgetLost();
  /// The decoded file, from what was read where it was. Raises as `ReadWholeFile` does.
  static std::shared_ptr<const SourceText> Text(const std::string& nativePath,
                                                const CodePage& page);

 private:
  struct File {
    std::string Bytes;
    std::shared_ptr<const SourceText> Text;
  };
  static SourceCache& Current();

  int mScopes = 0;
  std::string mUnkept;
  std::unordered_map<std::string, File> mFiles;
  std::unordered_map<std::string, FoundPath> mSeen;
};

}  // namespace vendrel
