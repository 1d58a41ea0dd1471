#pragma once
// What a transformation plan needs of the outside: the plan of a client, the manager that knows the
// kinds of steps, and the objects that carry them out. All three belong to the host.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "model/Fwd.h"

namespace vendrel {

/// One step of a plan. A host adds what its transformations need.
class TransformationStep {
 public:
  virtual ~TransformationStep() = default;
  /// Name of the kind it is of, case ignored.
  virtual std::string Kind() const = 0;
};

/// What is to be done to a project. The plan owns its steps.
class TransformationPlan {
 public:
  virtual ~TransformationPlan() = default;
  virtual std::size_t StepCount() const = 0;
  /// The step at a 1-based position up to `StepCount`.
  virtual TransformationStep& Step(std::size_t index) = 0;
};

/// One kind of step and the object that carries out steps of it.
struct TransformationKind {
  std::string Name;
  /// Under which a `Transformation` is registered.
  std::string ProgID;
};

/// Knows the kinds of steps, in the order in which they are run.
class TransformationManager {
 public:
  virtual ~TransformationManager() = default;
  virtual std::vector<TransformationKind> Kinds() = 0;

  /// Under which a host registers its manager (`ObjectRegistry`).
  static constexpr std::string_view kProgID = "VendrelTransformation.Manager";
};

/// Carries out steps of one kind; a new one is made for each step.
class Transformation {
 public:
  virtual ~Transformation() = default;
  /// Shown to people while it runs.
  virtual std::string Caption() const = 0;
  virtual void process(TransformationStep& step, VBProject& project) = 0;
};

}  // namespace vendrel
