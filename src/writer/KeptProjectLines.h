#pragma once
// The project file as it was read, with only those lines rewritten whose value is another one now.

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "project/VBProject.h"
#include "writer/LineEdit.h"
#include "writer/OutputNames.h"
#include "writer/SourceStream.h"

namespace vendrel {

/// Writes the lines of a project file in their order. A value that changed is put into its line:
/// key, blanks and quotation marks stay. What is new joins its like, what is gone takes its line
/// along. A path is rewritten where it would no longer lead to its file.
class KeptProjectLines {
 public:
  /// The project must have its `FileLines`.
  KeptProjectLines(VBProject& project, OutputNames& names, SourceStream& stream);
  void Run();

 private:
  struct SettingRow;

  void KeptLines();
  void Modules();
  void Module(std::size_t index, Component& module);
  void References();
  void Reference(std::size_t index, vendrel::Reference& reference);
  void ReferencePath(std::size_t index, const vendrel::Reference& reference);
  bool LeadsTo(std::size_t index, const vendrel::Reference& reference,
               const VBProject& project) const;
  void Documents();
  void Document(std::size_t index, const std::string& entry, bool changed);
  void Settings();
  void Setting(const SettingRow& row);
  void SetValue(std::size_t index, const SettingRow& row, const std::string& value);
  void CompatiblePath(std::size_t index);
  void Relocate(std::size_t index, Region place, const std::string& path);

  std::string_view Text(std::size_t index) const { return mFile.Text(mFile.Lines[index]); }
  std::string Resolved(std::string_view path, FileSystemObject& base) const;
  std::string RelativePath(const FileSystemObject& file) const;
  std::string DocumentLine(const std::string& entry) const;
  std::string DocumentPath(const std::string& entry) const;
  static bool BeginsSection(std::string_view line);
  std::ptrdiff_t LastOf(bool (*is)(const ProjectFileLine&)) const;
  void AddBehind(std::ptrdiff_t index, std::string text) {
    mBehind[index].push_back(std::move(text));
  }

  VBProject& mProject;
  const ProjectFileLines& mFile;
  OutputNames& mNames;
  SourceStream& mStream;
  const bool mSameLocation;
  std::vector<LineEdit> mEdits;
  /// New lines by the index of the line they stand behind; -1: in front of all.
  std::map<std::ptrdiff_t, std::vector<std::string>> mBehind;
};

}  // namespace vendrel
