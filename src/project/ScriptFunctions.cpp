#include "project/ScriptFunctions.h"

#include <cmath>

#include "core/Ascii.h"
#include "diagnostics/VendrelError.h"
#include "project/ScriptDate.h"

namespace vendrel {
namespace {

// A number keeps its kind under Int, Fix and Abs; text becomes Double, what holds no number
// Integer.
ScriptValue SameKind(const ScriptValue& a, double number) {
  if (a.IsString()) return ScriptValue::Double(number);
  const bool keeps = a.Kind >= ScriptKind::Long && a.Kind <= ScriptKind::Date;
  return keeps && a.Kind != ScriptKind::Long ? ScriptValue{a.Kind, number, {}}
         : keeps                             ? ScriptValue::Whole(number, ScriptKind::Long)
                                             : ScriptValue::Whole(number);
}

ScriptValue Int(const ScriptValue& a) {
  return a.IsNull() ? a : SameKind(a, std::floor(ToNumber(a)));
}
ScriptValue Fix(const ScriptValue& a) {
  return a.IsNull() ? a : SameKind(a, std::trunc(ToNumber(a)));
}
ScriptValue Abs(const ScriptValue& a) {
  return a.IsNull() ? a : SameKind(a, std::fabs(ToNumber(a)));
}
ScriptValue Sgn(const ScriptValue& a) {
  const double number = ToNumber(a);
  return ScriptValue::Whole(number < 0 ? -1 : number > 0 ? 1 : 0);
}

// In characters, as the language counts them.
ScriptValue Len(const ScriptValue& a) {
  if (a.IsNull()) return a;
  double count = 0;
  for (const char c : ToText(a)) count += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  return ScriptValue::Whole(count, ScriptKind::Long);
}

ScriptValue InRange(const ScriptValue& a, double low, double high, ScriptKind kind) {
  const double number = RoundToEven(ToNumber(a));
  if (!(number >= low && number <= high)) throw VendrelError(errOverflow);
  return {kind, number, {}};
}

ScriptValue CBool(const ScriptValue& a) { return ScriptValue::Boolean(ToBoolean(a)); }
ScriptValue CByte(const ScriptValue& a) { return InRange(a, 0, 255, ScriptKind::Integer); }
ScriptValue CInt(const ScriptValue& a) { return InRange(a, -32768, 32767, ScriptKind::Integer); }
ScriptValue CLng(const ScriptValue& a) { return ScriptValue::Whole(ToLong(a), ScriptKind::Long); }
ScriptValue CDbl(const ScriptValue& a) { return ScriptValue::Double(ToNumber(a)); }
ScriptValue CSng(const ScriptValue& a) {
  return ScriptValue::Double(static_cast<double>(static_cast<float>(ToNumber(a))));
}
ScriptValue CCur(const ScriptValue& a) {
  return ScriptValue::Double(RoundToEven(ToNumber(a) * 10000) / 10000);
}
ScriptValue CStr(const ScriptValue& a) {
  if (a.IsNull()) throw VendrelError(errInvalidUseOfNull);
  return ScriptValue::String(ToText(a));
}
ScriptValue CVar(const ScriptValue& a) { return a; }
ScriptValue CDate(const ScriptValue& a) {
  if (a.IsString())
    if (const auto date = DateFromText(a.Text)) return ScriptValue::Date(*date);
  const double number = ToNumber(a);
  if (!(number >= kFirstDate && number < kLastDate + 1)) throw VendrelError(errOverflow);
  return ScriptValue::Date(number);
}

struct Entry {
  std::string_view Name;
  ScriptFunction Function;
};

constexpr Entry kFunctions[] = {
    {"INT", Int},     {"FIX", Fix},     {"ABS", Abs},     {"SGN", Sgn},   {"LEN", Len},
    {"CBOOL", CBool}, {"CBYTE", CByte}, {"CINT", CInt},   {"CLNG", CLng}, {"CSNG", CSng},
    {"CDBL", CDbl},   {"CCUR", CCur},   {"CDATE", CDate}, {"CSTR", CStr}, {"CVAR", CVar}};

}  // namespace

ScriptFunction FindScriptFunction(std::string_view name) {
  for (const Entry& entry : kFunctions)
    if (EqualsNoCaseAscii(entry.Name, name)) return entry.Function;
  return nullptr;
}

}  // namespace vendrel
