#include "project/ScriptOperators.h"

#include <algorithm>
#include <cmath>

#include "diagnostics/VendrelError.h"
#include "project/ScriptDate.h"
#include "text/Like.h"

namespace vendrel {
namespace {

void RefuseNothing(const ScriptValue& a) {
  if (a.Kind == ScriptKind::Nothing) throw VendrelError(errObjectNotSet);
}

// Kind in which a value takes part in arithmetic: Empty and Boolean as Integer, text as Double.
ScriptKind NumberKind(const ScriptValue& a) {
  switch (a.Kind) {
    case ScriptKind::Long:
    case ScriptKind::Double:
    case ScriptKind::Date: return a.Kind;
    case ScriptKind::String: return ScriptKind::Double;
    default: return ScriptKind::Integer;
  }
}

ScriptValue CheckedDouble(double number) {
  if (!std::isfinite(number)) throw VendrelError(errOverflow);
  return ScriptValue::Double(number);
}

ScriptValue CheckedDate(double number) {
  if (!(number >= kFirstDate && number < kLastDate + 1)) throw VendrelError(errOverflow);
  return ScriptValue::Date(number);
}

// A sum, difference or product in the wider of both kinds, or the next one that holds it.
ScriptValue InWiderKind(double number, ScriptKind a, ScriptKind b) {
  const ScriptKind wider = std::max(a, b);
  return wider >= ScriptKind::Double ? CheckedDouble(number) : ScriptValue::Whole(number, wider);
}

ScriptValue Sum(const ScriptValue& a, const ScriptValue& b, int sign) {
  const ScriptKind ka = NumberKind(a), kb = NumberKind(b);
  const double number = ToNumber(a) + sign * ToNumber(b);
  const int dates = (ka == ScriptKind::Date) + (kb == ScriptKind::Date);
  if (dates == 1 || (dates == 2 && sign > 0)) return CheckedDate(number);
  return InWiderKind(number, ka, kb);
}

ScriptValue Power(double base, double exponent) {
  if (base < 0 && exponent != std::trunc(exponent)) throw VendrelError(errInvalidArgument);
  if (base == 0 && exponent < 0) throw VendrelError(errInvalidArgument);
  return CheckedDouble(std::pow(base, exponent));
}

ScriptValue Quotient(double a, double b) {
  if (b == 0) throw VendrelError(a == 0 ? errOverflow : errDivisionByZero);
  return CheckedDouble(a / b);
}

// "\" and "Mod" round both operands first.
ScriptValue WholeDivision(ScriptOperator op, const ScriptValue& a, const ScriptValue& b) {
  const std::int64_t dividend = ToLong(a), divisor = ToLong(b);
  if (divisor == 0) throw VendrelError(errDivisionByZero);
  const bool small = NumberKind(a) == ScriptKind::Integer && NumberKind(b) == ScriptKind::Integer;
  const std::int64_t result = op == ScriptOperator::Mod ? dividend % divisor : dividend / divisor;
  return ScriptValue::Whole(static_cast<double>(result),
                            small ? ScriptKind::Integer : ScriptKind::Long);
}

ScriptValue Joined(ScriptValue a, const ScriptValue& b) {
  if (a.IsNull() && b.IsNull()) return ScriptValue::Null();
  if (!a.IsString()) a = ScriptValue::String(ToText(a));
  if (b.IsString())
    a.Text.append(b.Text);
  else
    a.Text.append(ToText(b));
  if (a.Text.size() > kMaxScriptText) throw VendrelError(errOutOfStringSpace);
  return a;
}

ScriptValue Arithmetic(ScriptOperator op, ScriptValue a, const ScriptValue& b) {
  RefuseNothing(a);
  RefuseNothing(b);
  if (op == ScriptOperator::Concatenate) return Joined(std::move(a), b);
  if (a.IsNull() || b.IsNull()) return ScriptValue::Null();
  switch (op) {
    case ScriptOperator::Power: return Power(ToNumber(a), ToNumber(b));
    case ScriptOperator::Multiply:
      return InWiderKind(ToNumber(a) * ToNumber(b), NumberKind(a), NumberKind(b));
    case ScriptOperator::Divide: return Quotient(ToNumber(a), ToNumber(b));
    case ScriptOperator::IntegerDivide:
    case ScriptOperator::Mod: return WholeDivision(op, a, b);
    case ScriptOperator::Subtract: return Sum(a, b, -1);
    default: break;
  }
  const bool joins =
      (a.IsString() && (b.IsString() || b.IsEmpty())) || (a.IsEmpty() && b.IsString());
  return joins ? Joined(std::move(a), b) : Sum(a, b, 1);
}

double ToComparable(const ScriptValue& a, ScriptKind other) {
  if (a.IsString() && other == ScriptKind::Date)
    if (const auto date = DateFromText(a.Text)) return *date;
  return ToNumber(a);
}

// Text that is no number, compared with a number or a truth value: no order at all.
bool CannotCompare(const ScriptValue& a, const ScriptValue& b, bool withLiteral) {
  if (a.IsString() == b.IsString() || a.IsEmpty() || b.IsEmpty() || !withLiteral) return false;
  const ScriptValue& text = a.IsString() ? a : b;
  const ScriptKind other = a.IsString() ? b.Kind : a.Kind;
  if (other == ScriptKind::Date && DateFromText(text.Text)) return false;
  return !ConvertsToNumber(text.Text);
}

int Sign(double difference) { return difference < 0 ? -1 : difference > 0 ? 1 : 0; }

// Negative, 0 or positive as `a` stands before, with or behind `b`.
int Order(const ScriptValue& a, const ScriptValue& b, bool withLiteral) {
  if ((a.IsString() || a.IsEmpty()) && (b.IsString() || b.IsEmpty()) && a.Kind != b.Kind)
    return a.Text.compare(b.Text);
  if (a.IsString() && b.IsString()) return a.Text.compare(b.Text);
  if (!withLiteral && a.IsString() != b.IsString()) return a.IsString() ? 1 : -1;
  return Sign(ToComparable(a, b.Kind) - ToComparable(b, a.Kind));
}

bool Holds(ScriptOperator op, int order) {
  switch (op) {
    case ScriptOperator::Equal: return order == 0;
    case ScriptOperator::NotEqual: return order != 0;
    case ScriptOperator::Less: return order < 0;
    case ScriptOperator::Greater: return order > 0;
    case ScriptOperator::LessOrEqual: return order <= 0;
    default: return order >= 0;
  }
}

ScriptValue Comparison(ScriptOperator op, const ScriptValue& a, const ScriptValue& b,
                       bool withLiteral) {
  if (op == ScriptOperator::Is) {
    if (a.Kind != ScriptKind::Nothing || b.Kind != ScriptKind::Nothing)
      throw VendrelError(errObjectRequired);
    return ScriptValue::Boolean(true);
  }
  RefuseNothing(a);
  RefuseNothing(b);
  if (a.IsNull() || b.IsNull()) return ScriptValue::Null();
  if (op != ScriptOperator::Like && CannotCompare(a, b, withLiteral))
    return ScriptValue::Boolean(false);
  if (op == ScriptOperator::Like) return ScriptValue::Boolean(Like(ToText(a), ToText(b)));
  return ScriptValue::Boolean(Holds(op, Order(a, b, withLiteral)));
}

// Kind of a logical result: both Boolean, both at most Integer, else Long.
ScriptKind LogicalKind(const ScriptValue& a) {
  if (a.Kind == ScriptKind::Boolean) return ScriptKind::Boolean;
  if (a.IsString() && !NumberFromText(a.Text)) return ScriptKind::Boolean;
  return NumberKind(a) == ScriptKind::Integer ? ScriptKind::Integer : ScriptKind::Long;
}

ScriptValue Bits(std::int32_t bits, ScriptKind kind) {
  return {kind, static_cast<double>(bits), {}};
}

// A logical operator with Null gives Null, unless the other operand settles the result alone.
ScriptValue LogicalWithNull(ScriptOperator op, const ScriptValue& a, const ScriptValue& b) {
  if (a.IsNull() && b.IsNull()) return ScriptValue::Null();
  const ScriptValue& known = a.IsNull() ? b : a;
  const std::int32_t bits = ToLong(known);
  const bool settled = op == ScriptOperator::And   ? bits == 0
                       : op == ScriptOperator::Or  ? bits != 0
                       : op == ScriptOperator::Imp ? (a.IsNull() ? bits != 0 : bits == 0)
                                                   : false;
  if (!settled) return ScriptValue::Null();
  return Bits(op == ScriptOperator::Imp && b.IsNull() ? -1 : bits, LogicalKind(known));
}

ScriptValue Logical(ScriptOperator op, const ScriptValue& a, const ScriptValue& b) {
  if (a.IsNull() || b.IsNull()) return LogicalWithNull(op, a, b);
  const std::int32_t x = ToLong(a), y = ToLong(b);
  const ScriptKind kind = std::max(LogicalKind(a), LogicalKind(b));
  switch (op) {
    case ScriptOperator::And: return Bits(x & y, kind);
    case ScriptOperator::Or: return Bits(x | y, kind);
    case ScriptOperator::Xor: return Bits(x ^ y, kind);
    case ScriptOperator::Eqv: return Bits(~(x ^ y), kind);
    default: return Bits(~x | y, kind);
  }
}

}  // namespace

ScriptValue ApplyUnary(ScriptOperator op, const ScriptValue& a) {
  RefuseNothing(a);
  if (a.IsNull()) return a;
  if (op == ScriptOperator::Not) return Bits(~ToLong(a), LogicalKind(a));
  const double number = op == ScriptOperator::Negate ? 0 - ToNumber(a) : ToNumber(a);
  if (a.Kind == ScriptKind::Date) return CheckedDate(number);
  return InWiderKind(number, NumberKind(a), ScriptKind::Integer);
}

ScriptValue ApplyBinary(ScriptOperator op, ScriptValue a, const ScriptValue& b, bool withLiteral) {
  if (op < ScriptOperator::Equal) return Arithmetic(op, std::move(a), b);
  if (op < ScriptOperator::Not) return Comparison(op, a, b, withLiteral);
  return Logical(op, a, b);
}

}  // namespace vendrel
