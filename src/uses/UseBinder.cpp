#include "uses/UseBinder.h"

#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "project/ProjectFile.h"
#include "services/SourceText.h"
#include "uses/ModuleBinder.h"

namespace vendrel {

struct UseBinder::State {
  State(VBProject& project, UseOptions options)
      : Scopes(Names), Project(project), Options(options) {}

  Symbols Names;
  vendrel::Scopes Scopes;
  VBProject& Project;
  UseOptions Options;
  UseCounts Counts;
};

UseBinder::UseBinder(VBProject& project, UseOptions options)
    : mState(std::make_unique<State>(project, options)) {}
UseBinder::~UseBinder() = default;

bool UseBinder::Bind(const Component& module, const TakeUse& take) try {
  const Workspace::Use use(mState->Project.Workspace());
  if (!module.SourceForm || module.SourceForm->Text.empty()) return false;
  ProjectScope& project = mState->Scopes.Of(mState->Project);
  const BoundSource own{&module, module.SourceForm.get(), nullptr};
  if (!Scopes::IsNet(module)) {
    ModuleBinder(mState->Scopes, project, own, mState->Options, mState->Counts, take).Bind();
    return true;
  }
  for (ProjectFile* file : mState->Scopes.FilesOf(module))
    if (file->SourceForm)
      ModuleBinder(mState->Scopes, project, {&module, file->SourceForm.get(), file},
                   mState->Options, mState->Counts, take)
          .BindFile(&module);
  return true;
}
VENDREL_CONTEXT(module)

// A file of VB.NET holds any number of types, or parts of types: it is read once for all of them.
void UseBinder::BindFiles(const TakeUse& take) {
  const Workspace::Use use(mState->Project.Workspace());
  ProjectScope& project = mState->Scopes.Of(mState->Project);
  for (ProjectFile& file : mState->Project.ProjectFiles) {
    if (!file.SourceForm || file.SourceForm->Text.empty()) continue;
    const Component* first = mState->Scopes.FirstTypeOf(file);
    if (!first || !Scopes::IsNet(*first)) continue;
    ModuleBinder(mState->Scopes, project, {first, file.SourceForm.get(), &file}, mState->Options,
                 mState->Counts, take)
        .BindFile(nullptr);
  }
}

void UseBinder::BindAll(const TakeUse& take) {
  if (mState->Project.LanguageVersion() == lvVisualBasicDotNet) return BindFiles(take);
  for (const Component& module : std::as_const(mState->Project).Components.Listed())
    Bind(module, take);
}

const UseCounts& UseBinder::Counts() const { return mState->Counts; }

bool UseBinder::MissesReferences() const {
  return mState->Scopes.Of(mState->Project).MissesReferences;
}

std::int64_t UseCounts::InShares() const {
  std::int64_t all = 0;
  for (const std::int64_t count : Answers) all += count;
  return all - Of(UseAnswer::Key) - Of(UseAnswer::Label);
}

void UseCounts::Add(const UseCounts& other) {
  for (std::size_t i = 0; i < Answers.size(); ++i) Answers[i] += other.Answers[i];
  Declarations += other.Declarations;
  Secondary += other.Secondary;
  InFalseBranches += other.InFalseBranches;
  Unread += other.Unread;
}

}  // namespace vendrel
