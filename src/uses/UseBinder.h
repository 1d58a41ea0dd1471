#pragma once
// Binds the names in the statements of modules to their elements. Scopes are made once for the
// projects given; then module by module is read from its text, and each use given away. Nothing of
// it is stored.

#include <array>
#include <cstdint>
#include <functional>
#include <memory>

#include "project/VBProject.h"
#include "uses/NameUse.h"

namespace vendrel {

struct UseOptions {
  /// Declarations are uses, too.
  bool Declarations = false;
  /// Names in false branches of #If are bound, too; else they are counted only.
  bool FalseBranches = false;
};

/// How many names there are, by answer.
struct UseCounts {
  /// Primary records that are no declarations, by `UseAnswer`.
  std::array<std::int64_t, kUseAnswerWords.size()> Answers{};
  std::int64_t Declarations = 0;
  /// Further records of tokens that have one.
  std::int64_t Secondary = 0;
  /// Identifiers in false branches of #If, bound or not.
  std::int64_t InFalseBranches = 0;
  /// Statements of which a part could not be read.
  std::int64_t Unread = 0;

  std::int64_t Of(UseAnswer answer) const { return Answers[static_cast<std::size_t>(answer)]; }
  /// All answers but labels and keys: what the shares are of.
  std::int64_t InShares() const;
  void Add(const UseCounts& other);
};

/// Called for each use, in the order of the text. The record is used again for the next one: copy
/// what is kept.
using TakeUse = std::function<void(const NameUse&)>;

/// Binds names in modules of one project. The tree must stay as it is while the binder lives; all
/// modules that names may lead to must have been loaded. Loads nothing itself. Projects in the
/// group of `project`, and those that its references lead to, are at hand.
class UseBinder {
 public:
  explicit UseBinder(VBProject& project, UseOptions options = {});
  ~UseBinder();
  UseBinder(const UseBinder&) = delete;
  UseBinder& operator=(const UseBinder&) = delete;

  /// Streams the uses of a module of the project. False, and nothing, for a module without text
  /// (not loaded, unloaded, missing).
  bool Bind(const Component& module, const TakeUse& take);
  /// The same for all modules in their order.
  void BindAll(const TakeUse& take);

  /// Of all that was bound so far.
  const UseCounts& Counts() const;
  /// Whether references are missing, so that names may be external.
  bool MissesReferences() const;

 private:
  struct State;
  void BindFiles(const TakeUse& take);

  std::unique_ptr<State> mState;
};

}  // namespace vendrel
