#include "model/ElementCollection.h"

#include "core/MessageService.h"

namespace vendrel {

void ReportDuplicateKey(std::string_view typeName, std::string_view key) {
  std::string text = "Duplicate ";
  text.append(typeName).append(", '").append(key);
  text += "'.  Processing will continue.";
  ReportBox(DiagnosticCode::DuplicateName, {typeName, key}, text,
            "Duplicate " + std::string(typeName), msExclamation);
}

}  // namespace vendrel
