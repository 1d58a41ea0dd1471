#pragma once
// One source file of a VB.NET project on its way into the tree.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "dotnet/SourceDocumentation.h"
#include "dotnet/SourceLines.h"
#include "dotnet/TypeStatements.h"
#include "project/Assembly.h"
#include "project/ProjectFile.h"

namespace vendrel {

/// In which source files what stands.
struct SourcePlaces {
  /// The files by their texts: lines of blocks point into them.
  std::unordered_map<const std::string*, WeakHandle<ProjectFile>> ByText;
  /// What has no lines of its own, where it stands in another file than its module: variables,
  /// events, declares and interfaces of the later parts of a `Partial` type.
  struct Place {
    WeakHandle<CodeElement> Element;  // another may stand where one went
    WeakHandle<ProjectFile> File;
  };
  std::unordered_map<const CodeElement*, Place> OfLaterParts;

  /// The file of an element of a source module; null for that of the module.
  ProjectFile* FileOf(const CodeElement& element) const;
};

/// What the scan of a file leaves for its later steps.
struct ScannedSource {
  /// What stands outside of types, as a module that is in no list; null in the classic reading.
  std::shared_ptr<Component> Outside;
  /// Every module whose lines the file holds, in their order; one that was refused too.
  std::vector<std::shared_ptr<Component>> Parts;
  /// The names that the modules were read with.
  std::unordered_map<const Component*, std::string> NamesRead;
  /// Delegates, which are no members of their modules.
  std::vector<std::shared_ptr<Block>> Delegates;
  /// What the project imports, for all of its files; null where nothing told it.
  std::shared_ptr<const std::vector<std::string>> ProjectImports;
  /// One for all files of a project.
  std::shared_ptr<SourcePlaces> Places;
  /// Documentation in the file (`NetXmlComments`), until it is placed.
  SourceDocumentation Documentation;
  bool NamesResolved = false;
  bool InheritanceResolved = false;
};

/// The key of a type in its project: its namespace, "." and its name; without namespace ".Name", in
/// the complete reading (`NetNames`) "Name".
std::string KeyOfType(const Namespace* space, std::string_view name, const ReadingRules& rules);

/// The assembly of a project; one of its own is made where it has none.
Assembly& AssemblyOf(VBProject& project);

/// Turns the enumeration that the intake read in an `Enum` type into fields of the type.
/// `underlying` is the type of its members as written; empty: none is.
void TurnEnumerationIntoFields(Component& component, std::string_view underlying);

/// Gives the comments that wait in `from` for a namespace to it, and forgets the others.
void TakeNamespaceComments(Component& from, Namespace& space);

/// Gives back what the modules of a project have kept for further lines. Once a project: a type may
/// stand in many files.
void GiveBackRoom(VBProject& project);

/// Scans a file. The parts of the rule that the readings share; each reading routes lines its own
/// way.
class SourceScan {
 public:
  SourceScan(ProjectFile& file, std::shared_ptr<const SourceText> source);
  void Run();

 private:
  struct OpenType {
    std::shared_ptr<Component> Module;
    std::string Underlying;
    /// The first block of this part of the type.
    WeakHandle<Block> FirstBlock = {};
    /// What the type had of earlier parts: events, declares, interfaces, and in the section of its
    /// declarations fields, to which those behind procedures go.
    bool IsLaterPart = false;
    std::size_t Events = 0, Declares = 0, Interfaces = 0;
    std::size_t Variables = 0, Constants = 0;
    /// Blocks that lines of a later part went to.
    std::vector<WeakHandle<Block>> Blocks = {};
  };

  // Places of lines in the file: how many, and their sum.
  struct LinePlaces {
    std::size_t Count = 0, Sum = 0;
    void Add(std::size_t place) {
      ++Count;
      Sum += place;
    }
    friend bool operator==(const LinePlaces&, const LinePlaces&) = default;
  };

  std::shared_ptr<Component> NewHolder();
  // As described: lines outside of types go with the next type.
  void Take(const SourceStatement& statement);
  void TakeNamespace(const TypeStatement& opened, std::string_view text);
  void TakeType(const TypeStatement& opened, std::string_view text);
  void TakeEnd(const TypeStatement& ended, std::string_view text);
  std::shared_ptr<Component> CreateComponent(std::shared_ptr<Component> buffer,
                                             const TypeStatement& type, Namespace* space);
  // Every line in its place (`NetKeepSource`).
  void TakeKept(const SourceStatement& statement);
  void FeedHeader(const TypeStatement& opened, std::size_t statements,
                  const SourceStatement& statement);
  bool TakeCondition(const SourceStatement& statement);
  void OpenKept(const TypeStatement& type);
  void CloseKept(const TypeStatement& ended);
  void CloseInnermost();
  void NoteBlock(const Component& component);
  void NotePlaces(const OpenType& part);
  void NotePlace(CodeElement& element) {
    mScanned.Places->OfLaterParts[&element] = {&element, &mFile};
  }
  std::shared_ptr<Component> PartOf(const TypeStatement& type, const std::string& name);
  void TakeCommentsAbove(Component& above, Component& type);
  void NoteRead(const SourceStatement& statement);
  void AddPlaces(const Block& block, LinePlaces& places) const;
  bool HoldsEachLine() const;
  void KeepLostLines();
  bool TakeEndLines(const SourceStatement& statement, const TypeStatement& ended);
  Component& Innermost() { return mTypes.empty() ? *mScanned.Outside : *mTypes.back().Module; }

  std::vector<TypeStatement> TypeStatementsOf(const SourceStatement& statement) const;
  void TakeImports(std::string_view text);
  Namespace* CreateNamespace(std::string_view name, bool isGlobal = false);
  std::string FullNamespace(std::string_view name) const;
  Namespace* GetNamespace() const { return mSpaces.empty() ? nullptr : mSpaces.back(); }
  void EnterNamespace(Namespace* space);
  void AddComponent(const std::shared_ptr<Component>& component);
  std::shared_ptr<Component> NewPart();
  void FeedLines(Component& component, const SourceStatement& statement);
  void AddLine(Component& component, std::string_view line, std::string_view next = {});
  void StoreRaw(Component& component, std::string_view line, LineTypeEnum type = OTHER);
  void NoteDelegate(const std::shared_ptr<Block>& block);
  void FinishPart(Component& component);

  ProjectFile& mFile;
  VBProject& mProject;
  Assembly& mAssembly;
  const ReadingRules& mRules;
  ScannedSource& mScanned;
  std::shared_ptr<const SourceText> mSource;
  std::vector<Namespace*> mSpaces;
  std::vector<OpenType> mTypes;
  std::shared_ptr<Component> mCurrent;
  std::shared_ptr<Component> mConditions;  // a module of its own for those of the whole file
  std::int32_t mLine = 0;
  LinePlaces mRead;
};

}  // namespace vendrel
