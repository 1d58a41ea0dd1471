#include "core/MessageService.h"

#include <utility>

namespace vendrel {
namespace {

class NoMessages final : public MessageService {
 public:
  void Show(std::string_view, std::string_view, int) override {}
  bool Ask(std::string_view, std::string_view, int) override { return false; }
};

std::shared_ptr<MessageService>& Slot() {
  static std::shared_ptr<MessageService> service = std::make_shared<NoMessages>();
  return service;
}

}  // namespace

MessageService& MessageService::Current() { return *Slot(); }

void MessageService::Install(std::shared_ptr<MessageService> service) {
  Slot() = service ? std::move(service) : std::make_shared<NoMessages>();
}

}  // namespace vendrel
