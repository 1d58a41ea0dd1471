#include "output/PropertyMeanings.h"

#include <algorithm>
#include <tuple>

namespace vendrel {
namespace {

struct Meaning {
  std::string_view Property;
  /// Empty: of every class that has nothing of its own here.
  std::string_view Class;
  std::string_view Text;
};

// Sorted by property, then class.
constexpr Meaning kMeanings[] = {
    {"Access", "",
     "The access word of the declaration in capitals (\"PUBLIC\", \"PRIVATE\", "
     "\"FRIEND\"); empty where it has none."},
    {"AccessType", "",
     "`Access` as a value: private, public, friend and so on; a missing word counts as the "
     "language has it."},
    {"AddLineNumbers", "",
     "Written procedures get line numbers, except in modules with `NoLineNumbers`."},
    {"Alias", "",
     "The name that the procedure has in its library, or its ordinal (\"#100\"), as "
     "written behind Alias; empty without one."},
    {"AssemblyType", "",
     "Whether it was read from a compiled file or from the source of a VB.NET project."},
    {"AutoIncrement", "",
     "Each build raises the third part of the version by 1 (AutoIncrementVer of the "
     "project file)."},
    {"BlockType", "",
     "What the block is: Sub, Function, one of the procedures of a property, declarations, "
     "attributes."},
    {"Blocks", "",
     "Procedures in the order of the source, and in front of them the attributes and the "
     "declarations of the module."},
    {"Caption", "Example", "What the example is called, of its tag."},
    {"Caption", "VBControl",
     "The caption that the designer stored, with \"&\" before the access key; empty where "
     "it lies in the companion file or there is none."},
    {"ClassHierarchy", "",
     "Full names from the type itself up to its root, with commas between; VB.NET and "
     "assemblies alone."},
    {"CodeLines", "",
     "The lines of the block with their types, counted from 1; none after "
     "`UnloadSourceCode`."},
    {"CommentFile", "",
     "The file of tagged comments to be brought into the tree (--comment-file); empty for "
     "none."},
    {"CompatibleFileName", "",
     "The compiled file that builds stay compatible with (CompatibleEXE32 of the project "
     "file)."},
    {"CompatibleMode", "",
     "How builds stay compatible with that file: not, as a project, in binary form."},
    {"CompilerConstants", "",
     "Constants of conditional compilation: those of the project file and those that were "
     "added."},
    {"Component", "", "The module that it is declared in; None once that has gone."},
    {"Components", "",
     "The modules in the order of the project file. Walking them loads what is not loaded."},
    {"Constants", "",
     "Constants that the block declares: of a declarations block those of the module."},
    {"Declarations", "", "Declare statements of the module."},
    {"DefaultMemberName", "",
     "The member that stands for an object of the class: VB_UserMemId = 0, Default in "
     "VB.NET."},
    {"DefaultValue", "", "The default of an optional parameter as written; empty without one."},
    {"DelegateName", "",
     "The delegate behind As of a VB.NET event, else the one made for it (its name and "
     "\"EventHandler\")."},
    {"DelegateQualifiedName", "", "The full name of the delegate that the block was made from."},
    {"Description", "",
     "The description to show: the tagged one, else the untagged one, else one that the "
     "kind of element makes itself."},
    {"Description", "Example", "What introduces the example."},
    {"Description", "Exception", "What the documentation says of when it is raised."},
    {"Description", "Permission", "What the documentation says of the demand."},
    {"Description", "Reference", "That of the project referred to, else the name."},
    {"DoNotPopulateComponents", "",
     "Only the project file is read; modules load when they are asked for."},
    {"DocumentationLocation", "",
     "Where the interface is described, as its tag says; empty without one."},
    {"DontPreLoadComponentDeclarations", "",
     "Modules are not read up to their first procedure in advance."},
    {"DotNetReferencePath", "",
     "Folders in which assemblies are looked for, with \";\" between (ReferencePath of the "
     "user file)."},
    {"EXEName32", "",
     "The file that a build makes, without folder (ExeName32 of the project file)."},
    {"Enumerations", "", "Enumerations declared here."},
    {"EventDeclarations", "", "Events that the module declares."},
    {"Examples", "", "Examples that tags add to this element."},
    {"ExamplesOnlyFlag", "",
     "A mark for clients: only examples are documented. Nothing here acts on it."},
    {"Exceptions", "", "Exceptions that the documentation says are raised."},
    {"ExcludeFlag", "", "A tag keeps it out of documentation."},
    {"FileName", "", "The file that it was read from."},
    {"FileName", "Reference", "The file referred to; empty where the line names none."},
    {"FileType", "", "Standard module, class, form and so on, by the line of the project file."},
    {"FirstBlockInCode", "", "The procedure of the property that stands first in the source."},
    {"HelpContextID", "",
     "The number of its help topic; 0 for none. Of attributes of the source, or as "
     "assigned."},
    {"HelpContextIDsAssigned", "", "Help context IDs have been assigned to all that may have one."},
    {"HelpFile", "", "The help file as the project file names it (HelpFile)."},
    {"HighestHelpContextID", "", "The largest help context ID seen while loading; 0 for none."},
    {"IconForm", "", "The form whose icon the program has (IconForm of the project file)."},
    {"Implemented", "",
     "The member is written in this type itself: it overrides what is inherited, or has "
     "overloads there."},
    {"ImplementsName", "", "What stands behind Implements of a VB.NET member, as written."},
    {"InLine", "", "The example is shown where it is named, as its file says."},
    {"IncludeFlag", "", "A mark for clients: part of generated documentation. True at first."},
    {"Increment", "", "The third part of the version (RevisionVer of the project file)."},
    {"Index", "", "The place in a control array, from 0; as stored for any other control."},
    {"InheritedFrom", "",
     "Full name of the type that the member was inherited from; empty for one of its own."},
    {"InheritsFrom", "", "Full name of the base type; empty without one, and in classic source."},
    {"Interface", "", "Name of the interface whose member it implements; empty for none."},
    {"Interfaces", "", "Interfaces: those of a namespace, or the names that a module implements."},
    {"IsAbstract", "", "MustOverride of a member, MustInherit of a type."},
    {"IsArray", "", "Declared with parentheses, or by an array type."},
    {"IsByRef", "", "The callee may change the argument: ByRef, or in classic source no ByVal."},
    {"IsConstructor", "", "It makes objects: New of VB.NET, \".ctor\" of an assembly."},
    {"IsDelegate", "", "It is the signature of a delegate, and no procedure."},
    {"IsEnumeration", "", "The module stands for an enumeration of VB.NET or of an assembly."},
    {"IsEventProcedure", "",
     "It handles an event of a control, of the module itself or of a WithEvents variable."},
    {"IsExample", "", "A tag makes it an example of the project."},
    {"IsFriend", "", "Declared with Friend."},
    {"IsFunction", "", "It gives a value: Function and not Sub."},
    {"IsHiddenMember", "", "The hidden attribute is set: browsers do not show it."},
    {"IsInterface", "", "It is an interface of VB.NET, of an assembly or of a type library."},
    {"IsMDI", "", "The form holds child windows."},
    {"IsNew", "", "A tag marks it as new in this release."},
    {"IsOptional", "", "Declared with Optional; a ParamArray counts as one in libraries."},
    {"IsSealed", "", "NotInheritable of a type, NotOverridable of a member."},
    {"IsShadow", "", "Declared with Shadows."},
    {"IsStatic", "", "Static in classic source, Shared in VB.NET."},
    {"IsStructure", "", "It is a structure of VB.NET or of an assembly."},
    {"IsVirtual", "", "Declared with Overridable."},
    {"IsWithEvents", "", "Declared with WithEvents."},
    {"Language", "Example", "The language of its code, of its tag."},
    {"LastError", "", "Text of the failure that a build or a load came to last; empty for none."},
    {"Libraries", "", "Libraries that Declare statements name, each with its Declares."},
    {"LineIndex", "",
     "1-based line of its declaration within the declarations block; 0 where none is "
     "known."},
    {"LineNumberPerModule", "", "Line numbers begin anew in each module; else they run on."},
    {"LoadState", "",
     "How far the module is read: not, its header, wholly, wholly with its lines given "
     "back."},
    {"LoadTypeLibHelpStrings", "", "Help strings of a type library become descriptions."},
    {"Locale", "",
     "The language of the library referred to, as the line of the project file has it."},
    {"MajorVersion", "", "The first part of the version (MajorVer of the project file)."},
    {"Members", "", "The members in the order of the source."},
    {"MinorVersion", "", "The second part of the version (MinorVer of the project file)."},
    {"Name", "", "The name as declared; names are compared without regard to case."},
    {"Name", "Assembly", "The name of the assembly, without folder and extension."},
    {"Name", "Component",
     "The name of the module: VB_Name of its file. Of a .NET type the name without "
     "namespace."},
    {"Name", "Exception", "The type of the exception, as written."},
    {"Name", "Library", "The file of the library as the Declare statement names it."},
    {"Name", "Permission", "The permission that is demanded."},
    {"Name", "PropertyGroup", "The name that the procedures of the property share."},
    {"Name", "VBControl", "The name of the control, with its index in an array: \"cmd(0)\"."},
    {"Namespace", "", "The namespace of the type; None outside of .NET."},
    {"Namespaces", "", "Namespaces of the assembly, each with its types."},
    {"NoLineNumbers", "", "The module is written without line numbers, whatever the project says."},
    {"OptionBase", "", "The lowest index of arrays, 0 or 1 (Option Base)."},
    {"OptionCompare", "",
     "How texts are compared (Option Compare), as written; empty without such a line."},
    {"OptionExplicit", "", "The module has Option Explicit: every variable is declared."},
    {"OptionPrivate", "",
     "The module has Option Private Module: nothing of it is seen outside of the project."},
    {"OutputFileName", "", "Where the project is written to; the file it was read from at first."},
    {"OverloadBlocks", "",
     "Overloads of the name, gathered under this one; empty where there are none."},
    {"OverloadEventDeclarations", "", "Events of the same name, of which this one is the first."},
    {"Overloaded", "", "One of several of its name."},
    {"Parameters", "", "The parameters in their order."},
    {"Parent", "", "What it lies in: the container of a control; None for the form itself."},
    {"ParentProject", "", "The project whose file has this reference."},
    {"Path32", "", "The folder that a build writes to (Path32 of the project file)."},
    {"Permissions", "", "Permissions that the documentation says are demanded."},
    {"PersistSource", "", "Kept for clients; nothing here acts on it."},
    {"PlugInFlag", "", "A mark for clients; set for assemblies."},
    {"ProjectGUID", "", "The id of the project referred to; empty outside of VB.NET."},
    {"ProjectName", "", "Name of the project: Name of the project file."},
    {"ProjectSourceAccess", "",
     "Whether the project can be written: sources can, compiled files cannot."},
    {"ProjectSourceType", "",
     "What the project was read from: a project file, or a type library or assembly."},
    {"ProjectType", "",
     "What a build makes: program, control, library, ActiveX EXE (Type of the project "
     "file)."},
    {"PropertyCommentsFrom", "",
     "Which procedures of a property its comments are taken from: all, the Get, or the "
     "others."},
    {"PropertyGetBlock", "", "The Get procedure; None without one."},
    {"PropertyGroups", "", "Properties, each with its Get, Let and Set."},
    {"PropertyLetBlock", "", "The Let procedure; None without one."},
    {"PropertySetBlock", "", "The Set procedure; None without one."},
    {"QualifiedName", "",
     "The name by which it is found: \"Project~Module~Member\"; empty for what has none."},
    {"RefCount", "", "A counter for clients, 0 at first; nothing here raises it."},
    {"ReferencedProject", "", "The project behind the reference, where it is loaded; else None."},
    {"References", "", "What the project refers to: projects, libraries, controls, assemblies."},
    {"RelatedDocuments", "",
     "Files that the project file names beside its modules (RelatedDoc, ResFile32)."},
    {"RelationshipLevels", "",
     "How many levels of relations a tag asks to be shown; 0 for none said."},
    {"RelationshipResolved", "", "Whether `RelationshipTo` was found. A mark for clients."},
    {"RelationshipTo", "",
     "What the parameter stands in relation to, as a tag says; empty without one."},
    {"ReturnDescription", "", "What a tag or documentation says of the value that it returns."},
    {"ReturnType", "", "The type that it gives, as written or by default; empty for a Sub."},
    {"ReturnTypeIsArray", "", "It gives an array."},
    {"RootFlag", "", "A mark for clients: documentation starts here."},
    {"RootNamespace", "", "The namespace in front of all those of a VB.NET project."},
    {"SourceLine", "", "1-based line of the file on which it is declared; 0 where none is known."},
    {"Startup", "",
     "What the program starts with: \"Sub Main\" or the name of a form (Startup of the "
     "project file)."},
    {"State", "", "Kept for clients; empty at first."},
    {"Structures", "", "Structures of the namespace."},
    {"TaggedCommentUpgradeFlag", "",
     "Tags whose definition names this text are not brought to their newer form."},
    {"TaggedComments", "",
     "Tagged comments that stay with the element, in the order in which they were met."},
    {"TaggedDescription", "",
     "The description of tagged comments; lines are parted by \"<crlf>\"."},
    {"TemplateName", "", "The template that a documentation client uses; \"Default\" at first."},
    {"Text", "VBControl", "The Text property that the designer stored; empty without one."},
    {"TypeName", "", "The type as written behind As; empty without one."},
    {"UDTs", "", "Type statements of the module."},
    {"UnTaggedBlocks", "", "Plain comments describe procedures."},
    {"UnTaggedDescription", "",
     "The text of plain comments at its declaration; lines are parted by \"<crlf>\"."},
    {"UnTaggedEnumerations", "", "Plain comments describe enumerations."},
    {"UnTaggedEvents", "", "Plain comments describe events."},
    {"UnTaggedUDTs", "", "Plain comments describe Type statements."},
    {"UnTaggedVariables", "", "Plain comments describe variables and constants."},
    {"UpgradeLegacyTaggedcomments", "", "Older forms of tags are brought to their newer ones."},
    {"VBControls", "", "The controls that lie in it, in the order of the file."},
    {"VBNETAssemblyName", "",
     "The file that the VB.NET project builds, without extension (AssemblyName)."},
    {"VBNETProjectGUID", "", "The id of the VB.NET project (ProjectGuid)."},
    {"VBProject", "", "The project that it belongs to; None where it stands alone."},
    {"VMCommentBuffer", "",
     "Comments of the lines read last, waiting for what they describe. For readers alone."},
    {"Value", "CompilerConstant", "The value as written or given; True is -1."},
    {"Variables", "",
     "Variables that the block declares: of a declarations block those of the module."},
    {"Version", "Reference", "The version of the library referred to, as the line has it."},
    {"WasReadFromTypeLibrary", "", "It comes from a compiled file: a type library or an assembly."},
    {"WriteHelpDescriptions", "", "Descriptions are written as VB_Description attributes."},
    {"y", "", "The top edge in units of its container, as stored; twips for most."},
};

constexpr bool IsBefore(const Meaning& a, const Meaning& b) {
  return a.Property != b.Property ? a.Property < b.Property : a.Class < b.Class;
}
static_assert(std::is_sorted(std::begin(kMeanings), std::end(kMeanings), IsBefore));

}  // namespace

std::string_view MeaningOf(std::string_view className, std::string_view property) {
  std::string_view text;
  for (auto row = std::lower_bound(std::begin(kMeanings), std::end(kMeanings),
                                   Meaning{property, {}, {}}, IsBefore);
       row != std::end(kMeanings) && row->Property == property; ++row)
    if (row->Class.empty() || row->Class == className) text = row->Text;
  return text;
}

}  // namespace vendrel
