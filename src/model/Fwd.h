#pragma once
// Forward declarations of the tree's classes.

namespace vendrel {

class Assemblies;
class Assembly;
class Block;
class Blocks;
class CodeElement;
class CodeLines;
class CompilerConstant;
class CompilerConstants;
class Component;
class Components;
class Constant;
class Constants;
class DeclareDeclaration;
class DeclareDeclarations;
class EnumMember;
class EnumMembers;
class Enumeration;
class Enumerations;
class EventDeclaration;
class EventDeclarations;
class Example;
class Examples;
class Exception;
class Exceptions;
class ExternalDocs;
class FileSystemObject;
class Interface;
class Interfaces;
class Libraries;
class Library;
class Namespace;
class Namespaces;
class Parameter;
class Parameters;
class Permission;
class Permissions;
class ProjectFile;
class ProjectFiles;
class PropertyGroup;
class PropertyGroups;
class Reference;
class References;
class TaggedComment;
class TaggedCommentDef;
class TaggedComments;
class TransformationPlan;
class TypeResolver;
class UDT;
class UDTs;
class VBControl;
class VBControls;
class ModulesAhead;
class VBProject;
class VBProjectGroup;
class VBProjects;
class VSSItem;
class Variable;
class Variables;
class XmlDocument;
class XmlElement;
struct CodeLine;
struct ParsedLine;
struct ProjectOptions;

}  // namespace vendrel

namespace vendrel::typelib {

class TypeInfo;
class TypeLibInfo;
struct ParameterInfo;

}  // namespace vendrel::typelib
