#pragma once
// Members of a library entry as procedures, events and constants of its module.

#include <memory>
#include <string>

#include "project/VBProject.h"
#include "typelib/LibraryTypes.h"
#include "typelib/reader/TypeLibInfo.h"

namespace vendrel {

/// Adds members to one module, in the order in which it is given them.
class MemberReader {
 public:
  MemberReader(VBProject& project, const typelib::TypeLibInfo& library,
               const typelib::TypeInfo& entry, Component& component)
      : mProject(project), mLibrary(library), mEntry(entry), mComponent(component) {}

  /// A procedure, or the two halves of a property for a variable. `secondary` is the interface
  /// that the class implements with it; empty for its own members.
  void AddBlock(const typelib::MemberInfo& member, const std::string& secondary);
  /// An event; hidden ones are left out.
  void AddEvent(const typelib::MemberInfo& member);

 private:
  std::shared_ptr<Block> NewBlock(const typelib::MemberInfo& member, const std::string& secondary);
  bool TakeBlockType(Block& block, const typelib::MemberInfo& member, const ShownType& type);
  void TakeReturnType(Block& block, const ShownType& type);
  void AddGetter(Block& block);
  void AddConstant(const typelib::MemberInfo& member);
  std::string_view KeyOf(const Block& block, const typelib::MemberInfo& member) const;
  void ReportUnreadable(const typelib::MemberInfo& member, const ShownType& type) const;

  VBProject& mProject;
  const typelib::TypeLibInfo& mLibrary;
  const typelib::TypeInfo& mEntry;
  Component& mComponent;
  /// The type of the last function: where it could not be read, a variable behind it is left out
  /// too.
  ShownType mLast;
};

}  // namespace vendrel
