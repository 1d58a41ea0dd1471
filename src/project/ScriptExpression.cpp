#include "project/ScriptExpression.h"

#include <iterator>
#include <utility>

#include "diagnostics/Context.h"
#include "project/ScriptFunctions.h"

namespace vendrel {
namespace {

struct BinaryOperator {
  std::string_view Sign;
  ScriptOperator Operator;
  int Precedence;
};

constexpr int kNegatePrecedence = 13;
constexpr int kNotPrecedence = 6;

constexpr BinaryOperator kBinaryOperators[] = {
    {"^", ScriptOperator::Power, 14},
    {"*", ScriptOperator::Multiply, 12},
    {"/", ScriptOperator::Divide, 12},
    {"\\", ScriptOperator::IntegerDivide, 11},
    {"MOD", ScriptOperator::Mod, 10},
    {"+", ScriptOperator::Add, 9},
    {"-", ScriptOperator::Subtract, 9},
    {"&", ScriptOperator::Concatenate, 8},
    {"=", ScriptOperator::Equal, 7},
    {"<>", ScriptOperator::NotEqual, 7},
    {"><", ScriptOperator::NotEqual, 7},
    {"<", ScriptOperator::Less, 7},
    {">", ScriptOperator::Greater, 7},
    {"<=", ScriptOperator::LessOrEqual, 7},
    {"=<", ScriptOperator::LessOrEqual, 7},
    {">=", ScriptOperator::GreaterOrEqual, 7},
    {"=>", ScriptOperator::GreaterOrEqual, 7},
    {"IS", ScriptOperator::Is, 7},
    {"LIKE", ScriptOperator::Like, 7},
    {"AND", ScriptOperator::And, 5},
    {"OR", ScriptOperator::Or, 4},
    {"XOR", ScriptOperator::Xor, 3},
    {"EQV", ScriptOperator::Eqv, 2},
    {"IMP", ScriptOperator::Imp, 1},
};

const BinaryOperator* FindBinary(const ScriptToken& token, ScriptDialect dialect) {
  for (const BinaryOperator& entry : kBinaryOperators) {
    if (!token.IsSymbol(entry.Sign) && !token.IsWord(entry.Sign)) continue;
    const bool known =
        entry.Operator != ScriptOperator::Like || dialect == ScriptDialect::VisualBasic;
    return known ? &entry : nullptr;
  }
  return nullptr;
}

}  // namespace

/// Orders operators by a stack of those that still wait for their right side.
class ScriptExpressionCompiler {
 public:
  ScriptExpressionCompiler(ScriptLexer& lexer, ScriptToken& token) : mLexer(lexer), mToken(token) {}

  ScriptExpression Compile() {
    for (bool operandDue = true, done = false; !done;) {
      if (operandDue)
        operandDue = TakeOperand();
      else
        done = !(operandDue = TakeOperator());
    }
    Reduce(0);
    if (!mWaiting.empty()) throw VendrelError(errScriptParenthesis);
    mResult.mAllLiteral = mLexer.Dialect() == ScriptDialect::VisualBasic;
    return std::move(mResult);
  }

 private:
  using Step = ScriptExpression::Step;
  using Action = Step::Action;

  struct Waiting {
    enum class Kind : std::uint8_t { Unary, Binary, Parenthesis, Call };
    Kind Is;
    ScriptOperator Operator = ScriptOperator::Add;
    int Precedence = 0;
    std::uint32_t Name = 0, Arguments = 0;
    bool IsOperator() const { return Is == Kind::Unary || Is == Kind::Binary; }
  };

  void Advance(bool operandDue) { mToken = mLexer.Next(operandDue); }

  // Takes prefix signs, opening parentheses and an operand; true if another operand is due, as it
  // is behind the opening parenthesis of a call.
  bool TakeOperand() {
    while (TakePrefix()) Advance(true);
    if (mToken.Kind == ScriptTokenKind::Name) return TakeName();
    if (mToken.Kind != ScriptTokenKind::Literal) throw VendrelError(errScriptSyntax);
    mResult.mSteps.push_back({Action::Push, {}, IndexOfNext(mResult.mLiterals)});
    mResult.mLiterals.push_back(std::move(mToken.Value));
    Advance(false);
    return false;
  }

  template <typename T>
  static std::uint32_t IndexOfNext(const std::vector<T>& items) {
    return static_cast<std::uint32_t>(items.size());
  }

  bool TakePrefix() {
    if (mToken.Kind == ScriptTokenKind::Open)
      mWaiting.push_back({Waiting::Kind::Parenthesis});
    else if (mToken.IsSymbol("-"))
      mWaiting.push_back({Waiting::Kind::Unary, ScriptOperator::Negate, kNegatePrecedence});
    else if (mToken.IsSymbol("+"))
      mWaiting.push_back({Waiting::Kind::Unary, ScriptOperator::Keep, kNegatePrecedence});
    else if (mToken.IsWord("NOT"))
      mWaiting.push_back({Waiting::Kind::Unary, ScriptOperator::Not, kNotPrecedence});
    else
      return false;
    return true;
  }

