#include "model/ElementCollection.h"

#include "core/MessageService.h"
#include "model/DuplicateKey.h"

namespace vendrel {

void ReportDuplicateKey(std::string_view typeName, std::string_view key) {
  ReportDuplicateKey(typeName, key, typeName);
}

void ReportDuplicateKey(std::string_view typeName, std::string_view key, std::string_view told) {
  std::string text = "Duplicate ";
  text.append(typeName).append(", '").append(key);
  text += "'.  Processing will continue.";
  ReportBox(DiagnosticCode::DuplicateName, {told, key}, text, "Duplicate " + std::string(typeName),
            msExclamation);
}

}  // namespace vendrel
