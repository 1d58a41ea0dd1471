#pragma once
// Reads the text of the table. It is a sequence of words, parted by blanks and line ends; words in
// lower case tell what the ones behind them are:
//
//   library VBA                      what follows belongs to it
//   module Strings                   a type: module, class, control, enum, part (a list of members
//                                    that types share, itself no type)
//   alias OLE_COLOR:Long             another name of a type
//   new  global  default Text        of the open class: it can be made; its members are globals;
//   its
//                                    default member
//   with Font Drag                   the members of these parts
//   fun sub get let put event const  the members behind are functions, subs, properties (read only,
//                                    both, write only), events, constants; those of an enum are
//                                    constants without that word
//
// A member is `Name(Parameter,...):Type`, without a type a Variant; `Type()` is an array of it. A
// parameter is `Name:Type`, `[Name:Type]` if it is optional, `&Name:Type` if the callee writes it,
// `*Name` if it takes all that are left. `vbOK=1` is a constant with its value.

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "uses/Builtins.h"

namespace vendrel {

class BuiltinReader {
 public:
  explicit BuiltinReader(Builtins& table) : mTable(table) {}
  void Read(std::string_view text);
  /// Lays the members out behind their types; once, behind the last text.
  void Finish();

 private:
  struct RawMember {
    BuiltinMember Member;  // without owner and parameters
    std::size_t FirstParameter = 0, ParameterCount = 0;
  };
  struct RawType {
    std::vector<RawMember> Members;
    std::string_view Default;
  };
  bool TakeKeyword(std::string_view word);
  void TakeArgument(std::string_view word);
  void OpenType(std::string_view name);
  void AddMember(std::string_view word);
  void AddParameters(std::string_view list);
  void Fault(std::string_view what, std::string_view word);

  Builtins& mTable;
  std::string_view mLibrary;
  std::string_view mMode;  // the keyword that tells what the next word is
  RawType* mOpen = nullptr;
  bool mOpenIsType = false;  // and no part
  std::map<std::string_view, RawType> mParts;
  std::vector<RawType> mRaw;  // of each type of the table
};

}  // namespace vendrel
