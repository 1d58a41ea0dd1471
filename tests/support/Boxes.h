#pragma once
// What the user would be told in boxes.

#include <memory>
#include <string>
#include <string_view>

#include "core/MessageService.h"

namespace vendrel::test {

/// Keeps what boxes say, "caption|text|style" a line; questions are answered with yes.
class Boxes final : public MessageService {
 public:
  std::string Said;

  void Show(std::string_view text, std::string_view caption, int style) override {
    Said += std::string(caption) + "|" + std::string(text) + "|" + std::to_string(style) + "\n";
  }
  bool Ask(std::string_view text, std::string_view caption, int style) override {
    Show(text, caption, style);
    return true;
  }
};

/// Boxes that are in force until the case ends.
inline std::shared_ptr<Boxes> InstallBoxes() {
  const auto boxes = std::make_shared<Boxes>();
  MessageService::Install(boxes);
  return boxes;
}

}  // namespace vendrel::test