  bool TakeName() {
    const std::uint32_t name = IndexOfNext(mResult.mNames);
    mResult.mNames.emplace_back(mToken.Text);
    Advance(false);
    if (mToken.Kind != ScriptTokenKind::Open) {
      mResult.mSteps.push_back({Action::Load, {}, name});
      return false;
    }
    Advance(true);
    const bool hasArgument = mToken.Kind != ScriptTokenKind::Close;
    mWaiting.push_back({Waiting::Kind::Call, {}, 0, name, hasArgument ? 1u : 0u});
    return hasArgument;
  }

  // Takes closing parentheses and the operator behind an operand; false at the end.
  bool TakeOperator() {
    while (mToken.Kind == ScriptTokenKind::Close && Close()) Advance(false);
    if (mToken.Kind == ScriptTokenKind::Comma && NextArgument()) return true;
    const BinaryOperator* binary = FindBinary(mToken, mLexer.Dialect());
    if (!binary) return false;
    Reduce(binary->Precedence);
    mWaiting.push_back({Waiting::Kind::Binary, binary->Operator, binary->Precedence});
    Advance(true);
    return true;
  }

  // Writes out the operators on top that bind at least as tightly.
  void Reduce(int precedence) {
    while (!mWaiting.empty() && mWaiting.back().IsOperator() &&
           mWaiting.back().Precedence >= precedence) {
      const Waiting& top = mWaiting.back();
      mResult.mSteps.push_back(
          {top.Is == Waiting::Kind::Unary ? Action::Unary : Action::Binary, top.Operator});
      mWaiting.pop_back();
    }
  }

  bool Close() {
    Reduce(0);
    if (mWaiting.empty()) return false;
    const Waiting& top = mWaiting.back();
    if (top.Is == Waiting::Kind::Call)
      mResult.mSteps.push_back({Action::Call, {}, top.Name, top.Arguments});
    mWaiting.pop_back();
    return true;
  }

  bool NextArgument() {
    Reduce(0);
    if (mWaiting.empty() || mWaiting.back().Is != Waiting::Kind::Call) return false;
    ++mWaiting.back().Arguments;
    Advance(true);
    return true;
  }

  ScriptLexer& mLexer;
  ScriptToken& mToken;
  ScriptExpression mResult;
  std::vector<Waiting> mWaiting;
};

ScriptExpression ScriptExpression::Compile(ScriptLexer& lexer, ScriptToken& token) {
  return ScriptExpressionCompiler(lexer, token).Compile();
}

/// A value on the stack; literals stay literals under a sign.
struct ScriptExpression::Operand {
  ScriptValue Value;
  bool IsLiteral = false;
};

ScriptValue ScriptExpression::Run(const ScriptNames& names) const try {
  std::vector<Operand> stack;
  for (const Step& step : mSteps) {
    switch (step.Do) {
      case Step::Action::Push: stack.push_back({mLiterals[step.Index], true}); break;
      case Step::Action::Load:
        stack.push_back({names ? names(mNames[step.Index]) : ScriptValue(), mAllLiteral});
        break;
      case Step::Action::Unary:
        stack.back().Value = ApplyUnary(step.Operator, stack.back().Value);
        stack.back().IsLiteral &= step.Operator != ScriptOperator::Not || mAllLiteral;
        break;
      case Step::Action::Binary: {
        const Operand right = std::move(stack.back());
        stack.pop_back();
        Operand& left = stack.back();
        left.Value = ApplyBinary(step.Operator, std::move(left.Value), right.Value,
                                 left.IsLiteral || right.IsLiteral);
        left.IsLiteral = mAllLiteral;
        break;
      }
      case Step::Action::Call: RunCall(step, stack); break;
    }
  }
  return std::move(stack.back().Value);
}
VENDREL_CONTEXT()

void ScriptExpression::RunCall(const Step& step, std::vector<Operand>& stack) const {
  const std::string& name = mNames[step.Index];
  const ScriptFunction function = FindScriptFunction(name);
  if (!function || step.Arguments != 1) throw VendrelError(errTypeMismatch, name);
  stack.back() = {function(stack.back().Value), mAllLiteral};
}

std::optional<std::string_view> LoneName(std::string_view expression) {
  ScriptLexer lexer(expression, ScriptDialect::VisualBasic);
  const ScriptToken token = lexer.Next(true);
  if (token.Kind != ScriptTokenKind::Name) return std::nullopt;
  if (lexer.Next(false).Kind != ScriptTokenKind::End) return std::nullopt;
  return token.Text;
}

// Most conditions are one name: nothing is compiled for those.
ScriptValue EvaluateExpression(std::string_view expression, const ScriptNames& names) try {
  if (const auto name = LoneName(expression)) return names ? names(*name) : ScriptValue();
  ScriptLexer lexer(expression, ScriptDialect::VisualBasic);
  ScriptToken token = lexer.Next(true);
  const ScriptExpression compiled = ScriptExpression::Compile(lexer, token);
  if (token.Kind != ScriptTokenKind::End) throw VendrelError(errScriptEndOfStatement);
  return compiled.Run(names);
}
VENDREL_CONTEXT(expression)

}  // namespace vendrel
