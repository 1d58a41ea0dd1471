// Signatures are blobs in prefix form: a byte says what comes, and what it is made of follows.
//
//   field      06 type
//   method     convention [number of type parameters] number of parameters, result, parameters
//   property   08 or 28, number of parameters, type, parameters
//   type       01..0E            a primitive, void and string among them
//              0F 10 1D type     a pointer, by reference, a vector of it
//              11 12 token       a value type or class: TypeDef, TypeRef or TypeSpec
//              13 1E number      a type parameter of the type, of the method
//              14 type shape     an array: rank, sizes, lower bounds
//              15 type n types   a generic type and its n arguments
//              1F 20 token type  a modifier, which is passed over, in front of any type
//
// Numbers are compressed: one, two or four bytes, by the topmost bits of the first. A TypeSpec
// leads to a blob of its own, so a file can build rings and trees that grow without end from few
// bytes: depth, length of text and steps are bounded (MetadataLimits.h).

#include "dotnet/metadata/MetadataSignatures.h"

#include <charconv>

#include "dotnet/metadata/MetadataLimits.h"

namespace vendrel::metadata {
namespace {

enum Element : std::uint8_t {
  eVoid = 0x01,
  eString = 0x0E,
  ePointer = 0x0F,
  eByRef = 0x10,
  eValueType = 0x11,
  eClass = 0x12,
  eVar = 0x13,
  eArray = 0x14,
  eGeneric = 0x15,
  eTypedByRef = 0x16,
  eNativeInt = 0x18,
  eNativeUInt = 0x19,
  eFunction = 0x1B,
  eObject = 0x1C,
  eVector = 0x1D,
  eMethodVar = 0x1E,
  eRequired = 0x1F,
  eOptional = 0x20,
  eSentinel = 0x41,
  ePinned = 0x45,
};

enum Convention : std::uint8_t { kKind = 0x0F, kVarArg = 5, kGeneric = 0x10, kHasThis = 0x20 };
constexpr std::uint8_t kFieldSignature = 6;

constexpr std::string_view kPrimitives[] = {
    {},
    "System.Void",
    "System.Boolean",
    "System.Char",
    "System.SByte",
    "System.Byte",
    "System.Int16",
    "System.UInt16",
    "System.Int32",
    "System.UInt32",
    "System.Int64",
    "System.UInt64",
    "System.Single",
    "System.Double",
    "System.String",
};

std::string_view PrimitiveName(std::uint8_t element) {
  if (element <= eString) return kPrimitives[element];
  switch (element) {
    case eTypedByRef: return "System.TypedReference";
    case eNativeInt: return "System.IntPtr";
    case eNativeUInt: return "System.UIntPtr";
    case eObject: return "System.Object";
    default: return {};
  }
}

}  // namespace

std::uint32_t TakeCompressed(ByteStream& blob) {
  const std::uint32_t first = blob.U8();
  if (first < 0x80) return first;
  if (first < 0xC0) return (first & 0x3F) << 8 | blob.U8();
  if (first >= 0xE0) throw DataError("a compressed number begins with no length");
  std::uint32_t value = first & 0x1F;
  for (int i = 0; i < 3; ++i) value = value << 8 | blob.U8();
  return value;
}

// "Outer`1+Inner`2" with three arguments is "Outer{a}+Inner{b,c}": each mark takes its own.
void AppendInstance(std::string& out, std::string_view name, const TypeArguments& arguments) {
  std::size_t used = 0;
  while (!name.empty()) {
    const std::size_t mark = name.find('`');
    out += name.substr(0, mark);
    if (mark == std::string_view::npos) return;
    name.remove_prefix(mark + 1);
    unsigned count = 0;
    const char* end = std::from_chars(name.data(), name.data() + name.size(), count).ptr;
    const auto digits = static_cast<std::size_t>(end - name.data());
    if (digits == 0 || used + count > arguments.size()) {
      out += '`';
      continue;
    }
    name.remove_prefix(digits);
    out += '{';
    for (unsigned i = 0; i < count; ++i) {
      if (i > 0) out += ',';
      out += arguments[used++];
    }
    out += '}';
  }
}

// Writes types to a text, one step of depth for each type inside another.
class Signatures::Writer {
 public:
  Writer(const Signatures& owner, const TypeArguments& arguments)
      : mOwner(owner), mArguments(arguments) {}

