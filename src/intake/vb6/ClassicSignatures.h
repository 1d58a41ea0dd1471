#pragma once

namespace vendrel {

struct LinePassage;

/// These read the first line of a procedure of Visual Basic 5 or 6.
void ReadClassicSignature(LinePassage& p);
void ReadClassicProperty(LinePassage& p);
void JudgeStatic(LinePassage& p);
/// By the access word, but for a private module.
void SettleAccess(LinePassage& p);

}  // namespace vendrel
