#pragma once
// The project file, rebuilt line by line from what the reader kept and what it took apart.

#include <map>
#include <string>

#include "project/VBProject.h"
#include "writer/OutputNames.h"
#include "writer/SourceStream.h"

namespace vendrel {

/// Writes the project file to `OutputFileName`.
class ProjectFileWriter {
 public:
  /// With `copyOthers` the files beside the modules, related documents and the like come along.
  ProjectFileWriter(VBProject& project, OutputNames& names, bool copyOthers);
  /// Raises what the file raises; the file then stays as it was.
  void Run();

 private:
  bool KeepsLines() const;
  void CopyOthers();
  void Rows();
  void KeptLine(const std::string& line);
  void FirstLine();
  void References();
  void Modules();
  void RelatedDocuments();
  FileSystemObject CopyDocument(const std::string& entry);
  void KeptLines();
  void Startup();
  void Compatibility();
  void Target();
  void LinesBehind();
  void Quoted(std::string_view key, std::string_view value);

  VBProject& mProject;
  OutputNames& mNames;
  const bool mCopyOthers;
  const bool mSameLocation;
  SourceStream mStream;
  /// Lines of the file whose bytes do not follow from their text.
  std::map<std::string, std::string, std::less<>> mRawLines;
};

}  // namespace vendrel