  void Write(ByteStream& blob, std::string& out, int depth = 0);
  TypeText Parameter(ByteStream& blob) {
    TypeText type;
    SkipModifiers(blob);
    type.IsByRef = blob.Peek() == eByRef;
    if (type.IsByRef) blob.Skip(1);
    Write(blob, type.Name);
    return type;
  }
  Instance TakeInstance(ByteStream& blob, int depth);
  Instance OpenSpec(std::uint32_t row, int depth);

 private:
  void WriteToken(Token type, std::string& out, int depth);
  void WriteArray(ByteStream& blob, std::string& out, int depth);
  void WriteFunction(ByteStream& blob, std::string& out, int depth);
  void WriteParameter(ByteStream& blob, std::string& out, bool isOfMethod);
  static void SkipModifiers(ByteStream& blob);
  Token TakeToken(ByteStream& blob) const {
    return mOwner.mImage.Tables().Decode(cTypeDefOrRef, TakeCompressed(blob));
  }
  static void Check(const std::string& out, int depth) {
    if (depth > kMaxSignatureDepth) throw DataError("a signature is too deep");
    if (out.size() > kMaxTypeText) throw DataError("the text of a type is too long");
  }

  const Signatures& mOwner;
  const TypeArguments& mArguments;
  std::size_t mWork = 0;
  friend class Signatures;
};

void Signatures::Writer::SkipModifiers(ByteStream& blob) {
  for (;;) {
    const std::uint8_t element = blob.Peek();
    if (element == eRequired || element == eOptional) {
      blob.Skip(1);
      TakeCompressed(blob);
    } else if (element == eSentinel || element == ePinned) {
      blob.Skip(1);
    } else {
      return;
    }
  }
}

void Signatures::Writer::Write(ByteStream& blob, std::string& out, int depth) {
  Check(out, depth);
  // Many blobs may lead to one that leads on: what is written is bounded by its length, the way to
  // it by this.
  if (++mWork > kMaxTypeText) throw DataError("a signature has too many parts");
  SkipModifiers(blob);
  const std::uint8_t element = blob.U8();
  if (const std::string_view name = PrimitiveName(element); !name.empty()) {
    out += name;
    return;
  }
  switch (element) {
    case ePointer:
      Write(blob, out, depth + 1);
      out += '*';
      break;
    case eByRef:
      Write(blob, out, depth + 1);
      out += '@';
      break;
    case eValueType:
    case eClass: WriteToken(TakeToken(blob), out, depth); break;
    case eVar:
    case eMethodVar: WriteParameter(blob, out, element == eMethodVar); break;
    case eArray: WriteArray(blob, out, depth); break;
    case eGeneric: {
      const Instance instance = TakeInstance(blob, depth);
      AppendInstance(out, mOwner.mNames.Of(instance.Definition), instance.Arguments);
      Check(out, depth);
      break;
    }
    case eFunction: WriteFunction(blob, out, depth); break;
    case eVector:
      Write(blob, out, depth + 1);
      out += "[]";
      break;
    default: throw DataError("element " + std::to_string(element) + " in a signature is unknown");
  }
}

void Signatures::Writer::WriteToken(Token type, std::string& out, int depth) {
  if (!type) throw DataError("a signature names a type that is not there");
  if (type.Of != tTypeSpec) {
    out += mOwner.mNames.Of(type);
    return;
  }
  ByteStream blob = mOwner.mImage.Blob(tTypeSpec, 0, type.Row);
  Write(blob, out, depth + 1);
}

void Signatures::Writer::WriteParameter(ByteStream& blob, std::string& out, bool isOfMethod) {
  const std::uint32_t number = TakeCompressed(blob);
  if (!isOfMethod && number < mArguments.size()) {
    out += mArguments[number];
    return;
  }
  out += isOfMethod ? "``" : "`";
  out += std::to_string(number);
}

// Bounds are read and not shown: documentation files write "0:" whatever they are.
void Signatures::Writer::WriteArray(ByteStream& blob, std::string& out, int depth) {
  Write(blob, out, depth + 1);
  const std::uint32_t rank = TakeCompressed(blob);
  if (rank == 0 || rank > kMaxDimensions) throw DataError("an array has too many dimensions");
  for (int list = 0; list < 2; ++list)
    for (std::uint32_t count = TakeCompressed(blob); count > 0; --count) TakeCompressed(blob);
  out += '[';
  for (std::uint32_t i = 0; i < rank; ++i) out += i == 0 ? "0:" : ",0:";
  out += ']';
}

void Signatures::Writer::WriteFunction(ByteStream& blob, std::string& out, int depth) {
  const std::uint8_t convention = blob.U8();
  if ((convention & kGeneric) != 0) TakeCompressed(blob);
  const std::uint32_t count = TakeCompressed(blob);
  out += "=FUNC:";
  Write(blob, out, depth + 1);
  out += '(';
  for (std::uint32_t i = 0; i < count; ++i) {
    if (i > 0) out += ',';
    Write(blob, out, depth + 1);
  }
  out += ')';
}

Signatures::Instance Signatures::Writer::TakeInstance(ByteStream& blob, int depth) {
  blob.Skip(1);
  Instance instance;
  instance.Definition = TakeToken(blob);
  if (!instance.Definition) throw DataError("a signature names a type that is not there");
  if (instance.Definition.Of == tTypeSpec)
    throw DataError("a generic type is made of one that is made already");
  const std::uint32_t count = TakeCompressed(blob);
  std::size_t length = 0;
  for (std::uint32_t i = 0; i < count; ++i) {
    std::string argument;
    Write(blob, argument, depth + 1);
    length += argument.size();
    if (length > kMaxTypeText) throw DataError("the text of a type is too long");
    instance.Arguments.push_back(std::move(argument));
  }
  return instance;
}

Signatures::Instance Signatures::Writer::OpenSpec(std::uint32_t row, int depth) {
  if (depth > kMaxSignatureDepth) throw DataError("a type leads to itself");
  ByteStream blob = mOwner.mImage.Blob(tTypeSpec, 0, row);
  SkipModifiers(blob);
  const std::uint8_t element = blob.U8();
  if (element == eGeneric) return TakeInstance(blob, depth);
  if (element != eValueType && element != eClass) throw DataError("a base is no class");
  const Token inner = TakeToken(blob);
  return inner.Of == tTypeSpec ? OpenSpec(inner.Row, depth + 1) : Instance{inner, {}};
}

MethodText Signatures::Method(ByteStream blob, const TypeArguments& arguments) const {
  Writer writer(*this, arguments);
  MethodText method;
  const std::uint8_t convention = blob.U8();
  method.HasThis = (convention & kHasThis) != 0;
  method.IsOpen = (convention & kKind) == kVarArg;
  if ((convention & kGeneric) != 0) method.Arity = TakeCompressed(blob);
  const std::uint32_t count = TakeCompressed(blob);
  if (count > kMaxParameters || count > blob.Left())
    throw DataError("a signature has " + std::to_string(count) + " parameters and ends before");
  method.Result = writer.Parameter(blob);
  std::size_t length = 0;
  for (std::uint32_t i = 0; i < count; ++i) {
    method.Parameters.push_back(writer.Parameter(blob));
    length += method.Parameters.back().Name.size();
    if (length > kMaxSignatureText) throw DataError("the text of a signature is too long");
  }
  return method;
}

TypeText Signatures::Field(ByteStream blob, const TypeArguments& arguments) const {
  if (blob.U8() != kFieldSignature) throw DataError("the signature of a field is none");
  return Writer(*this, arguments).Parameter(blob);
}

std::string Signatures::Type(Token type, const TypeArguments& arguments) const {
  std::string text;
  if (type) Writer(*this, arguments).WriteToken(type, text, 0);
  return text;
}

Signatures::Instance Signatures::Open(Token type, const TypeArguments& arguments) const {
  if (type.Of != tTypeSpec) return {type, {}};
  return Writer(*this, arguments).OpenSpec(type.Row, 0);
}

std::string MethodText::Arguments() const {
  std::string text;
  for (const TypeText& parameter : Parameters) {
    text += text.empty() ? '(' : ',';
    text += parameter.Name;
    if (parameter.IsByRef) text += '@';
  }
  if (IsOpen) text += text.empty() ? "(" : ",";
  if (!text.empty()) text += ')';
  return text;
}

}  // namespace vendrel::metadata
