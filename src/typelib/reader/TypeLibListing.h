#pragma once
// The raw library as people and programs read it. Nothing is looked up in other libraries unless
// the library has a finder.

#include <string>
#include <string_view>

#include "typelib/reader/TypeLibInfo.h"

namespace vendrel::typelib {

/// In the manner of an IDL file: every entry in library order with its attributes, members with id,
/// flags, types, constants and help strings as stored. Lines end with LF.
std::string TypeLibListing(const TypeLibInfo& library);

/// Objects with the member names of the reading service, and "Stored" parts for what it does not
/// show. `indent` below 0 gives one line for each entry. `tool`: the program that writes, with its
/// version; the document begins with it and with the version of the format. Empty: it does not.
std::string TypeLibJson(const TypeLibInfo& library, int indent = 2, std::string_view tool = {});

/// A type as IDL writes it: "BSTR*", "SAFEARRAY(VARIANT)", "IFoo*". A type of another library that
/// cannot be found reads `stdole2.tlb!{0BE35203-...}` or `stdole2.tlb!#3`. Dimensions of a fixed
/// array stand behind it in brackets.
std::string TypeText(const VarTypeInfo& type);
/// Name of an entry or, for an imported type that cannot be found, its place.
std::string ReferenceText(const TypeLibInfo& library, TypeReference reference);

}  // namespace vendrel::typelib
