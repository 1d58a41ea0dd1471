#pragma once
// Small trees for the tests of the model, made without a reader.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "model/Component.h"

namespace vendrel::test {

/// A block of that type and name at the end of the module.
inline Block* AddBlock(Component& component, BlockTypeEnum type, std::string_view name,
                       std::string_view access = "PUBLIC") {
  Block* block = component.NewBlock();
  block->SetBlockType(type);
  block->SetName(name);
  block->Access = access;
  return block;
}

/// Stores lines in a block as they are classified; nothing is interpreted.
inline void AddLines(Block& block, const std::vector<std::string_view>& texts) {
  bool continuation = false;
  for (const std::string_view text : texts) {
    CodeLine line = InitialiseCodeLine(text, lvVisualBasic5or6);
    line.Continuation = continuation;
    continuation = line.Continued;
    block.CodeLines->Add(line);
  }
}

inline std::shared_ptr<TaggedComment> Tagged(std::string_view tag, std::string_view text) {
  auto comment = std::make_shared<TaggedComment>();
  comment->TagIdentifier = tag;
  comment->Text = text;
  return comment;
}

}  // namespace vendrel::test
