#include "core/MessageService.h"

#include <utility>

#include "core/Workspace.h"

namespace vendrel {
namespace {

class NoMessages final : public MessageService {
 public:
  void Show(std::string_view, std::string_view, int) override {}
  bool Ask(std::string_view, std::string_view, int) override { return false; }
};

struct InstalledMessages {
  std::shared_ptr<MessageService> Service = std::make_shared<NoMessages>();
};

}  // namespace

MessageService& MessageService::Current() { return *InUse<InstalledMessages>().Service; }

void MessageService::Install(std::shared_ptr<MessageService> service) {
  InUse<InstalledMessages>().Service =
      service ? std::move(service) : std::make_shared<NoMessages>();
}

}  // namespace vendrel
