#pragma once
// What a host with a screen offers: captions while something takes long, the choice how comments
// meet, folders of documentation, dialogs. Nobody needs to install any of it.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vendrel {

/// The document of the host that a plug-in works for.
class PlugInHost {
 public:
  virtual ~PlugInHost() = default;
  /// Shows what is being done.
  virtual void UpdateStatusCaption(std::string_view) {}
  /// How comments of files meet those that are there: 1 keep these, 2 add to them, 3 replace them;
  /// 0 acts as 2.
  virtual int helpdescriptionimport() { return 2; }
};

/// Where the documentation of assemblies outside of a set lies.
struct CommentFileLocation {
  /// Pattern for the leaf names of assemblies ("System.*.dll"), case ignored.
  std::string LocationPattern;
  /// Folder of their documentation files, with or without a closing backslash.
  std::string LocationFolder;
};

/// The settings of the host.
class HostSettings {
 public:
  virtual ~HostSettings() = default;
  virtual std::vector<CommentFileLocation> CommentFileLocations() { return {}; }
};

/// The pointer of the host.
class WaitCursor {
 public:
  virtual ~WaitCursor() = default;
  /// Shows that work is going on; gives what `Restore` takes.
  virtual int Show() { return 0; }
  virtual void Restore(int) {}
};

/// The dialog in which a user names a file.
class FileDialog {
 public:
  virtual ~FileDialog() = default;
  /// The path chosen; empty if the dialog was cancelled. `filter` is made of pairs
  /// "words|patterns".
  virtual std::string OpenFile(std::string_view, std::string_view) { return {}; }
};

/// The objects of the host in a workspace. Put others in their place; none is ever null.
struct HostObjects {
  std::shared_ptr<PlugInHost> PlugIn = std::make_shared<PlugInHost>();
  std::shared_ptr<HostSettings> Settings = std::make_shared<HostSettings>();
  std::shared_ptr<WaitCursor> Cursor = std::make_shared<WaitCursor>();
  std::shared_ptr<FileDialog> Dialog = std::make_shared<FileDialog>();
};

}  // namespace vendrel
